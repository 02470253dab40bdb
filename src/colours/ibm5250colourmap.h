// The IBM 5250 colour map: for each of the 32 screen attribute codes 0x20 to 0x3F, how it shows on
// a colour and on a monochrome terminal. It travels as the value of a `5250colrs` element.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "properties/property.h"

namespace qrl {

// Feature bits of this map; the first five share their values with the attribute model.
namespace f5250 {
constexpr uint32_t Blink = 1;
constexpr uint32_t Underscore = 2;
constexpr uint32_t HighIntensity = 4;
constexpr uint32_t Reverse = 16;
constexpr uint32_t Invisible = 128;
constexpr uint32_t ColumnSeparator = 8192;
}  // namespace f5250

struct T5250Row {
    uint8_t code;
    const char16_t* monoText;    // static, not owned
    const char16_t* colourText;  // static, not owned
    uint32_t monoDefault;
    uint32_t mono;
    uint32_t colourDefault;
    uint8_t foregroundDefault;
    uint8_t backgroundDefault;
    uint32_t colour;
    uint8_t foreground;
    uint8_t background;
};

// One row as the editor works on it: the part that belongs to the terminal kind in force.
struct T5250Edit {
    uint8_t code;
    uint32_t features;
    uint8_t foreground;
    uint8_t background;
};

class T5250ColourMap final : public TPropertyBase {
public:
    static constexpr std::size_t kRows = 32;
    static constexpr uint8_t kFirstCode = 0x20;
    // A monochrome terminal shows every row in these colours; they are never stored.
    static constexpr uint8_t kMonoForeground = 7;
    static constexpr uint8_t kMonoBackground = 0;

    T5250ColourMap();

    // Stream form: per row mono;colour;foreground;background; — 128 numbers. A short or broken
    // text leaves the rows it does not reach at their defaults.
    void Parse(std::u16string_view text) override;
    std::u16string ToText() const override;

    // Every in-force value back to its default.
    void Reset();

    // Row numbers not below kRows count as row 0, as in the editor's attribute combo.
    T5250Edit EditOf(std::size_t row, bool monochrome) const;
    // The row's defaults for the terminal kind ("Revert to Default").
    T5250Edit DefaultEditOf(std::size_t row, bool monochrome) const;
    // Writes an edit back: colour, foreground and background on a colour terminal, the mono
    // features alone on a monochrome one; the other kind's values stay as they were.
    void Store(std::size_t row, const T5250Edit& edit, bool monochrome);

    std::array<T5250Row, kRows> rows;
};

// The colour combos of the editor, in list order: list index to colour value and text.
struct T5250ColourChoice {
    uint8_t value;
    const char16_t* text;
};
extern const std::array<T5250ColourChoice, 8> k5250ColourChoices;

struct T5250TerminalType {
    int value;
    const char16_t* model;
    const char16_t* displayText;
    const char16_t* kindText;
    bool Monochrome() const;
};
// The terminal type named by the value of the element "IBM 5250 Mode" (decimal); a value not in
// the table, or no value at all, gives the first row.
const T5250TerminalType& Find5250TerminalType(std::u16string_view modeValue);

}  // namespace qrl
