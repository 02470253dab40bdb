// The reset of the settings dialog: which elements go back to their `Default`, and the question
// a group's reset asks first.
#pragma once

#include "forms/formdef.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qrl {

// An element can be reset when its value differs from its default and the user may change it.
bool CanReset(const TElementDef& element);

// The element nodes at or below `node` that can be reset, in index order. `parents`: per tree
// node its parent's position, -1 at the top.
std::vector<std::size_t> ResettableBelow(const TFormDef& form, const std::vector<std::ptrdiff_t>& parents,
                                         std::size_t node);

// "Reset N settings in GROUP to their defaults?"
std::u16string ResetGroupQuestion(std::size_t count, const std::u16string& group);

}  // namespace qrl
