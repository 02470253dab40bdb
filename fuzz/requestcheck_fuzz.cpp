// A request from the fuzzer (UTF-8) goes through the checker, which must never throw, must place
// every finding inside the text, and must call a request refused exactly when the module's own
// loader refuses it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/requestcheck.h"
#include "request/session.h"
#include "text/textutil.h"

namespace {

bool moduleRefuses(std::u16string_view text) {
    qrl::TConfigSession session;
    try {
        session.LoadRequestText(text);
    } catch (...) {
        return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::vector<qrl::TCheckFinding> findings = qrl::CheckRequest(text);
    for (const qrl::TCheckFinding& finding : findings) {
        if (finding.line < 1 || finding.column < 1 || finding.line > text.size() + 1) std::abort();
        (void)qrl::FormatFinding("fuzz.xml", finding);
    }
    const bool refused = qrl::CheckExitCode(findings) == qrl::kCheckRefused;
    if (refused != moduleRefuses(text)) std::abort();
    return 0;
}
