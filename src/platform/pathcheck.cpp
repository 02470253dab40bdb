// The one test a path from outside passes before any file call sees it.
#include "platform/platform.h"

namespace qrl::platform {

namespace {
constexpr std::size_t kMaxPath = 260;  // MAX_PATH, the terminating zero included
}

bool isUsablePath(std::u16string_view path, bool pattern) {
    if (path.empty() || path.size() >= kMaxPath) return false;
    const std::size_t lastPart = path.find_last_of(u"\\/") + 1;  // 0 when there is no separator
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char16_t c = path[i];
        if (c < 0x20 || c == 0x7F) return false;
        switch (c) {
        case u'<':
        case u'>':
        case u'"':
        case u'|':
            return false;
        case u'*':
        case u'?':
            if (!pattern || i < lastPart) return false;
            break;
        case u':':
            if (i != 1 || !((path[0] >= u'A' && path[0] <= u'Z') || (path[0] >= u'a' && path[0] <= u'z')))
                return false;
            break;
        default:
            break;
        }
    }
    return true;
}

}  // namespace qrl::platform
