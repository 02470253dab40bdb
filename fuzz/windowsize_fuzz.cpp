// The remembered size of the settings dialog comes back from the registry, where anything may
// stand: a size that reads must be two sides within bounds that write and read back the same.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "forms/layout.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::optional<qrl::TWindowSize> read = qrl::ParseWindowSize(text);
    if (!read) return 0;
    if (read->width <= 0 || read->height <= 0 || qrl::ParseWindowSize(qrl::WindowSizeText(*read)) != read)
        __builtin_trap();
    return 0;
}
