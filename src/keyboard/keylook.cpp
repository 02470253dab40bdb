#include "keyboard/keylook.h"

#include <cstdlib>

namespace qrl {

namespace {

// MulDiv: a * b / c rounded half away from zero, in 64 bits; -1 for c of 0.
std::int32_t mulDiv(std::int32_t a, std::int32_t b, std::int32_t c) {
    if (c == 0) return -1;
    const std::int64_t product = std::int64_t{a} * b;
    const std::int64_t half = std::llabs(c) / 2;
    const bool negative = (product < 0) != (c < 0);
    const std::int64_t magnitude = (std::llabs(product) + half) / std::llabs(c);
    return static_cast<std::int32_t>(negative ? -magnitude : magnitude);
}

}  // namespace

TKeyLook KeyLookFor(const GKbKey& key, std::int32_t state, bool selected, const KeyStyle& style) {
    TKeyLook look;
    const KbKeyShift& entry = shiftEntry(key, state);
    look.inactive = entry.Inactive;
    look.mapped = isMapped(key, state);
    look.face = selected ? KeyFace::Selected : look.mapped ? KeyFace::Mapped : KeyFace::Plain;
    look.bevel = !look.inactive;
    if (selected) {
        look.background = style.SelectedColour;
        look.text = style.SelectedTextColour;
    } else if (look.mapped) {
        look.background = style.MappedColour;
        look.text = style.MappedTextColour;
    } else {
        look.background = style.FaceColour;
        look.text = look.inactive ? style.InactiveTextColour : style.TextColour;
    }
    look.label = drawnLabel(key, state);
    look.glyph = IsGlyphLabel(look.label);
    look.singleChar = look.label.size() == 1;
    return look;
}

bool IsGlyphLabel(std::string_view label) {
    return label.size() >= 3 && label.front() == '<' && label.back() == '>';
}

std::optional<TGlyph> GlyphFor(std::string_view label) {
    static const std::vector<KbPoint> kShift{{0, 10}, {8, 2}, {4, 2}, {4, -10}, {-4, -10}, {-4, 2}, {-8, 2}};
    static const std::vector<KbPoint> kUp{{0, 6}, {6, 0}, {0, 0}, {0, -8}, {0, 0}, {-6, 0}, {0, 6}};
    static const std::vector<KbPoint> kRight{{6, 0}, {0, 6}, {0, 0}, {-8, 0}, {0, 0}, {0, -6}, {6, 0}};
    static const std::vector<KbPoint> kTab{{6, 6}, {6, 0}, {0, 6}, {0, 0}, {-8, 0}, {0, 0}, {0, -6}, {6, 0}, {6, -6}};
    static const std::vector<KbPoint> kReturn{{4, 0}, {0, 4}, {0, 0}, {-8, 0}, {-8, 4}, {-8, 0}, {0, 0}, {0, -4}, {4, 0}};
    if (label == "<sh>") return TGlyph{kShift, 1, 1, true};
    if (label == "<up>") return TGlyph{kUp, 1, 1, false};
    if (label == "<down>") return TGlyph{kUp, 1, -1, false};
    if (label == "<right>") return TGlyph{kRight, 1, 1, false};
    if (label == "<left>") return TGlyph{kRight, -1, 1, false};
    if (label == "<tab>") return TGlyph{kTab, 1, 1, false};
    if (label == "<ret>") return TGlyph{kReturn, -1, 1, false};
    return std::nullopt;
}

KbRect GlyphSquare(const KbRect& labelRect) {
    KbRect r{labelRect.left + 2, labelRect.top + 2, labelRect.right - 2, labelRect.bottom - 2};
    const std::int32_t width = r.right - r.left;
    const std::int32_t height = r.bottom - r.top;
    // The longer side gives up half the difference at each end.
    if (width > height) {
        const std::int32_t cut = (width - height) / 2;
        r.left += cut;
        r.right -= cut;
    } else {
        const std::int32_t cut = (height - width) / 2;
        r.top += cut;
        r.bottom -= cut;
    }
    return r;
}

std::vector<KbPoint> GlyphPoints(const TGlyph& glyph, const KbRect& square) {
    const std::int32_t width = square.right - square.left;
    const std::int32_t height = square.bottom - square.top;
    std::vector<KbPoint> points;
    points.reserve(glyph.points.size());
    for (const KbPoint& p : glyph.points)
        points.push_back({square.left + mulDiv(p.x * glyph.xFactor + 10, width, 20),
                          square.top + mulDiv(p.y * glyph.yFactor - 10, -height, 20)});
    return points;
}

}  // namespace qrl
