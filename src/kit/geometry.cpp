#include "kit/geometry.h"

namespace qrl {

TRect MoveAtBottomRect(const TRect& rect, std::int32_t left, std::int32_t bottom) {
    return TRect{left, bottom - rect.Height(), left + rect.Width(), bottom};
}

TRect MoveClippedRect(const TRect& rect, std::int32_t left, std::int32_t top, std::int32_t rightLimit) {
    std::int32_t width = rect.Width();
    if (left + width > rightLimit) width = rightLimit - left;
    return TRect{left, top, left + width, top + rect.Height()};
}

}  // namespace qrl
