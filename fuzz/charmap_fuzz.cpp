// Replies of the kernel to a character map fetch, and the put that sends a map back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "charmap/charmap.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text =
        qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    qrl::TCharMap map;
    if (qrl::ReadCharMapReply(map, text) != qrl::kCharMapRead) return 0;
    if (map.map.size() != map.defaultMap.size() || map.map.size() > qrl::kMaxCharMapLength) std::abort();

    // What a put sends must read back as the same differences, over the range the put declares.
    const std::u16string put = qrl::WriteCharMapPut(map);
    qrl::TCharMap back;
    if (qrl::ReadCharMapReply(back, put) != qrl::kCharMapRead) return 0;  // names the reader rejects
    for (std::size_t i = 0; i < back.map.size() && i < map.map.size(); ++i) {
        const uint16_t expected = map.map[i] != map.defaultMap[i] ? map.map[i] : static_cast<uint16_t>(i);
        if (back.map[i] != expected) std::abort();
    }
    return 0;
}
