#include "app/moduletexts.h"

#include "colours/colourtexts.h"
#include "mouse/mousenames.h"

namespace qrl {

TTextCatalogue ModuleTextCatalogue() {
    TTextCatalogue catalogue = ScannedTextCatalogue();
    // The name tables are made by the code that makes them for the dialogs, asked through a
    // lookup that notes each key instead of translating it, so their keys cannot drift.
    const auto recordInto = [&catalogue](const char* group) {
        return [&catalogue, group](std::u16string_view key, std::u16string_view defaultText) {
            catalogue.Add(group, key, defaultText);
            return std::u16string(defaultText);
        };
    };
    MakeColourTexts(recordInto("Colour, attribute and background names"));
    MakeMouseNames(recordInto("Mouse events and actions"));
    return catalogue;
}

}  // namespace qrl
