#include "cheatsheet.h"

#include <cstdio>

#include "keyboard/keymapcheatsheet.h"
#include "keyboard/keymapsettings.h"
#include "platform/platform.h"
#include "request/session.h"

namespace qrl4host {

int writeCheatSheet(const std::u16string& request, const std::wstring& file) {
    qrl::TConfigSession session;
    try {
        session.LoadRequestText(request);
    } catch (const std::exception&) {
        std::fprintf(stderr, "qrl4host: the request cannot be read\n");
        return 2;
    }
    const qrl::KeymapSettings settings(session);
    const std::u16string path(reinterpret_cast<const char16_t*>(file.c_str()));
    if (!qrl::platform::writeFile(path, qrl::CheatSheetFor(settings))) {
        std::fprintf(stderr, "qrl4host: cannot write %ls\n", file.c_str());
        return 2;
    }
    return 0;
}

}  // namespace qrl4host
