#include "kit/scrollrule.h"

namespace qrl {

int ScrollTarget(int position, int page, int maximum, int code, int thumb) {
    int wanted = position;
    switch (code) {
    case kLineUp: wanted = position - 10; break;
    case kLineDown: wanted = position + 10; break;
    case kPageUp: wanted = position - page; break;
    case kPageDown: wanted = position + page; break;
    case kThumbPosition:
    case kThumbTrack: wanted = thumb; break;
    default: break;
    }
    const int upper = maximum - page - 1;
    if (wanted < 0) {
        wanted = 0;
    } else if (wanted > upper) {
        wanted = upper;
    }
    return wanted;
}

}  // namespace qrl
