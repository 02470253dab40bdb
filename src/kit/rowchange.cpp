#include "kit/rowchange.h"

#include <algorithm>

namespace qrl {

TRowChange ChangedRun(const std::vector<std::u16string>& shown, const std::vector<std::u16string>& wanted) {
    const std::size_t common = std::min(shown.size(), wanted.size());
    std::size_t head = 0;
    while (head < common && shown[head] == wanted[head]) ++head;
    // The tail may not reach into the head: with repeated rows both could claim the same row.
    std::size_t tail = 0;
    while (tail < common - head && shown[shown.size() - 1 - tail] == wanted[wanted.size() - 1 - tail]) ++tail;
    return {head, shown.size() - head - tail, wanted.size() - head - tail};
}

}  // namespace qrl
