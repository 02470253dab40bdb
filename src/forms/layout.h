// Geometry of the built-in form: where each control goes once the dialog knows its client size.
// Plain rectangles in pixels of the client area; the dialog applies the result with MoveWindow.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "kit/geometry.h"

namespace qrl {

// Control rectangles by id: the controls that exist, as the template made them.
using ControlRects = std::map<int, TRect>;

// The built-in form's layout. `client` is the client rectangle, `scrollBarWidth` the system's
// vertical scroll bar width. Returns the new rectangle of every control that moves; a control
// missing from `controls` is skipped.
ControlRects LayoutBuiltInForm(const TRect& client, std::int32_t scrollBarWidth, const ControlRects& controls);

// The built-in form's remembered size: the window's outer size in pixels at 96 dots per inch,
// stored as "width,height". Anything else, or a size of nothing, reads as no size.
struct TWindowSize {
    std::int32_t width = 0, height = 0;
    bool operator==(const TWindowSize&) const = default;
};
std::optional<TWindowSize> ParseWindowSize(std::u16string_view text);
std::u16string WindowSizeText(const TWindowSize& size);
// From pixels at `fromDpi` to pixels at `toDpi`, rounded.
TWindowSize ScaleWindowSize(const TWindowSize& size, std::int32_t fromDpi, std::int32_t toDpi);

}  // namespace qrl
