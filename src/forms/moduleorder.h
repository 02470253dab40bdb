// The order of the module selection list.
#pragma once

#include <vector>

namespace qrl {

struct TModuleEntry;
struct TModuleList;

// Sorts the entries ascending by description, case ignored; the sort stays in the session.
void SortModules(std::vector<TModuleEntry>& modules);
// The row the selection dialog ends up selecting: the last module of the current name (case
// ignored), or -1.
int CurrentModulePosition(const TModuleList& list);

}  // namespace qrl
