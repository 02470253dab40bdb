// Geometry of the built-in form: where each control goes once the dialog knows its client size.
// Plain rectangles in pixels of the client area; the dialog applies the result with MoveWindow.
#pragma once

#include <cstdint>
#include <map>

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

// Control rectangles by id: the controls that exist, as the template made them.
using ControlRects = std::map<int, TRect>;

// The built-in form's layout. `client` is the client rectangle, `scrollBarWidth` the system's
// vertical scroll bar width. Returns the new rectangle of every control that moves; a control
// missing from `controls` is skipped.
ControlRects LayoutBuiltInForm(const TRect& client, std::int32_t scrollBarWidth, const ControlRects& controls);

}  // namespace qrl
