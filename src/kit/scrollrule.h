// The vertical scroll rule of forms (WM_VSCROLL), as a plain function.
#pragma once

namespace qrl {

// Scroll bar request codes, as the platform numbers them.
enum ScrollCode : int { kLineUp = 0, kLineDown = 1, kPageUp = 2, kPageDown = 3, kThumbPosition = 4, kThumbTrack = 5 };

// The new position for a request. Clamped to 0 .. maximum - page - 1, one short of the usual
// limit, and the lower bound is tested first: with an empty range the result is -1.
int ScrollTarget(int position, int page, int maximum, int code, int thumb);

}  // namespace qrl
