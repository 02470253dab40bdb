#include "pngwrite.h"

#include <array>
#include <cstdio>

namespace qrl4host {

namespace {

uint32_t crc32(const uint8_t* data, std::size_t size, uint32_t crc = 0) {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> t{};
        for (uint32_t n = 0; n < 256; ++n) {
            uint32_t c = n;
            for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    crc = ~crc;
    for (std::size_t i = 0; i < size; ++i) crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
    return ~crc;
}

void put32(std::vector<uint8_t>& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(v >> shift));
}

void chunk(std::vector<uint8_t>& file, const char type[4], const std::vector<uint8_t>& body) {
    put32(file, static_cast<uint32_t>(body.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type, type + 4);
    file.insert(file.end(), body.begin(), body.end());
    put32(file, crc32(file.data() + start, file.size() - start));
}

}  // namespace

bool WritePng(const std::wstring& path, uint32_t width, uint32_t height, const std::vector<uint8_t>& rgb) {
    if (rgb.size() < static_cast<std::size_t>(width) * height * 3) return false;
    // The raw image: each row behind a filter byte 0.
    std::vector<uint8_t> raw;
    raw.reserve((static_cast<std::size_t>(width) * 3 + 1) * height);
    for (uint32_t y = 0; y < height; ++y) {
        raw.push_back(0);
        const uint8_t* row = rgb.data() + static_cast<std::size_t>(y) * width * 3;
        raw.insert(raw.end(), row, row + static_cast<std::size_t>(width) * 3);
    }
    // zlib stream of stored blocks of at most 65535 bytes, then the Adler-32 of the raw data.
    std::vector<uint8_t> z{0x78, 0x01};
    std::size_t pos = 0;
    do {
        const std::size_t n = raw.size() - pos < 65535 ? raw.size() - pos : 65535;
        const bool last = pos + n == raw.size();
        z.push_back(last ? 1 : 0);
        z.push_back(static_cast<uint8_t>(n & 0xFF));
        z.push_back(static_cast<uint8_t>(n >> 8));
        z.push_back(static_cast<uint8_t>(~n & 0xFF));
        z.push_back(static_cast<uint8_t>((~n >> 8) & 0xFF));
        z.insert(z.end(), raw.begin() + static_cast<std::ptrdiff_t>(pos),
                 raw.begin() + static_cast<std::ptrdiff_t>(pos + n));
        pos += n;
    } while (pos < raw.size());
    uint32_t a = 1, b = 0;
    for (uint8_t byte : raw) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    put32(z, (b << 16) | a);

    std::vector<uint8_t> file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<uint8_t> header;
    put32(header, width);
    put32(header, height);
    header.insert(header.end(), {8, 2, 0, 0, 0});  // 8 bits, truecolour, deflate, no filter, no interlace
    chunk(file, "IHDR", header);
    chunk(file, "IDAT", z);
    chunk(file, "IEND", {});

    FILE* f = _wfopen(path.c_str(), L"wb");
    if (!f) return false;
    const bool ok = std::fwrite(file.data(), 1, file.size(), f) == file.size();
    return std::fclose(f) == 0 && ok;
}

}  // namespace qrl4host
