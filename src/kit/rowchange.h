// Which rows of a list have to change to turn the rows shown into the rows wanted: one run
// between the rows both begin with and the rows both end with. A list of thousands of rows then
// changes by a row or two for an edit, instead of being emptied and filled again.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qrl {

struct TRowChange {
    std::size_t first = 0;    // the first row that differs
    std::size_t removed = 0;  // rows of the shown list to delete from `first`
    std::size_t inserted = 0; // rows of the wanted list to insert at `first`
};

TRowChange ChangedRun(const std::vector<std::u16string>& shown, const std::vector<std::u16string>& wanted);

}  // namespace qrl
