// A KeyMap request from the fuzzer, once loaded, must give a cheat sheet that our own reader reads
// back as XML, whatever its names, strings and keyboards.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "keyboard/keymapcheatsheet.h"
#include "keyboard/keymapsettings.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    qrl::TConfigSession session;
    try {
        session.LoadRequestText(qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size)));
    } catch (const std::exception&) {
        return 0;
    }
    // Keyboards come from files; the fuzzer's KdfPath must not reach outside the corpus's own.
    qrl::KeymapSettings settings(session);
    settings.KdfPath = u"samples/keyboards";
    const std::u16string sheet = qrl::utf8ToUtf16(qrl::CheatSheetFor(settings));
    try {
        (void)AdvXMLParser::Parser().Parse(sheet.data(), sheet.size());
    } catch (const std::exception&) {
        std::abort();
    }
    return 0;
}
