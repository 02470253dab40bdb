// One setting of the request's schema (an `Element` of `DTD`) with its current value. Every value is
// kept as text from request to reply; a type is only a way of reading and showing that text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "request/fixedtext.h"

namespace qrl {

// The type codes travel into form building and trees; the numbers are kept exactly.
enum class ElementType : int32_t {
    Text = 0,
    FilePath = 1,
    Directory = 2,
    Int = 3,
    Bool = 4,
    StringSet = 5,
    Set = 6,
    Rgb = 7,
    Font = 8,
    Printer = 9,
    Char8 = 10,
    Charset = 11,
    Undefined = 12,
    KeyList = 13,
    KeyMapList = 14,
    KeyStringList = 15,
    ColourSchemeList = 16,
    AttrNames = 17,
    Hotspots = 18,
    MouseMap = 19,
    TandemColours = 20,
    Ibm5250Colours = 21,
    SshAuthFile = 22,
    SslCertificate = 23,
};
inline constexpr int kElementTypeCount = 24;

// The `Type` word, case ignored; an empty word is text, an unknown one Undefined.
ElementType ParseElementType(std::u16string_view word);
// The data lists that `Data` items carry as children rather than as a value (codes 13 to 19).
bool IsListType(ElementType type);

// Compact, since a large request holds very many: the texts fixed once read are TFixedText (the
// session's loader keeps them in its text pool), and what the walks over all elements read (name,
// value, type, password) comes first.
class TElementDef {
public:
    TFixedText name;  // fixed once read: the session's name index points into it
    std::u16string value;  // current value; the dialogs write it
    ElementType type = ElementType::Text;
    int32_t min = 0;
    int32_t max = 0;
    int32_t maxLength = 0;
    bool hidden = false;
    bool readOnly = false;
    bool password = false;
    bool macroAssist = false;
    bool allowEmKeys = false;
    bool cEncoded = false;
    TFixedText defaultValue;
    TFixedText group;
    TFixedText description;
    std::vector<std::u16string> values;   // stored values of a choice
    std::vector<std::u16string> strings;  // shown texts of a choice; parallel to values by position
    TFixedText fileFilter;                // `values` kept whole, filepath only
    TFixedText helpFile;
    TFixedText helpId;
    TFixedText defaultHelpFile;

    // Position of `text` among the choices, or `fallback`.
    int GetChoiceIndex(std::u16string_view text, int fallback) const;
    bool GetBool() const;
    // Position of the first stored value that equals the value as an integer, or -1.
    int GetSetIndex() const;
    // Mode of the Macro Assistant for this field: 7, 3 or 1.
    int MacroMode() const;
};

// The text shown beside an element's name in trees and lists, in brackets, or empty for the types
// that show nothing.
std::u16string ElementValueToText(const TElementDef& element);
// The same text added to the end of `out`, which saves a string per element where a label leads it.
void AppendElementValueText(std::u16string& out, const TElementDef& element);
// The character of a char8 value: "<ESC> 0x1B", "A 0x41", "0x80".
std::u16string CharacterText(std::u16string_view value);
// A character's name as the short texts show it: "<NUL>" to "<US>", "<SP>" and "<DEL>" for the
// controls, the character itself when printable, else nothing.
std::u16string CharacterName(uint32_t code);

// Gives `take` the items of a comma list, one by one, as `strings` and `values` hold them: a run of
// commas is one separator, so no item is empty; nothing quotes a comma.
template <class Take>
void ForEachCommaItem(std::u16string_view text, Take&& take) {
    std::size_t pos = 0;
    while (pos < text.size()) {
        if (text[pos] == u',') {
            ++pos;
            continue;
        }
        std::size_t end = text.find(u',', pos);
        if (end == std::u16string_view::npos) end = text.size();
        take(text.substr(pos, end - pos));
        pos = end;
    }
}

}  // namespace qrl
