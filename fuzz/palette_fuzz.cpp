// A palette file from the fuzzer goes through the reader of its kind, which must never throw; what
// reads must write out as a scheme that reads back to the same colours.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "colours/paletteimport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const qrl::TPaletteImport import = qrl::ReadPaletteFile(std::string_view(reinterpret_cast<const char*>(data), size));
    if (import.ok() == import.schemes.empty()) std::abort();
    (void)qrl::PaletteImportMessage(import);
    for (const qrl::TImportedPalette& scheme : import.schemes) {
        const qrl::TPalette palette = qrl::PaletteFromAnsi(scheme.ansi);
        const qrl::TPaletteImport back =
            qrl::ReadPaletteFile(qrl::WriteTerminalScheme(scheme.name, palette, scheme.foreground, scheme.background));
        if (!back.ok() || back.schemes.size() != 1 || back.schemes[0].ansi != scheme.ansi ||
            back.schemes[0].foreground != scheme.foreground || back.schemes[0].background != scheme.background)
            std::abort();
    }
    return 0;
}
