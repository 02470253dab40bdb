// What the colour dialogs do with the vision preview, the contrast check and palettes of other
// terminals: the pair the sample shows and its contrast figure, the pick "Fix contrast" makes, the
// rows of the scheme check, and what an import or export of Configure Palette does to the dialog
// data. Portable; the dialogs only move these values to and from their controls.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "colours/attrdialogdata.h"
#include "colours/colourvision.h"
#include "colours/paletteimport.h"

namespace qrl {

// The sample's two colours as the preview shows them, and its contrast figure.
struct TPreviewSample {
    uint32_t foreground = 0;
    uint32_t background = 0;
    std::u16string contrast;  // "Contrast 2.1:1 – hard to read"
    bool hardToRead = false;  // the figure is drawn as a warning
};
TPreviewSample PreviewSample(const TPalette& palette, const TResolvedAttr& shown, TVisionPreview preview);

// Every entry of the palette as the preview shows it.
TPalette SimulatedPalette(const TPalette& palette, TVisionPreview preview);

// The palette selections (foreground, background) that "Fix contrast" makes through the path of a
// palette click; none where the button is disabled: a colour item (one colour, no pair), a palette
// that is disabled, invisible text, or a pair that already reads.
struct TPalettePick {
    uint32_t first = 0;
    uint32_t second = 0;
};
std::optional<TPalettePick> FixContrastPick(const TAttrDialogData& data, TVisionPreview preview);

// The rows of the scheme check: one a finding, or one row saying there is none.
std::vector<std::u16string> ContrastCheckRows(const std::vector<TContrastFinding>& findings);
// The list row of an attribute combination, if the list shows it.
std::optional<uint32_t> ListRowOfCombination(const TAttrDialogData& data, uint32_t combination);

// The Normal attribute's colour indexes, which an import may set and Configure Palette's OK stores.
struct TNormalPair {
    uint32_t foreground = 0;
    uint32_t background = 0;
};
TNormalPair NormalPairOf(const TAttrDialogData& data);
void StoreNormalPair(TAttrDialogData& data, const TNormalPair& normal);

// An imported scheme into the edit copy of the palette, by the colours' meaning; its text colours,
// where it has them, into `normal` as the nearest entries.
void ImportPalette(TAttrDialogData& data, const TImportedPalette& imported, TNormalPair& normal);
// The edit copy of the palette as a scheme file, named after the working scheme (a "(custom)" one
// after the scheme it came from), with the Normal attribute's colours as its text colours.
std::string ExportPalette(const TAttrDialogData& data, const TNormalPair& normal);

}  // namespace qrl
