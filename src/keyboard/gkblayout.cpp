// What the keyboard pictures need of the model without drawing anything: the scale of a layout,
// which key lies under a point, which key and state a code word stands for, and which entry and
// label a state shows.
#include <algorithm>
#include <limits>

#include "keyboard/kdf.h"

namespace qrl {

namespace {

std::int32_t clampToInt32(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

// Layout units to pixels. The ratio comes from the client size and the layout's extent, both
// 32-bit; the product is taken in 64 bits so that a huge window cannot overflow it.
std::int32_t scaleBy(std::int32_t value, std::int32_t num, std::int32_t den) {
    if (den == 0) {
        return value;
    }
    return clampToInt32(static_cast<std::int64_t>(value) * num / den);
}

bool hasToggleTable(const KbKey& key, std::int32_t state) {
    return (state & kStateToggle) != 0 && key.AltCode != 0;
}

}  // namespace

void GKbLayout::scaleTo(std::int32_t clientWidth, std::int32_t clientHeight) {
    std::int64_t maxRight = 0;
    std::int64_t maxBottom = 0;
    std::int64_t minX = 0x7FFFFFFF;
    std::int64_t minY = 0x7FFFFFFF;
    for (const auto& key : Keys) {
        maxRight = std::max<std::int64_t>(maxRight, std::int64_t{key.X} + key.Width);
        maxBottom = std::max<std::int64_t>(maxBottom, std::int64_t{key.Y} + key.Height);
        minX = std::min<std::int64_t>(minX, key.X);
        minY = std::min<std::int64_t>(minY, key.Y);
    }
    // The margin on the far side equals the one on the near side.
    const std::int32_t width = clampToInt32(minX + maxRight);
    const std::int32_t height = clampToInt32(minY + maxBottom);
    if (width != 0 && height != 0) {
        // One ratio for both axes keeps keys in proportion: whichever side is tighter wins.
        const std::int64_t byWidth = std::int64_t{clientWidth} * 100 / width;
        const std::int64_t byHeight = std::int64_t{clientHeight} * 100 / height;
        if (byWidth < byHeight) {
            XNum = YNum = clientWidth;
            XDen = YDen = width;
        } else {
            XNum = YNum = clientHeight;
            XDen = YDen = height;
        }
    }
    for (std::size_t i = 0; i < Keys.size(); ++i) {
        GKbKey& k = key(i);
        k.Rect.left = scaleX(k.X);
        k.Rect.right = scaleX(clampToInt32(std::int64_t{k.X} + k.Width));
        k.Rect.top = scaleY(k.Y);
        k.Rect.bottom = scaleY(clampToInt32(std::int64_t{k.Y} + k.Height));
    }
    Style.BaseSize = scaleX(KeyUnit);
    Scaled = true;
}

std::int32_t GKbLayout::scaleX(std::int32_t x) const { return scaleBy(x, XNum, XDen); }

std::int32_t GKbLayout::scaleY(std::int32_t y) const { return scaleBy(y, YNum, YDen); }

GKbKey* GKbLayout::hitTest(std::int32_t x, std::int32_t y) {
    GKbKey* hit = nullptr;
    for (std::size_t i = 0; i < Keys.size(); ++i) {
        GKbKey& k = key(i);
        if (x >= k.Rect.left && x < k.Rect.right && y >= k.Rect.top && y < k.Rect.bottom) {
            hit = &k;
        }
    }
    return hit;
}

GKbKey* GKbLayout::findKey(std::int32_t code, std::int32_t& state) {
    state = 0;
    const std::int32_t masked = code & 0xF0FF;
    for (std::size_t i = 0; i < Keys.size(); ++i) {
        GKbKey& k = key(i);
        if (k.UsesShiftCodes != 0) {
            for (int n = 0; n < kShiftStates; ++n) {
                if (k.Shifts[n].Code == code) {
                    state = n;
                    return &k;
                }
            }
            if (k.AltCode != 0) {
                for (int n = 0; n < kShiftStates; ++n) {
                    if (k.AltShifts[n].Code == code) {
                        state = n;
                        return &k;
                    }
                }
            }
        } else if (k.Code == masked) {
            state = (code >> 8) & 7;
            return &k;
        } else if (k.AltCode == masked) {
            state = ((code & 0x700) | 0x1000) >> 8;
            return &k;
        }
    }
    return nullptr;
}

void GKbLayout::setState(std::int32_t state) {
    State = state;
    for (std::size_t i = 0; i < Keys.size(); ++i) {
        GKbKey& k = key(i);
        // A modifier key mapped in this state stays free to be selected for mapping.
        if (k.ModifierMask != 0 && !isMapped(k, state)) {
            k.Selected = (state & k.ModifierMask) != 0;
        }
    }
}

std::int32_t shiftFromCode(std::int32_t codeWord) {
    std::int32_t state = 0;
    if ((codeWord & kCodeShift) != 0) {
        state |= kStateShift;
    }
    if ((codeWord & kCodeCtrl) != 0) {
        state |= kStateCtrl;
    }
    if ((codeWord & kCodeAlt) != 0) {
        state |= kStateAlt;
    }
    return state;
}

const KbShiftTable& shiftTable(const KbKey& key, std::int32_t state) {
    return hasToggleTable(key, state) ? key.AltShifts : key.Shifts;
}

const KbKeyShift& shiftEntry(const KbKey& key, std::int32_t state) {
    return shiftTable(key, state)[static_cast<std::size_t>(state & 7)];
}

const std::string& drawnLabel(const KbKey& key, std::int32_t state) {
    // The picture has always counted two entries per state, running from Shifts on into
    // AltShifts, which lies behind it; behind AltShifts there is no entry, so no label.
    static const std::string none;
    const auto index = static_cast<std::size_t>(2 * (state & 7));
    if (hasToggleTable(key, state)) {
        return index < key.AltShifts.size() ? key.AltShifts[index].Label : none;
    }
    if (index < key.Shifts.size()) {
        return key.Shifts[index].Label;
    }
    return key.AltShifts[index - key.Shifts.size()].Label;
}

bool isMapped(const GKbKey& key, std::int32_t state) {
    const auto n = static_cast<std::size_t>(state & 7);
    return hasToggleTable(key, state) ? key.AltMapped[n] : key.Mapped[n];
}

}  // namespace qrl
