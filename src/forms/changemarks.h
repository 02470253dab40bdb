// Which items of the built-in form's tree stand in bold: an element whose value differs from the
// value it had when the dialog opened, and every group above such an element. Counts per group,
// so that one change costs a walk up the tree, not a look at every element.
#pragma once

#include "forms/formdef.h"
#include "request/fixedtext.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qrl {

class TChangeMarks {
public:
    // `parents`: per tree node its parent's position, -1 at the top. The values are taken now.
    TChangeMarks(const TFormDef& form, std::vector<std::ptrdiff_t> parents);

    // Looks at the element of `node` again; returns the nodes whose mark changed with it.
    std::vector<std::size_t> Update(std::size_t node);
    bool Bold(std::size_t node) const { return node < changedBelow_.size() && changedBelow_[node] > 0; }

private:
    const TFormDef& form_;
    std::vector<std::ptrdiff_t> parents_;
    TTextPool openedTexts_;                  // one block for all of them: the dialog opens on many
    std::vector<TFixedText> opened_;         // per element node, its value at the start
    std::vector<std::size_t> changedBelow_;  // per node: changed elements at or below it
};

}  // namespace qrl
