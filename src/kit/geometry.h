// Rectangles in pixels of a client area, and the two ways a dialog moves a control: plain
// functions, so that layouts are computed and tested without a window.
#pragma once

#include <cstdint>

namespace qrl {

struct TRect {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool operator==(const TRect&) const = default;
};

// Keeps the size of `rect`, puts its left edge at `left` and its bottom edge at `bottom`.
TRect MoveAtBottomRect(const TRect& rect, std::int32_t left, std::int32_t bottom);
// Keeps the height, and the width unless it would pass `rightLimit`, then ends there.
TRect MoveClippedRect(const TRect& rect, std::int32_t left, std::int32_t top, std::int32_t rightLimit);

// A length or coordinate at `fromDpi` as at `toDpi`, rounded to the nearest pixel (halves away from
// zero, so that a layout scrolled above the client area scales as it would below it).
std::int32_t ScaleLength(std::int32_t value, std::int32_t fromDpi, std::int32_t toDpi);
// Each edge scaled on its own, so that controls that touch still touch.
TRect ScaleRect(const TRect& rect, std::int32_t fromDpi, std::int32_t toDpi);

}  // namespace qrl
