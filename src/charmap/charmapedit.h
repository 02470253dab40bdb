// What the character set editor shows and does, without a window: the rows of the table, the
// entry being edited, the reverse map's inverse, and the checks of a new language's name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "charmap/charmap.h"

namespace qrl {

// For a reverse map, the Unicode value of each 8-bit code: the map's index whose entry is that
// code, the highest index winning; a code no entry names keeps itself.
using TCharInverse = std::array<uint16_t, 256>;
TCharInverse BuildInverse(const TCharMap& map);

// The table's rows: 256 for a reverse map; for a direct one the codes from start on, at most up
// to 255 (codes above are not reachable here).
std::size_t CharMapRowCount(const TCharMap& map);
// A row as the list shows it: a "*" when the entry differs from its default, then tab-separated
// columns, "->" (direct) or "<-" (reverse) in the middle.
std::u16string CharMapRowText(const TCharMap& map, const TCharInverse& inverse, std::size_t row);

// The entry dialog's start for a row: the source code as shown, the value, and whether the value
// is a 16-bit Unicode value (else an 8-bit host code).
struct TCharEntry {
    std::u16string source;
    uint32_t value = 0;
    bool unicodeValue = true;
};
TCharEntry CharEntryOf(const TCharMap& map, const TCharInverse& inverse, std::size_t row);
// The hexadecimal field: four digits for a Unicode value, two for a host code.
std::u16string CharEntryHexText(uint32_t value, bool unicodeValue);
// The character field: the value's character if it is printable, else empty.
std::u16string CharEntryCharText(uint32_t value);
// A typed hexadecimal field: the number, or nothing when it is no number of the field's range or
// something other than blanks follows it. An empty field is 0.
std::optional<uint32_t> ParseCharEntryHex(std::u16string_view text, bool unicodeValue);

// An accepted entry: a reverse map's goes into the inverse (and reaches the map on OK of the
// table), a direct map's into the map at once. Either way the map counts as modified.
void StoreCharEntry(TCharMap& map, TCharInverse& inverse, std::size_t row, uint32_t value);
// OK of the table of a reverse map: the map is rebuilt from its default and the inverse.
void ApplyInverse(TCharMap& map, const TCharInverse& inverse);

// Why a new language name is refused, if it is.
enum class LanguageNameProblem { None, InvalidCharacters, InUse };
// No "[" or "]", and no existing language of exactly that name (case counts).
LanguageNameProblem CheckNewLanguageName(std::u16string_view name, const std::vector<std::u16string>& languages);

}  // namespace qrl
