// Encoding a description as a .kdf: little-endian, no padding, the directory at the end.
#include <stdexcept>

#include "kdfdesc.h"

namespace kdfw {

namespace {

constexpr unsigned kMagic = 8816;
constexpr unsigned kVersion = 103;

class Out {
public:
    explicit Out(std::vector<unsigned char>& bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    void u8(int v) { bytes_.push_back(static_cast<unsigned char>(v & 0xFF)); }
    void u16(int v) {
        u8(v);
        u8(v >> 8);
    }
    void u32(std::size_t v) {
        u16(static_cast<int>(v & 0xFFFF));
        u16(static_cast<int>((v >> 16) & 0xFFFF));
    }
    void patchU32(std::size_t at, std::size_t v) {
        for (int i = 0; i < 4; ++i) {
            bytes_[at + static_cast<std::size_t>(i)] = static_cast<unsigned char>((v >> (8 * i)) & 0xFF);
        }
    }
    void count(std::size_t n, const char* what) {
        if (n > 0xFFFF) {
            throw std::runtime_error(std::string("too many ") + what);
        }
        u16(static_cast<int>(n));
    }
    void string(const std::string& text) {
        if (text.size() > 0xFFFF) {
            throw std::runtime_error("a text is longer than 65535 bytes");
        }
        u16(static_cast<int>(text.size()));
        bytes_.insert(bytes_.end(), text.begin(), text.end());
    }

private:
    std::vector<unsigned char>& bytes_;
};

struct Entry {
    bool inactive;
    int code;
    int shiftValue;
    const std::string* label;
    bool operator==(const Entry& o) const {
        return inactive == o.inactive && code == o.code && shiftValue == o.shiftValue &&
               *label == *o.label;
    }
};

// Runs of equal neighbouring states. A table of eight runs has no closing zero: the reader stops
// after eight runs by itself.
void shiftTable(Out& out, const std::array<ShiftState, 8>& states, int code, int shiftValue) {
    std::size_t runs = 0;
    std::size_t s = 0;
    while (s < states.size()) {
        const Entry entry{states[s].inactive, code, shiftValue, &states[s].label};
        std::size_t length = 1;
        while (s + length < states.size() &&
               Entry{states[s + length].inactive, code, shiftValue, &states[s + length].label} == entry) {
            ++length;
        }
        out.u8(static_cast<int>(length));
        out.u8(entry.inactive ? 1 : 0);
        out.u16(code);
        out.u8(shiftValue);
        out.string(*entry.label);
        ++runs;
        s += length;
    }
    if (runs < states.size()) {
        out.u8(0);
    }
}

void key(Out& out, const Key& k) {
    for (int v : {k.code, k.x, k.y, k.width, k.height, k.modifierMask, k.altCode}) {
        out.u16(v);
    }
    out.u8(k.keyValue);
    shiftTable(out, k.shifts, k.code, k.shiftValue);
    if ((k.altCode & 0xFFFF) != 0) {
        shiftTable(out, k.altShifts, k.altCode, k.shiftValue);
    }
}

void layout(Out& out, const Layout& l) {
    out.string(l.name);
    out.string(l.text1);
    out.string(l.text2);
    out.string(l.text3);
    out.u16(l.keyUnit);
    out.u16(l.value2);
    out.count(l.attributes.size(), "attributes");
    for (const Attribute& a : l.attributes) {
        out.u8(a.value);
        out.string(a.text);
    }
    out.count(l.keys.size(), "keys");
    for (const Key& k : l.keys) {
        key(out, k);
    }
}

}  // namespace

bool encodeDescription(const Description& description, std::vector<unsigned char>& bytes,
                       std::string& error) {
    bytes.clear();
    try {
        Out out(bytes);
        out.u16(kMagic);
        out.u16(kVersion);
        out.u32(0);  // directory offset, known once the blocks are written
        out.count(description.keyboards.size(), "keyboards");
        std::vector<std::size_t> offsets;
        for (const Keyboard& k : description.keyboards) {
            offsets.push_back(out.size());
            out.count(k.layouts.size(), "layouts");
            out.string(k.blockName);
            for (const Layout& l : k.layouts) {
                layout(out, l);
            }
        }
        const std::size_t directory = out.size();
        for (std::size_t i = 0; i < description.keyboards.size(); ++i) {
            out.u32(offsets[i]);
            out.string(description.keyboards[i].directoryName);
        }
        if (out.size() > 0xFFFFFFFFu) {
            throw std::runtime_error("the file would be larger than 4 GB");
        }
        out.patchU32(4, directory);
    } catch (const std::runtime_error& e) {
        error = e.what();
        return false;
    }
    return true;
}

}  // namespace kdfw
