#include "kit/geometry.h"

#include <algorithm>

namespace qrl {

TRect MoveAtBottomRect(const TRect& rect, std::int32_t left, std::int32_t bottom) {
    return TRect{left, bottom - rect.Height(), left + rect.Width(), bottom};
}

TRect MoveClippedRect(const TRect& rect, std::int32_t left, std::int32_t top, std::int32_t rightLimit) {
    std::int32_t width = rect.Width();
    if (left + width > rightLimit) width = rightLimit - left;
    return TRect{left, top, left + width, top + rect.Height()};
}

std::int32_t ScaleLength(std::int32_t value, std::int32_t fromDpi, std::int32_t toDpi) {
    if (fromDpi <= 0 || toDpi <= 0) return value;
    const std::int64_t product = static_cast<std::int64_t>(value) * toDpi;
    const std::int64_t half = fromDpi / 2;
    const std::int64_t scaled = product >= 0 ? (product + half) / fromDpi : -((-product + half) / fromDpi);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(scaled, INT32_MIN, INT32_MAX));
}

TRect ScaleRect(const TRect& rect, std::int32_t fromDpi, std::int32_t toDpi) {
    return TRect{ScaleLength(rect.left, fromDpi, toDpi), ScaleLength(rect.top, fromDpi, toDpi),
                 ScaleLength(rect.right, fromDpi, toDpi), ScaleLength(rect.bottom, fromDpi, toDpi)};
}

}  // namespace qrl
