// Colour Configuration, the editor of the "ColourMap" route, and its four sub-dialogs. Win32 only.
#pragma once

#include <windows.h>

#include "colours/colourvision.h"

namespace qrl {

class TConfigSession;
struct TAttrDialogData;

// Runs Colour Configuration on the session's schemes; on OK (1) the schemes and the colour settings
// hold the changes, anything else leaves the session's values as they were.
int RunColourDialog(TConfigSession& session, void* parent);

// The sub-dialogs, each on the main dialog's data; true on OK.
// Edit Attribute opens on the main dialog's preview.
bool RunAttrEditDialog(HWND parent, TAttrDialogData& data, TVisionPreview preview = TVisionPreview::Normal);
bool RunAdvancedAttrDialog(HWND parent, TAttrDialogData& data);
bool RunSaveSchemeDialog(HWND parent, TAttrDialogData& data);
bool RunPaletteDialog(HWND parent, TAttrDialogData& data);

}  // namespace qrl
