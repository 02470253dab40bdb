// Geometry of the built-in form: where each control goes once the dialog knows its client size.
// Plain rectangles in pixels of the client area; the dialog applies the result with MoveWindow.
#pragma once

#include <cstdint>
#include <map>

#include "kit/geometry.h"

namespace qrl {

// Control rectangles by id: the controls that exist, as the template made them.
using ControlRects = std::map<int, TRect>;

// The built-in form's layout. `client` is the client rectangle, `scrollBarWidth` the system's
// vertical scroll bar width. Returns the new rectangle of every control that moves; a control
// missing from `controls` is skipped.
ControlRects LayoutBuiltInForm(const TRect& client, std::int32_t scrollBarWidth, const ControlRects& controls);

}  // namespace qrl
