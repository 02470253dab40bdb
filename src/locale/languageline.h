// The pieces of the language table's reader that the translators' tools share with it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrl {

// One line of a .lang file as the table reads it (key, value with its escapes), or nothing for a
// line the reader skips. `cut` tells that a comma ended the value before the line did.
struct TLanguageLine {
    std::string key;
    std::string value;
    bool cut = false;
};
std::optional<TLanguageLine> ParseLanguageLine(std::string_view line);

// The "\" escapes of a language text undone, as Translate shows it.
std::u16string UndoLanguageEscapes(std::u16string_view text);

}  // namespace qrl
