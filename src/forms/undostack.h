// Undo and redo of the settings dialog's value changes. Every change reaches Note with the
// element's tree node and its new value; the stack knows the value before from the last note.
// Typing is one change until it is closed (the focus leaves the edit, the selection moves).
#pragma once

#include "forms/formdef.h"
#include "request/fixedtext.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace qrl {

struct TValueChange {
    std::size_t node;
    std::u16string before, after;
};

class TUndoStack {
public:
    // The values of the tree's elements as the dialog opens.
    explicit TUndoStack(const TFormDef& form);

    // The element of `node` holds a new value. `typing` joins it to an open change of the same node
    // made by typing; anything else closes that change first.
    void Note(std::size_t node, const std::u16string& value, bool typing);
    // Ends the open typing change, so that the next keystroke starts a new one.
    void Close() { open_ = false; }

    // The change to take back (its `before` is the value to restore), or none; moves it to redo.
    std::optional<TValueChange> Undo();
    // The change to make again (its `after`), or none.
    std::optional<TValueChange> Redo();

private:
    TTextPool openedTexts_;          // the values as the dialog opens, in one block: it opens on many
    std::vector<TFixedText> known_;  // per node, the value last noted
    std::vector<TValueChange> done_, undone_;
    bool open_ = false;
};

}  // namespace qrl
