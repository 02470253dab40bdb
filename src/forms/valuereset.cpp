#include "forms/valuereset.h"

#include "forms/settingsfilter.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {

bool CanReset(const TElementDef& element) { return !element.readOnly && IsCustomised(element); }

std::vector<std::size_t> ResettableBelow(const TFormDef& form, const std::vector<std::ptrdiff_t>& parents,
                                         std::size_t node) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < form.treeIndex.size() && i < parents.size(); ++i) {
        const TElementDef* element = form.treeIndex[i].element;
        if (!element || !CanReset(*element)) continue;
        std::ptrdiff_t n = static_cast<std::ptrdiff_t>(i);
        while (n >= 0 && static_cast<std::size_t>(n) != node) n = parents[static_cast<std::size_t>(n)];
        if (n >= 0) found.push_back(i);
    }
    return found;
}

std::u16string ResetGroupQuestion(std::size_t count, const std::u16string& group) {
    return u"Reset " + decimal(static_cast<long long>(count)) + u" settings in " + group + u" to their defaults?";
}

}  // namespace qrl
