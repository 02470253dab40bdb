// Contrast Check, the choice of one scheme from a palette file that holds several, and the files of
// Configure Palette's Import and Export. Win32 only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "colours/paletteimport.h"

namespace qrl {

// Contrast Check listing `rows`: the row taken with "Go to" or a double click; none on Close, or
// when `choosable` is off (the list only says that there is nothing to find).
std::optional<uint32_t> RunContrastCheckDialog(HWND parent, const std::vector<std::u16string>& rows,
                                               bool choosable);

// Asks for a palette file and reads it: the scheme the user takes (chosen by name when the file holds
// several); none when the user cancels, or when the file doesn't read, after saying why.
std::optional<TImportedPalette> AskPaletteToImport(HWND owner);

// Asks where to write `scheme` (a scheme file's bytes) and writes it; a file that can't be written is
// reported.
void AskWhereToExport(HWND owner, const std::string& scheme);

}  // namespace qrl
