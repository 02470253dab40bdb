// The order of the module selection list.
#pragma once

#include <vector>

namespace qrl {

struct TModuleEntry;
struct TModuleList;

// Sorts the entries ascending by description, case ignored; the sort stays in the session.
void SortModules(std::vector<TModuleEntry>& modules);
// The position of the list's current module (name, case ignored), or -1.
int CurrentModulePosition(const TModuleList& list);

}  // namespace qrl
