#include "properties/devmode.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "text/textutil.h"

namespace qrl {

namespace {

struct NumberField {
    std::size_t offset;
    std::size_t width;  // 2 or 4 bytes
    bool isSigned;
};

constexpr std::size_t kDeviceNameOffset = 0;
constexpr std::size_t kSizeOffset = 68;
constexpr std::size_t kDriverExtraOffset = 70;
constexpr std::size_t kFormNameOffset = 102;
// Fields up to here describe the block itself and are read whatever dmSize says.
constexpr std::size_t kHeaderEnd = 76;

// The numeric fields in the order of modeNumbers: dmSpecVersion to dmFields, dmOrientation to
// dmCollate, dmLogPixels, dmBitsPerPel to dmPanningHeight.
constexpr std::array<NumberField, 32> kNumberFields = [] {
    std::array<NumberField, 32> f{};
    std::size_t n = 0;
    for (std::size_t off = 64; off < 72; off += 2) f[n++] = {off, 2, false};
    f[n++] = {72, 4, false};
    for (std::size_t off = 76; off <= 100; off += 2) f[n++] = {off, 2, true};
    f[n++] = {166, 2, false};
    for (std::size_t off = 168; off <= 216; off += 4) f[n++] = {off, 4, false};
    return f;
}();

uint32_t ReadLe(const uint8_t* p, std::size_t width) {
    uint32_t v = 0;
    for (std::size_t i = width; i-- > 0;) v = (v << 8) | p[i];
    return v;
}

void WriteLe(uint8_t* p, std::size_t width, uint32_t v) {
    for (std::size_t i = 0; i < width; ++i, v >>= 8) p[i] = static_cast<uint8_t>(v);
}

void WriteName(std::vector<uint8_t>& block, std::size_t offset, std::u16string_view name) {
    name = name.substr(0, name.find(u'\0'));  // the platform reads no further
    const std::size_t n = std::min(name.size(), kDevModeNameChars);
    for (std::size_t i = 0; i < n; ++i) WriteLe(&block[offset + 2 * i], 2, name[i]);
}

std::u16string ReadName(const uint8_t* block, std::size_t limit, std::size_t offset, std::size_t maxChars) {
    std::u16string name;
    for (std::size_t i = 0; i < maxChars && offset + 2 * i + 2 <= limit; ++i) {
        const auto c = static_cast<char16_t>(ReadLe(block + offset + 2 * i, 2));
        if (c == 0) break;
        name += c;
    }
    return name;
}

// The private bytes of driverExtra: a count in four hexadecimal digits, then two per byte.
// Reading stops at a pair that is missing or not a number.
std::vector<uint8_t> ParseDriverExtra(std::u16string_view text) {
    std::vector<uint8_t> bytes;
    std::size_t used = 0;
    const uint32_t count = wcstoulBase16(text.substr(0, 4), &used);
    if (used != 4) return bytes;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = 4 + 2 * i;
        if (at + 2 > text.size()) break;
        const uint32_t b = wcstoulBase16(text.substr(at, 2), &used);
        if (used != 2) break;
        bytes.push_back(static_cast<uint8_t>(b));
    }
    return bytes;
}

}  // namespace

std::vector<uint8_t> BuildDeviceMode(const TPrinterProperty& property) {
    if (property.modeNumbers.empty()) return {};
    const std::vector<uint8_t> extra = ParseDriverExtra(property.driverExtra);
    std::vector<uint8_t> block(kDevModeSize + extra.size(), 0);
    WriteName(block, kDeviceNameOffset, property.deviceMode);
    WriteName(block, kFormNameOffset, property.formName);
    std::u16string_view numbers = property.modeNumbers;
    for (const NumberField& f : kNumberFields) {
        std::size_t used = 0;
        const int32_t v = wcstolBase10(numbers, &used);
        if (used == 0) break;
        WriteLe(&block[f.offset], f.width, static_cast<uint32_t>(v));
        numbers.remove_prefix(used);
    }
    // dmSize stays as stored; the count is what driverExtra really holds.
    WriteLe(&block[kDriverExtraOffset], 2, static_cast<uint32_t>(extra.size()));
    std::copy(extra.begin(), extra.end(), block.begin() + static_cast<std::ptrdiff_t>(kDevModeSize));
    // The platform reads dmSize plus dmDriverExtra bytes: a stored size beyond the structure gets
    // zeros up to there, so that nothing reads past the block.
    block.resize(std::max(block.size(), ReadLe(&block[kSizeOffset], 2) + extra.size()), 0);
    return block;
}

void ReadDeviceMode(TPrinterProperty& property, const uint8_t* block, std::size_t size) {
    property.deviceMode.clear();
    property.formName.clear();
    property.modeNumbers.clear();
    property.driverExtra.clear();
    if (block == nullptr || size == 0) return;

    const std::size_t dmSize = size >= kSizeOffset + 2 ? ReadLe(block + kSizeOffset, 2) : 0;
    const std::size_t limit = std::min(size, dmSize);
    property.deviceMode = ReadName(block, size, kDeviceNameOffset, kDevModeNameChars);
    property.formName = ReadName(block, limit, kFormNameOffset, kDevModeNameChars);

    for (const NumberField& f : kNumberFields) {
        const std::size_t end = f.offset + f.width;
        const bool present = end <= size && (f.offset < kHeaderEnd || end <= limit);
        const uint32_t raw = present ? ReadLe(block + f.offset, f.width) : 0;
        long long value = raw;
        if (f.width == 2 && f.isSigned) value = static_cast<int16_t>(raw);
        // Four-byte fields as signed 32-bit numbers, which the lenient reader takes back whole.
        if (f.width == 4) value = static_cast<int32_t>(raw);
        if (!property.modeNumbers.empty()) property.modeNumbers += u' ';
        property.modeNumbers += decimal(value);
    }

    // The driver's private bytes follow the structure as the block states its size.
    std::size_t count = size >= kDriverExtraOffset + 2 ? ReadLe(block + kDriverExtraOffset, 2) : 0;
    count = dmSize < size ? std::min(count, size - dmSize) : 0;
    AppendHexFixed(property.driverExtra, static_cast<uint32_t>(count), 4);
    for (std::size_t i = 0; i < count; ++i) AppendHexFixed(property.driverExtra, block[dmSize + i], 2);
}

std::vector<uint8_t> BuildDevNames(const TPrinterProperty& property) {
    constexpr std::size_t kFirstName = 8;
    const std::array<const std::u16string*, 3> names{&property.driver, &property.device, &property.port};
    std::array<std::size_t, 3> offsets{};
    std::size_t chars = kFirstName;
    for (std::size_t i = 0; i < names.size(); ++i) {
        offsets[i] = chars;
        // A name holding a zero character ends there anyway.
        chars += std::u16string_view{*names[i]}.substr(0, names[i]->find(u'\0')).size() + 1;
    }
    if (offsets.back() > 0xFFFF) return {};
    std::vector<uint8_t> block(chars * 2, 0);
    for (std::size_t i = 0; i < names.size(); ++i) {
        WriteLe(&block[2 * i], 2, static_cast<uint32_t>(offsets[i]));
        const std::size_t length = (i + 1 < names.size() ? offsets[i + 1] : chars) - offsets[i] - 1;
        for (std::size_t k = 0; k < length; ++k) WriteLe(&block[2 * (offsets[i] + k)], 2, (*names[i])[k]);
    }
    WriteLe(&block[6], 2, property.useDefault ? 1u : 0u);
    return block;
}

void ReadDevNames(TPrinterProperty& property, const uint8_t* block, std::size_t size) {
    if (block == nullptr || size < 8) return;
    const std::array<std::u16string*, 3> names{&property.driver, &property.device, &property.port};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::size_t offset = 2 * static_cast<std::size_t>(ReadLe(block + 2 * i, 2));
        *names[i] = ReadName(block, size, offset, size / 2);
    }
}

}  // namespace qrl
