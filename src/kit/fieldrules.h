// Rules of the built-in form's value editors that need no window: the number check that guards
// leaving an `int` field, the browse filter, the target name of an imported key file and the
// language list after a delete. The dialog code calls these and only moves the results to controls.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// True when `text` is acceptable for an integer field with these bounds; otherwise `message`
// receives the text for the user. min > max, or both 0, means unbounded. The texts stay English.
bool CheckIntegerText(std::u16string_view text, std::int32_t min, std::int32_t max, std::u16string& message);

// The open-file filter: fileFilter cut to fit 400 characters, `allFiles` appended within them, every
// "|" a zero. The result ends in two zeros, as the open-file dialog wants.
std::u16string BuildBrowseFilter(std::u16string_view fileFilter, std::u16string_view allFiles);
// The initial file of a browse: the value cut to fit 260 characters, "/" turned to "\".
std::u16string BrowseInitialFile(std::u16string_view value);

// Where an imported key file goes. `exists` tells whether a path exists.
struct ImportPlan {
    std::u16string directory;  // the auth directory, ending in a separator
    std::u16string name;       // the file name in that directory
    std::u16string target;     // directory + name
    bool copy = false;         // false when the chosen file is the target already
};
ImportPlan PlanKeyImport(std::u16string_view authDirectory, std::u16string_view chosenPath,
                         const std::function<bool(const std::u16string&)>& exists);

// Removes `language` from the lists of the "LanguageName" element: the first of `strings` equal to
// it (case counting) and the entry of `values` at the same position. False when it isn't there.
bool RemoveLanguageEntry(std::vector<std::u16string>& strings, std::vector<std::u16string>& values,
                         std::u16string_view language);
// The selection after a delete: the old position cut to the last entry, or -1.
int SelectionAfterDelete(int oldPosition, std::size_t count);

}  // namespace qrl
