// Small helpers shared by the macro lexer, parser and printer; not part of the subsystem's interface.
#pragma once

#include <cstdint>
#include <string>

namespace qrl {

// Value of an ASCII hexadecimal digit in either case, or -1.
inline int macroHexDigit(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

inline bool macroIsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Appends `value` in upper-case hexadecimal with at least `minDigits` digits, as "%.*X" does.
void appendMacroHex(std::u16string& out, uint32_t value, int minDigits);
// Appends `value` in decimal with at least `minDigits` digits after the sign, as "%.*d" does.
void appendMacroDecimal(std::u16string& out, int32_t value, int minDigits);

}  // namespace qrl
