// Builds .kdf images byte by byte for the reader's tests, including broken ones: every count can
// be overridden and every table can leave out its closing byte.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kdftest {

class Bytes {
public:
    Bytes& u8(int v) {
        data.push_back(static_cast<std::uint8_t>(v & 0xFF));
        return *this;
    }
    Bytes& u16(int v) { return u8(v).u8(v >> 8); }
    Bytes& u32(std::uint32_t v) { return u16(static_cast<int>(v & 0xFFFF)).u16(static_cast<int>(v >> 16)); }
    Bytes& str(const std::string& s) { return u16(static_cast<int>(s.size())).raw(s.begin(), s.end()); }
    Bytes& append(const Bytes& other) { return raw(other.data.begin(), other.data.end()); }
    template <class It>
    Bytes& raw(It begin, It end) {
        data.insert(data.end(), begin, end);
        return *this;
    }
    void patchU32(std::size_t at, std::uint32_t v) {
        for (std::size_t i = 0; i < 4; ++i) data[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
    }
    std::size_t size() const { return data.size(); }

    std::vector<std::uint8_t> data;
};

struct Run {
    int count = 1;
    int inactive = 0;
    int code = 0;
    int value = 0;
    std::string label;
};

struct KeySpec {
    int code = 0, x = 0, y = 0, width = 0, height = 0, mask = 0, altCode = 0, value = 0;
    std::vector<Run> shifts;
    bool closeShifts = true;  // write the zero run count after the runs
    std::vector<Run> altShifts;
    bool closeAlt = true;
    bool writeAlt = false;  // write the second table even when altCode is 0 (a broken file)
};

struct LayoutSpec {
    std::string name, text1, text2, text3;
    int keyUnit = 0, value2 = 0;
    std::vector<std::pair<int, std::string>> attributes;
    std::optional<int> attributeCount;
    std::vector<KeySpec> keys;
    std::optional<int> keyCount;
};

struct KeyboardSpec {
    std::string directoryName;
    std::string blockName;
    std::vector<LayoutSpec> layouts;
    std::optional<int> layoutCount;
};

inline void table(Bytes& b, const std::vector<Run>& runs, bool close) {
    for (const Run& r : runs) b.u8(r.count).u8(r.inactive).u16(r.code).u8(r.value).str(r.label);
    if (close) b.u8(0);
}

inline Bytes key(const KeySpec& k) {
    Bytes b;
    b.u16(k.code).u16(k.x).u16(k.y).u16(k.width).u16(k.height).u16(k.mask).u16(k.altCode).u8(k.value);
    table(b, k.shifts, k.closeShifts);
    if (k.altCode != 0 || k.writeAlt) table(b, k.altShifts, k.closeAlt);
    return b;
}

inline Bytes layout(const LayoutSpec& l) {
    Bytes b;
    b.str(l.name).str(l.text1).str(l.text2).str(l.text3).u16(l.keyUnit).u16(l.value2);
    b.u16(l.attributeCount.value_or(static_cast<int>(l.attributes.size())));
    for (const auto& [value, text] : l.attributes) b.u8(value).str(text);
    b.u16(l.keyCount.value_or(static_cast<int>(l.keys.size())));
    for (const KeySpec& k : l.keys) b.append(key(k));
    return b;
}

inline Bytes block(const KeyboardSpec& k) {
    Bytes b;
    b.u16(k.layoutCount.value_or(static_cast<int>(k.layouts.size()))).str(k.blockName);
    for (const LayoutSpec& l : k.layouts) b.append(layout(l));
    return b;
}

// Header, then the directory, then the blocks in order: a cut anywhere in a block leaves the
// directory whole, so truncation reaches every part of the reader.
inline Bytes file(const std::vector<KeyboardSpec>& keyboards, int magic = 8816, int version = 103) {
    Bytes directory;
    std::vector<Bytes> blocks;
    std::size_t directorySize = 0;
    for (const KeyboardSpec& k : keyboards) {
        directorySize += 4 + 2 + k.directoryName.size();
        blocks.push_back(block(k));
    }
    std::uint32_t offset = static_cast<std::uint32_t>(10 + directorySize);
    for (std::size_t i = 0; i < keyboards.size(); ++i) {
        directory.u32(offset).str(keyboards[i].directoryName);
        offset += static_cast<std::uint32_t>(blocks[i].size());
    }
    Bytes b;
    b.u16(magic).u16(version).u32(10).u16(static_cast<int>(keyboards.size())).append(directory);
    for (const Bytes& blockBytes : blocks) b.append(blockBytes);
    return b;
}

inline Run run(int count, const std::string& label, int code = 0, int inactive = 0, int value = 0) {
    return Run{count, inactive, code, value, label};
}

}  // namespace kdftest
