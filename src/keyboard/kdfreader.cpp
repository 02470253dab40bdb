// The .kdf reader. Every count and offset in the file is outside input: the reader only ever
// appends what it has actually read, writes shift entries only inside their tables, and stops at
// the first read that comes up short.
#include <cstring>
#include <vector>

#include "keyboard/kdf.h"

namespace qrl {

std::size_t KdfFileInput::read(void* buffer, std::size_t count) {
    return count == 0 ? 0 : std::fread(buffer, 1, count, file_);
}

bool KdfFileInput::seek(std::uint32_t offset) {
    // Offsets are unsigned 32-bit; a 32-bit long (Windows) cannot carry them all.
#ifdef _WIN32
    return _fseeki64(file_, static_cast<long long>(offset), SEEK_SET) == 0;
#else
    return fseeko(file_, static_cast<off_t>(offset), SEEK_SET) == 0;
#endif
}

std::size_t KdfMemoryInput::read(void* buffer, std::size_t count) {
    const std::size_t available = pos_ < size_ ? size_ - pos_ : 0;
    const std::size_t n = count < available ? count : available;
    if (n != 0) {
        std::memcpy(buffer, data_ + pos_, n);
        pos_ += n;
    }
    return n;
}

bool KdfMemoryInput::seek(std::uint32_t offset) {
    pos_ = offset;
    return true;
}

namespace {

struct DirectoryEntry {
    std::uint32_t offset = 0;
    std::string name;
};

class Reader {
public:
    explicit Reader(KdfInput& input) : in_(input) {}

    bool bytes(void* buffer, std::size_t count) { return in_.read(buffer, count) == count; }
    bool seek(std::uint32_t offset) { return in_.seek(offset); }

    bool u8(std::uint8_t& value) { return bytes(&value, 1); }
    bool u16(std::uint16_t& value) {
        unsigned char b[2];
        if (!bytes(b, sizeof b)) {
            return false;
        }
        value = static_cast<std::uint16_t>(b[0] | (b[1] << 8));
        return true;
    }
    bool i16(std::int32_t& value) {
        std::uint16_t raw = 0;
        if (!u16(raw)) {
            return false;
        }
        value = static_cast<std::int16_t>(raw);
        return true;
    }
    bool u32(std::uint32_t& value) {
        unsigned char b[4];
        if (!bytes(b, sizeof b)) {
            return false;
        }
        value = std::uint32_t{b[0]} | std::uint32_t{b[1]} << 8 | std::uint32_t{b[2]} << 16 |
                std::uint32_t{b[3]} << 24;
        return true;
    }

    // A length of 0 leaves the target as it was; an embedded zero byte ends the text there.
    int string(std::string& target) {
        std::uint16_t length = 0;
        if (!u16(length)) {
            return kKdfShortRead;
        }
        if (length == 0) {
            return kKdfOk;
        }
        buffer_.assign(std::size_t{length} + 1, '\0');
        if (!bytes(buffer_.data(), length)) {
            return kKdfShortRead;
        }
        target.assign(buffer_.data());
        return kKdfOk;
    }

    int keyboard(KbKeyboard& target);

private:
    int layout(KbLayout& layout);
    int key(KbKey& key);
    int shiftTable(KbShiftTable& table);
    int shiftEntry(KbKeyShift& entry);

    KdfInput& in_;
    std::vector<char> buffer_;
};

int Reader::keyboard(KbKeyboard& target) {
    std::uint16_t layoutCount = 0;
    if (!u16(layoutCount)) {
        return kKdfShortRead;
    }
    if (const int result = string(target.Name); result != kKdfOk) {
        return result;
    }
    for (std::uint16_t i = 0; i < layoutCount; ++i) {
        KbLayout* layout = target.newLayout("");
        target.Layouts.push_back(layout);  // owns it from here, also if this throws
        if (const int result = this->layout(*layout); result != kKdfOk) {
            return result;
        }
    }
    return kKdfOk;
}

int Reader::layout(KbLayout& layout) {
    for (std::string* text : {&layout.Name, &layout.Text1, &layout.Text2, &layout.Text3}) {
        if (string(*text) != kKdfOk) {
            return kKdfShortRead;
        }
    }
    std::int32_t keyUnit = 0;
    std::int32_t value2 = 0;
    std::uint16_t attributeCount = 0;
    if (!i16(keyUnit) || !i16(value2) || !u16(attributeCount)) {
        return kKdfShortRead;
    }
    int result = kKdfOk;
    for (std::uint16_t i = 0; i < attributeCount && result == kKdfOk; ++i) {
        KbAttribute& attribute = layout.Attributes.emplace_back();
        std::uint8_t value = 0;
        if (!u8(value)) {
            result = kKdfShortRead;
            break;
        }
        attribute.Value = value;
        result = string(attribute.Text);
    }
    std::uint16_t keyCount = 0;
    if (!u16(keyCount)) {
        return kKdfShortRead;
    }
    layout.KeyUnit = keyUnit;
    layout.LayoutValue2 = value2;
    for (std::uint16_t i = 0; i < keyCount && result == kKdfOk; ++i) {
        KbKey* key = layout.newKey(0);
        layout.Keys.push_back(key);
        result = this->key(*key);
    }
    return result;
}

int Reader::key(KbKey& key) {
    std::int32_t fields[7] = {};
    for (std::int32_t& field : fields) {
        if (!i16(field)) {
            return kKdfShortRead;
        }
    }
    std::uint8_t keyValue = 0;
    if (!u8(keyValue)) {
        return kKdfShortRead;
    }
    key.Code = fields[0];
    key.X = fields[1];
    key.Y = fields[2];
    key.Width = fields[3];
    key.Height = fields[4];
    key.ModifierMask = fields[5];
    key.AltCode = fields[6];
    key.KeyValue = keyValue;
    key.UsesShiftCodes = 0;
    int result = shiftTable(key.Shifts);
    if (result == kKdfOk && key.AltCode != 0) {
        result = shiftTable(key.AltShifts);
    }
    return result;
}

// Runs of equal entries. `remaining` counts runs, not states: a table ends with a zero count or
// after eight runs. Counts that add up to more than eight would run past the table; such entries
// are still read, so that the reader stays in step with the file, and then dropped.
int Reader::shiftTable(KbShiftTable& table) {
    int remaining = kShiftStates;
    std::size_t position = 0;
    int result = kKdfOk;
    for (;;) {
        std::uint8_t count = 0;
        if (!u8(count)) {
            result = kKdfShortRead;
            count = 0;
        }
        if (count != 0) {
            KbKeyShift overflow;
            KbKeyShift& entry = position < table.size() ? table[position] : overflow;
            result = shiftEntry(entry);
            const std::size_t copies = std::min<std::size_t>(remaining, count - 1u);
            for (std::size_t i = 1; i <= copies && position + i < table.size(); ++i) {
                table[position + i] = entry;
            }
            --remaining;
            position += count;
        }
        if (remaining == 0 || count == 0 || result != kKdfOk) {
            return result;
        }
    }
}

int Reader::shiftEntry(KbKeyShift& entry) {
    std::uint8_t inactive = 0;
    std::int32_t code = 0;
    std::uint8_t shiftValue = 0;
    if (!u8(inactive) || !i16(code) || !u8(shiftValue)) {
        return kKdfShortRead;
    }
    entry.Inactive = inactive != 0;
    entry.Code = code;
    entry.ShiftValue = shiftValue;
    return string(entry.Label);
}

}  // namespace

int readKeyboard(KbHdr& /*header*/, KdfInput& input, const std::string& name, KbKeyboard& target) {
    Reader in(input);
    std::uint16_t magic = 0;
    std::uint16_t version = 0;
    std::uint32_t directoryOffset = 0;
    std::uint16_t directoryCount = 0;
    // The whole header is read before any field is judged: a short file is a short file, even
    // when the bytes it has already show a wrong magic.
    if (!in.u16(magic) || !in.u16(version) || !in.u32(directoryOffset) || !in.u16(directoryCount)) {
        return kKdfShortRead;
    }
    if (magic != kKdfMagic) {
        return kKdfBadMagic;
    }
    if (version != kKdfVersion) {
        return kKdfBadVersion;
    }
    if (!in.seek(directoryOffset)) {
        return kKdfShortRead;
    }
    std::vector<DirectoryEntry> directory;
    for (std::uint16_t i = 0; i < directoryCount; ++i) {
        DirectoryEntry entry;
        if (!in.u32(entry.offset) || in.string(entry.name) != kKdfOk) {
            return kKdfShortRead;
        }
        directory.push_back(std::move(entry));
    }
    for (const DirectoryEntry& entry : directory) {
        if (entry.name == name) {
            if (!in.seek(entry.offset)) {
                return kKdfShortRead;
            }
            return in.keyboard(target);
        }
    }
    return kKdfNoKeyboard;
}

int readKeyboard(KbHdr& header, std::FILE* file, const std::string& name, KbKeyboard& target) {
    if (file == nullptr) {
        return kKdfShortRead;
    }
    KdfFileInput input(file);
    return readKeyboard(header, input, name, target);
}

}  // namespace qrl
