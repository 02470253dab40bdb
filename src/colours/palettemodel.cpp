#include "colours/palettemodel.h"

namespace qrl {

TPaletteGeometry PaletteGeometry(int width, int height) {
    TPaletteGeometry g;
    int size = (width - 1) / 8;
    if (size * 2 > height) size = height / 2;
    g.cellSize = size < 0 ? 0 : size;
    for (int i = 0; i < static_cast<int>(kPaletteSize); ++i) {
        const int left = (i % 8) * g.cellSize;
        const int top = (i / 8) * g.cellSize;
        g.cells[static_cast<std::size_t>(i)] = TCellRect{left, top, left + g.cellSize, top + g.cellSize};
    }
    return g;
}

int PaletteHit(const TPaletteGeometry& geometry, int x, int y) {
    for (int i = 0; i < static_cast<int>(kPaletteSize); ++i)
        if (geometry.cells[static_cast<std::size_t>(i)].Contains(x, y)) return i;
    return -1;
}

bool PaletteClick(TPaletteSelection& selection, bool rightButton, int index) {
    if (index < 0 || index >= static_cast<int>(kPaletteSize)) return false;
    if (rightButton) {
        if (selection.single) return false;
        selection.second = index;
        return true;
    }
    selection.first = index;
    if (selection.single) selection.second = index;
    return true;
}

std::vector<TPaletteMarker> PaletteMarkers(const TPaletteSelection& s) {
    std::vector<TPaletteMarker> markers;
    if (s.first == s.second && !s.single) {
        markers.push_back({s.first, std::u16string{s.firstLetter, s.secondLetter}});
        return markers;
    }
    markers.push_back({s.first, std::u16string(1, s.firstLetter)});
    if (!s.single) markers.push_back({s.second, std::u16string(1, s.secondLetter)});
    return markers;
}

bool MarkerIsWhite(uint32_t colour) {
    const uint32_t red = colour & 0xFF, green = (colour >> 8) & 0xFF, blue = (colour >> 16) & 0xFF;
    return green * 3 + blue + red * 2 < 641;
}

}  // namespace qrl
