// The font stream: any text reads without fault, and what a description writes reads back whole
// to the same text.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "properties/font.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16({reinterpret_cast<const char*>(data), size});
    qrl::TFontDescription font;
    qrl::ParseFont(text, font);
    const std::u16string written = qrl::FontToText(font);
    qrl::TFontDescription again;
    if (qrl::ParseFont(written, again) != qrl::TFontDescription::kFieldCount) __builtin_trap();
    if (qrl::FontToText(again) != written) __builtin_trap();
    return 0;
}
