// Text helpers for the 16-bit text the host gives us. Every case-insensitive comparison and every
// text-to-number conversion in the module goes through here, so that they all follow the same
// (lenient) rules as the Windows runtime the host was built against.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

// Case folding as _wcsicmp does it in the "C" locale: only A-Z fold to a-z.
char16_t foldCase(char16_t c);
int icompare(std::u16string_view a, std::u16string_view b);  // <0, 0, >0, like _wcsicmp
bool iequals(std::u16string_view a, std::u16string_view b);
bool istartsWith(std::u16string_view text, std::u16string_view prefix);

// Ordering that folds case, for maps keyed by names that compare case-insensitively.
struct ILess {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const { return icompare(a, b) < 0; }
};
// Hash consistent with iequals.
struct IHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view s) const;
};
struct IEqual {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const { return iequals(a, b); }
};

// Digits are those of the runtime's wide conversions: 0-9, the decimal digits of the other scripts
// it knows (Arabic-Indic, Devanagari, Thai, fullwidth and so on), and A-Z/a-z above 9.
// _wtoi: optional white space, optional sign, decimal digits; stops at the first other character;
// no digits gives 0. Overflow wraps as the runtime's 32-bit conversion does (we clamp like wcstol).
int wtoi(std::u16string_view text);
// wcstol with base 10: same leniency, clamps to LONG range of a 32-bit long; `consumed` (optional)
// receives the number of characters used (0 when no digits were found).
int32_t wcstolBase10(std::u16string_view text, std::size_t* consumed = nullptr);
// wcstoul with base 16: optional white space, optional sign, optional "0x"/"0X", hex digits; a
// "0x" with no digit after it is no number (0, nothing consumed).
// Clamps to 0xFFFFFFFF on overflow; a minus sign negates modulo 2^32 as the runtime does.
uint32_t wcstoulBase16(std::u16string_view text, std::size_t* consumed = nullptr);
// wcstoul with base 10: the same rules, for unsigned fields written in decimal.
uint32_t wcstoulBase10(std::u16string_view text, std::size_t* consumed = nullptr);

// Runtime white space as iswspace sees it in the "C" locale (blank, \t \n \v \f \r, and the
// no-break space U+00A0; 0x80-0x9F are not).
bool isRuntimeSpace(char16_t c);
// XML white space: exactly blank, tab, CR, LF.
bool isXmlSpace(char16_t c);
std::u16string_view trimXmlSpace(std::u16string_view text);

// UTF-8 <-> UTF-16. Invalid input is replaced by U+FFFD rather than failing.
std::u16string utf8ToUtf16(std::string_view utf8);
std::string utf16ToUtf8(std::u16string_view text);

// Narrow text in the runtime's default ("C") locale: bytes map to the first 256 code points and
// back; a character above 255 becomes '?'. This is what files of narrow text (ini, .kdf) hold.
std::u16string latin1ToUtf16(std::string_view bytes);
std::string utf16ToLatin1(std::u16string_view text);

// Plain ASCII literals into 16-bit text, for building texts in code.
std::u16string toU16(std::string_view ascii);
std::u16string decimal(long long value);
std::u16string hexUpper(uint32_t value);  // no leading zeros; 0 gives "0"
std::u16string hexLower(uint32_t value);  // the same in lower case, as the documents we write want

}  // namespace qrl
