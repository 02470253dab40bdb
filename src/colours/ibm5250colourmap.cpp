#include "colours/ibm5250colourmap.h"

#include "text/textutil.h"

namespace qrl {

namespace {

struct DefaultRow {
    const char16_t* monoText;
    const char16_t* colourText;
    uint32_t mono;
    uint32_t colour;
    uint8_t foreground;
    uint8_t background;
};

// The terminal's own rendition of each attribute code, 0x20 upward.
constexpr std::array<DefaultRow, T5250ColourMap::kRows> kDefaults{{
    {u"Normal", u"Green", 0, 0, 2, 0},
    {u"Reverse image", u"Green/reverse image", 16, 16, 2, 0},
    {u"High intensity", u"White", 4, 0, 7, 0},
    {u"High intensity/reverse image", u"White/reverse image", 20, 16, 7, 0},
    {u"Underscore", u"Green/underscore", 2, 2, 2, 0},
    {u"Underscore/reverse image", u"Green, underscore, reverse image", 18, 18, 2, 0},
    {u"Underscore/high intensity", u"White, underscore", 6, 2, 7, 0},
    {u"Nondisplay", u"Nondisplay", 128, 128, 0, 0},
    {u"Blink", u"Red", 1, 0, 4, 0},
    {u"Blink, reverse image", u"Red, reverse image", 17, 16, 4, 0},
    {u"Blink, high intensity", u"Red, blink", 5, 1, 4, 0},
    {u"Blink, high intensity, reverse image", u"Red, reverse image, blink", 21, 17, 4, 0},
    {u"Blink, underscore", u"Red, underscore", 3, 2, 4, 0},
    {u"Blink, underscore, reverse image", u"Red, underscore, reverse image", 19, 18, 4, 0},
    {u"Blink, underscore, high intensity", u"Red, underscore, blink", 7, 3, 4, 0},
    {u"Nondisplay", u"Nondisplay", 128, 128, 0, 0},
    {u"Column separator", u"Turquoise, column separator", 8192, 8192, 3, 0},
    {u"Column separator, reverse image", u"Turquoise, column separator, reverse image", 8208, 8208, 3, 0},
    {u"Column separator, high intensity", u"Yellow, column separator", 8196, 8192, 6, 0},
    {u"Column separator, high intensity, reverse image", u"Yellow, column separator, reverse image", 8212,
     8208, 6, 0},
    {u"Column separator, underscore", u"Turquoise, underscore, column separators", 8194, 8194, 3, 0},
    {u"Column separator, underscore, reverse image", u"Turquoise, underscore, reverse image, column separators",
     8210, 8210, 3, 0},
    {u"Column separator, underscore, high intensity", u"Yellow, underscore, column separators", 8198, 8194, 6,
     0},
    {u"Nondisplay", u"Nondisplay", 128, 128, 0, 0},
    {u"Column separator, blink", u"Pink", 8193, 0, 5, 0},
    {u"Column separator, blink, reverse image", u"Pink, reverse image", 8209, 16, 5, 0},
    {u"Column separator, blink, high intensity", u"Blue", 8197, 0, 1, 0},
    {u"Column separator, blink, high intensity, reverse image", u"Blue, reverse image", 8213, 16, 1, 0},
    {u"Column separator, blink, underscore", u"Pink, underscore", 8195, 2, 5, 0},
    {u"Column separator, blink, underscore, reverse image", u"Pink, underscore, reverse image", 8211, 18, 5, 0},
    {u"Column separator, blink, underscore, high intensity", u"Blue, underscore", 8199, 2, 1, 0},
    {u"Nondisplay", u"Nondisplay", 128, 128, 0, 0},
}};

constexpr std::size_t kNumbersPerRow = 4;

// As the editor's attribute combo does: a row number not below 32 counts as the first row.
std::size_t RowIndex(std::size_t row) { return row < T5250ColourMap::kRows ? row : 0; }

constexpr std::array<T5250TerminalType, 14> kTerminalTypes{{
    {54, u"IBM 3179-2", u"  Display: 24x80     ", u"  Colour terminal    "},
    {60, u"IBM 3179-220", u"  Display: 24x80     ", u"  Colour terminal    "},
    {52, u"IBM 3180-2", u"  Display: 27x132    ", u"  Monochrome terminal"},
    {53, u"IBM 3196-A1", u"  Display: 24x80     ", u"  Monochrome terminal"},
    {61, u"IBM 3477-FG", u"  Display: 27x132    ", u"  Monochrome terminal"},
    {62, u"IBM 3477-FC", u"  Display: 27x132    ", u"  Colour terminal    "},
    {55, u"IBM 5251-1", u"  Display: 24x80     ", u"  Monochrome terminal"},
    {56, u"IBM 5251-11", u"  Display: 24x80     ", u"  Monochrome terminal"},
    {57, u"IBM 5252", u"  Display: 24x80     ", u"  Monochrome terminal"},
    {58, u"IBM 5291-1", u"  Display: 24x80     ", u"  Monochrome terminal"},
    {59, u"IBM 5292-2", u"  Display: 24x80     ", u"  Colour terminal    "},
    {63, u"IBM Printer", u"  ", u"  "},
    {64, u"IBM 5555-C01", u"  Display: 24x80     ", u"  Colour terminal    "},
    {65, u"IBM 5555-B01", u"  Display: 24x80     ", u"  Monochrome terminal"},
}};

}  // namespace

const std::array<T5250ColourChoice, 8> k5250ColourChoices{{
    {0, u"Black"},
    {1, u"Blue"},
    {2, u"Green"},
    {5, u"Pink"},
    {4, u"Red"},
    {3, u"Turquoise"},
    {7, u"White"},
    {6, u"Yellow"},
}};

T5250ColourMap::T5250ColourMap() {
    for (std::size_t i = 0; i < kRows; ++i) {
        const DefaultRow& d = kDefaults[i];
        rows[i] = T5250Row{static_cast<uint8_t>(kFirstCode + i), d.monoText, d.colourText, d.mono, d.mono,
                           d.colour, d.foreground, d.background, d.colour, d.foreground, d.background};
    }
}

void T5250ColourMap::Reset() {
    for (T5250Row& row : rows) {
        row.mono = row.monoDefault;
        row.colour = row.colourDefault;
        row.foreground = row.foregroundDefault;
        row.background = row.backgroundDefault;
    }
}

void T5250ColourMap::Parse(std::u16string_view text) {
    Reset();
    std::array<int32_t, kRows * kNumbersPerRow> numbers{};
    const std::size_t read = ReadNumberStream(text, numbers.data(), numbers.size());
    for (std::size_t n = 0; n < read; ++n) {
        T5250Row& row = rows[n / kNumbersPerRow];
        const int32_t v = numbers[n];
        switch (n % kNumbersPerRow) {
            case 0: row.mono = static_cast<uint32_t>(v); break;
            case 1: row.colour = static_cast<uint32_t>(v); break;
            case 2: row.foreground = static_cast<uint8_t>(v); break;
            default: row.background = static_cast<uint8_t>(v); break;
        }
    }
}

std::u16string T5250ColourMap::ToText() const {
    std::u16string out;
    // Features are written as signed 32-bit numbers so that the reader, which clamps like wcstol,
    // gives back every bit pattern it wrote.
    for (const T5250Row& row : rows) {
        AppendStreamNumber(out, static_cast<int32_t>(row.mono));
        AppendStreamNumber(out, static_cast<int32_t>(row.colour));
        AppendStreamNumber(out, row.foreground);
        AppendStreamNumber(out, row.background);
    }
    return out;
}

T5250Edit T5250ColourMap::EditOf(std::size_t row, bool monochrome) const {
    const T5250Row& r = rows[RowIndex(row)];
    if (monochrome) return {r.code, r.mono, kMonoForeground, kMonoBackground};
    return {r.code, r.colour, r.foreground, r.background};
}

T5250Edit T5250ColourMap::DefaultEditOf(std::size_t row, bool monochrome) const {
    const T5250Row& r = rows[RowIndex(row)];
    if (monochrome) return {r.code, r.monoDefault, kMonoForeground, kMonoBackground};
    return {r.code, r.colourDefault, r.foregroundDefault, r.backgroundDefault};
}

void T5250ColourMap::Store(std::size_t row, const T5250Edit& edit, bool monochrome) {
    T5250Row& r = rows[RowIndex(row)];
    if (monochrome) {
        r.mono = edit.features;
        return;
    }
    r.colour = edit.features;
    r.foreground = edit.foreground;
    r.background = edit.background;
}

bool T5250TerminalType::Monochrome() const {
    // The printer's kind text is blank, so it counts as a colour terminal.
    return std::u16string_view{kindText} == u"  Monochrome terminal";
}

const T5250TerminalType& Find5250TerminalType(std::u16string_view modeValue) {
    const int value = wtoi(modeValue);
    for (const T5250TerminalType& type : kTerminalTypes)
        if (type.value == value) return type;
    return kTerminalTypes.front();
}

}  // namespace qrl
