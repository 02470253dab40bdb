// The Tandem 653X colour map: one colour pair per attribute combination, background number in the
// high nibble and foreground number in the low one. It travels as the value of a `tandemcolrs`
// element.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

class TTandemColourMap {
public:
    static constexpr std::size_t kIndexes = 32;
    // Positions in the editor's list of attributes; indexes 20-23 and 28-31 are not offered.
    static constexpr std::size_t kListedIndexes = 24;

    TTandemColourMap();

    // The pattern of a new map, which "Reload All" goes back to.
    void SetDefaults();
    // The editor's "Reset" of one index: a rule of its own that gives other bytes than
    // SetDefaults for the same index. An index out of range is ignored.
    void ResetIndex(std::size_t index);

    // Stream form: 32 numbers, each followed by ";". A short or broken text leaves the bytes it
    // does not reach at their defaults.
    void Parse(std::u16string_view text);
    std::u16string ToText() const;

    static uint8_t Foreground(uint8_t pair) { return pair & 15u; }
    static uint8_t Background(uint8_t pair) { return static_cast<uint8_t>(pair >> 4); }
    // The editor's combos: a position outside 0-15 counts as 0; background position 8 is the
    // first "White" and stores 15.
    void SetForegroundPosition(std::size_t index, int position);
    void SetBackgroundPosition(std::size_t index, int position);

    std::array<uint8_t, kIndexes> bytes{};
    uint8_t defaultBackground = 0;
    uint8_t defaultForeground = 15;
};

struct TTandemColour {
    const char16_t* foregroundText;
    const char16_t* backgroundText;
    uint32_t sample;  // red in the low byte
};
// Indexed by colour number; also the order of the two combos.
extern const std::array<TTandemColour, 16> kTandemColours;

// Combo positions that show a colour number. The background combo selects by text, so the
// number 15 shows the first "White", at position 8.
int TandemForegroundPosition(uint8_t number);
int TandemBackgroundPosition(uint8_t number);

// The attribute list: text of a list position, and the map index it stands for (-1 outside).
int TandemIndexOfListPosition(int position);
const char16_t* TandemAttributeText(int position);

}  // namespace qrl
