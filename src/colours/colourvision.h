// How colours look to people with colour vision deficiencies, and what the colour dialogs do with
// that: a preview of the sample and palette, the contrast of a pair as such a person sees it, the
// palette entry that fixes an unreadable pair, and the combinations of a scheme that are hard to read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "colours/attrdialogdata.h"
#include "colours/colourconfig.h"

namespace qrl {

// The choices of the "Preview as:" drop-down, in its order.
enum class TVisionPreview { Normal, Protanopia, Deuteranopia, Tritanopia, Greyscale };
inline constexpr std::size_t kVisionPreviewCount = 5;

// The drop-down's texts, translated.
std::array<std::u16string, kVisionPreviewCount> VisionPreviewNames();

// The colour (0x00BBGGRR) as seen with full-severity protanopia, deuteranopia or tritanopia (the
// simulation matrices of Machado, Oliveira and Fernandes, 2009, applied in linear RGB), or as a grey
// of the same relative luminance. Normal vision returns the colour itself, without its top byte.
uint32_t SimulateVision(uint32_t colour, TVisionPreview preview);

// The contrast ratio of the pair as the preview shows it.
double PreviewContrast(uint32_t foreground, uint32_t background, TVisionPreview preview);

// A colour in the OKLab space, where straight distances follow how different colours look.
struct TOkLab {
    double lightness = 0, a = 0, b = 0;
};
TOkLab ToOkLab(uint32_t colour);
double OkLabDistance(uint32_t first, uint32_t second);

using TPalette = std::array<uint32_t, kPaletteSize>;

// The foreground index that "Fix contrast" picks: among the palette entries that reach the minimum
// readable contrast against the background (as the preview shows the pair), the one nearest in
// OKLab to the current foreground colour; if none reaches it, the one of highest contrast. Ties go
// to the lower index. Indexes are taken modulo the palette size.
uint32_t FixContrastIndex(const TPalette& palette, uint32_t foreground, uint32_t background,
                          TVisionPreview preview);

// One hard-to-read combination of the scheme check.
struct TContrastFinding {
    uint32_t combination = 0;  // the attribute combination, 0 to 255
    double ratio = 0;
    std::u16string text;       // "Reverse+Blink: 1.9:1 (White on Light grey)"
};

// Every attribute combination the list shows with `options` whose contrast, in the preview, is below
// the minimum readable contrast, worst first (equal ratios in list order).
std::vector<TContrastFinding> CheckSchemeContrast(const TAttrDialogData& data, const TListOptions& options,
                                                  TVisionPreview preview);

}  // namespace qrl
