// How the keyboard picture draws a key, decided without drawing: which face, bevel, colours and
// label a key shows in a state, and the arrow glyphs that some labels stand for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keyboard/kdf.h"

namespace qrl {

enum class KeyFace { Plain, Mapped, Selected };

struct TKeyLook {
    bool inactive = false;  // outlined with the inactive pen, no bevel
    bool mapped = false;
    KeyFace face = KeyFace::Plain;
    bool bevel = false;     // raised when not selected, pressed in when selected
    std::uint32_t background = 0;
    std::uint32_t text = 0;   // the label's colour, and a glyph's
    std::string label;
    bool glyph = false;       // the label names a glyph ("<up>" and the like) and is no text
    bool singleChar = false;  // the label is one character: the larger font
};

// A key with state `state` (0 for a key without an owner) and the selected flag.
TKeyLook KeyLookFor(const GKbKey& key, std::int32_t state, bool selected, const KeyStyle& style);

struct KbPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const KbPoint&) const = default;
};

// A glyph's polygon on a grid of 20 by 20 about its middle; hollow ones are outlined only.
struct TGlyph {
    std::vector<KbPoint> points;
    int xFactor = 1;
    int yFactor = 1;
    bool hollow = false;
};
// Three or more characters between "<" and ">": a glyph's name, never text.
bool IsGlyphLabel(std::string_view label);
// The glyph of a name; none for a name no glyph has (which draws nothing at all).
std::optional<TGlyph> GlyphFor(std::string_view label);
// The square a glyph is drawn in: the label rectangle less 2 on each side, cut to a square about
// its centre.
KbRect GlyphSquare(const KbRect& labelRect);
// The glyph's points in pixels of its square, rounded as MulDiv rounds.
std::vector<KbPoint> GlyphPoints(const TGlyph& glyph, const KbRect& square);

}  // namespace qrl
