// The writer's own picture of a .kdf: keyboards, layouts and keys as the text description gives
// them, before they are encoded. Separate from the module's model on purpose: the module only
// reads, and the writer needs things the file does not hold (tags to find keys by).
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kdfw {

struct ShiftState {
    std::string label;  // narrow (Latin-1) bytes
    bool inactive = false;
};

struct Key {
    std::string tag;  // "@AD01" without the "@"; empty when the key has none
    int code = 0;
    int x = 0, y = 0, width = 0, height = 0;
    int modifierMask = 0;
    int altCode = 0;
    int keyValue = 0;
    int shiftValue = 0;
    std::array<ShiftState, 8> shifts;
    std::array<ShiftState, 8> altShifts;
};

struct Attribute {
    int value = 0;
    std::string text;
};

struct Layout {
    std::string name, text1, text2, text3;
    int keyUnit = 0;
    int value2 = 0;
    std::vector<Attribute> attributes;
    std::vector<Key> keys;
};

struct Keyboard {
    std::string directoryName;  // what readKeyboard looks for
    std::string blockName;      // the name stored in the keyboard's own block
    std::vector<Layout> layouts;
};

struct Description {
    std::vector<Keyboard> keyboards;
};

// Parses a description; on error returns false with "line N: message" in `error`.
bool parseDescription(const std::string& text, Description& out, std::string& error);

// Encodes a description as a .kdf file. Fails (false, message) when a count or a text does not
// fit its field.
bool encodeDescription(const Description& description, std::vector<unsigned char>& out,
                       std::string& error);

}  // namespace kdfw
