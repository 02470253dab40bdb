// Values that an element keeps as one line of text and that have an editor of their own
// (printer, SSL certificate, IBM 5250 colour map), and the small pieces their text forms share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

class TPropertyBase {
public:
    virtual ~TPropertyBase() = default;

    // Reads a value text. The value first returns to its initial state, so what the text does
    // not reach keeps that state; no text is an error.
    virtual void Parse(std::u16string_view text) = 0;
    virtual std::u16string ToText() const = 0;
    // The text shown beside the element's name; empty for values that show nothing.
    virtual std::u16string ShortText() const { return {}; }

    // Closes each field of the text forms built on key=value or positional fields.
    char16_t separator = u'|';

protected:
    TPropertyBase() = default;
    TPropertyBase(const TPropertyBase&) = default;
    TPropertyBase& operator=(const TPropertyBase&) = default;
};

// Fields of a text, each closed by `separator`. Nothing escapes the separator. The last field may
// lack its separator (a hand-written value often does); an empty text has no fields.
std::vector<std::u16string_view> SplitFields(std::u16string_view text, char16_t separator);

// The number streams of the colour maps: each number is followed by one character, whatever it
// is. Reads at most `count` numbers into `out` and returns how many it read; a place that holds no
// number (an empty field) reads as 0 and reading goes on. Reading stops at the end of the text, so
// the caller keeps its defaults from there.
std::size_t ReadNumberStream(std::u16string_view text, int32_t* out, std::size_t count);
// Appends `value` in decimal followed by ";".
void AppendStreamNumber(std::u16string& out, int32_t value);

// Appends `value` as exactly `digits` upper-case hexadecimal digits (the low ones).
void AppendHexFixed(std::u16string& out, uint32_t value, int digits);

}  // namespace qrl
