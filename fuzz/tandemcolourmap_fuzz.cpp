// The Tandem colour map stream: any text reads without fault, and what the map writes reads back
// to the same text.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "colours/tandemcolourmap.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16({reinterpret_cast<const char*>(data), size});
    qrl::TTandemColourMap map;
    map.Parse(text);
    const std::u16string written = map.ToText();
    qrl::TTandemColourMap again;
    again.Parse(written);
    if (again.ToText() != written) __builtin_trap();
    return 0;
}
