// What the `qrpalette` control draws and how it answers the mouse: two rows of eight square cells,
// a foreground and a background selection with their marker letters. Plain data and geometry;
// palettectl.cpp paints it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "colours/colourscheme.h"

namespace qrl {

// Messages of the palette control (numbered from the platform's first user message).
inline constexpr unsigned kPaletteSetFirst = 1025;    // index in wParam
inline constexpr unsigned kPaletteSetSecond = 1026;   // index in wParam
inline constexpr unsigned kPaletteSetSingle = 1027;   // flag in wParam
inline constexpr unsigned kPaletteSetColours = 1028;  // 16 colours behind lParam
inline constexpr unsigned kPaletteGetFirst = 1029;
inline constexpr unsigned kPaletteGetSecond = 1030;
inline constexpr unsigned kPaletteSetFirstLetter = 1031;   // character in wParam
inline constexpr unsigned kPaletteSetSecondLetter = 1032;  // character in wParam
// The colour patch takes its colour in lParam.
inline constexpr unsigned kPatchSetColour = 1025;
inline constexpr uint32_t kPatchStartColour = 16777215;  // white

struct TCellRect {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    bool operator==(const TCellRect&) const = default;
};

struct TPaletteGeometry {
    int cellSize = 0;  // cells are square
    std::array<TCellRect, kPaletteSize> cells{};
};

// Cells of a client area: width from (width - 1) / 8 unless the height allows less.
TPaletteGeometry PaletteGeometry(int width, int height);
// The first cell holding the point, or -1.
int PaletteHit(const TPaletteGeometry& geometry, int x, int y);

struct TPaletteSelection {
    int first = 0;
    int second = 0;
    bool single = false;
    char16_t firstLetter = u'F';
    char16_t secondLetter = u'B';
};

// A press on cell `index` with the left or right button; true when the selection changed hands to
// the parent (a right press in single mode does nothing).
bool PaletteClick(TPaletteSelection& selection, bool rightButton, int index);

struct TPaletteMarker {
    int cell;
    std::u16string text;
};
// The letters drawn over the cells: first's letter, both side by side where the two selections meet.
std::vector<TPaletteMarker> PaletteMarkers(const TPaletteSelection& selection);
// Markers are white on a dark cell: green counts three times, red twice, blue once.
bool MarkerIsWhite(uint32_t colour);

}  // namespace qrl
