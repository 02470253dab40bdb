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
    for (std::size_t i = 0; i < list.modules.size(); ++i)
        if (iequals(list.modules[i].name, list.current)) return static_cast<int>(i);
    return -1;
}

}  // namespace qrl
