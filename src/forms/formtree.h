// The tree of the built-in form as plain data: which nodes exist, under which parent, with which
// text, in the order in which the tree view gets them. The dialog inserts them one by one and
// stores each item handle back into the node.
#pragma once

#include "forms/formdef.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qrl {

class TConfigSession;

struct TreeInsertion {
    std::size_t node = 0;         // position in form.treeIndex, also the item's parameter
    std::ptrdiff_t parent = -1;   // position of the parent node; -1 for the tree's root level
    std::u16string text;
    bool isGroup = false;         // groups carry an expanded state
    bool expanded = false;
};

// The root's text and kind by the module type and the current module.
std::u16string TreeRootText(const TConfigSession& session, TreeNodeKind& kind);

// Clears form.treeIndex and fills it: root, groups and elements as the tree shows them. Hidden
// elements are left out; an element of a hidden or unlisted group goes where the element before
// it went.
std::vector<TreeInsertion> BuildTreeIndex(TFormDef& form, TConfigSession& session);

// The node with that key (case ignored), first one wins; -1 when none.
std::ptrdiff_t FindTreeNode(const TFormDef& form, std::u16string_view key);

}  // namespace qrl
