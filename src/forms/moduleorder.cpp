#include "forms/moduleorder.h"

#include "request/session.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {

void SortModules(std::vector<TModuleEntry>& modules) {
    std::stable_sort(modules.begin(), modules.end(), [](const TModuleEntry& a, const TModuleEntry& b) {
        return icompare(a.description, b.description) < 0;
    });
}

int CurrentModulePosition(const TModuleList& list) {
    // The dialog selects each matching row as it adds it: of two rows of one name the later stays.
    for (std::size_t i = list.modules.size(); i-- > 0;)
        if (iequals(list.modules[i].name, list.current)) return static_cast<int>(i);
    return -1;
}

}  // namespace qrl
