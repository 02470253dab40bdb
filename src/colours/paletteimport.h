// Palettes from other terminals: a Windows Terminal colour scheme (or a settings file holding
// several), an iTerm2 .itermcolors property list, and an Xresources file, read into the sixteen ANSI
// colours; and the palette written back out as a Windows Terminal scheme. Configure Palette imports
// and exports through these; nothing here knows about a window.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "colours/colourvision.h"

namespace qrl {

// One scheme of a file: the ANSI colours 0 to 15 (black, red, green, yellow, blue, magenta, cyan,
// white, then their bright forms) as 0x00BBGGRR, and the text colours where the file has them.
struct TImportedPalette {
    std::u16string name;
    std::array<uint32_t, 16> ansi{};
    std::optional<uint32_t> foreground;
    std::optional<uint32_t> background;
};

// What a file gave: its schemes, or why it gave none (with the line and column where the file has
// one; 0 where the reason concerns the file as a whole).
struct TPaletteImport {
    std::vector<TImportedPalette> schemes;
    std::u16string error;
    int line = 0;
    int column = 0;
    bool ok() const { return error.empty(); }
};

// Reads a file's bytes (UTF-8, a byte-order mark allowed) in whichever of the three forms it is:
// JSON when it starts with "{" or a comment, a property list when it starts with "<", else Xresources.
TPaletteImport ReadPaletteFile(std::string_view bytes);

// The reason as the user reads it: "line 3, column 7: " before the text where there is a position.
std::u16string PaletteImportMessage(const TPaletteImport& import);

// The palette indexes of the ANSI colours by meaning: black, red, green, yellow, blue, magenta, cyan
// and white go to 0, 4, 2, 6, 1, 5, 3, 7, their bright forms 8 higher.
TPalette PaletteFromAnsi(const std::array<uint32_t, 16>& ansi);
std::array<uint32_t, 16> AnsiFromPalette(const TPalette& palette);

// The entry nearest to the colour in OKLab; the lower index of two as near.
uint32_t NearestPaletteIndex(const TPalette& palette, uint32_t colour);

// The palette as a Windows Terminal scheme object (UTF-8, with "name", the text colours where
// given, and the sixteen colours as "#RRGGBB").
std::string WriteTerminalScheme(std::u16string_view name, const TPalette& palette,
                                std::optional<uint32_t> foreground = {}, std::optional<uint32_t> background = {});

}  // namespace qrl
