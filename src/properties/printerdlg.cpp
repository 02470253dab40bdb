#include "properties/printerdlg.h"

#include "properties/devmode.h"
#include "request/session.h"
#include "text/textutil.h"

#include <commdlg.h>

#include <cstring>
#include <vector>

namespace qrl {

namespace {

// Movable global memory holding `bytes`, as the print dialog wants its blocks; null for no bytes or
// no memory, and the dialog then starts without that block.
HGLOBAL GlobalFromBytes(const std::vector<uint8_t>& bytes) {
    if (bytes.empty()) return nullptr;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    if (!block) return nullptr;
    if (void* p = GlobalLock(block)) {
        std::memcpy(p, bytes.data(), bytes.size());
        GlobalUnlock(block);
        return block;
    }
    GlobalFree(block);
    return nullptr;
}

// Reads a block the dialog gave back with `read(bytes, size)`; a null block reads as none.
template <class Read>
void ReadGlobal(HGLOBAL block, Read read) {
    const void* p = block ? GlobalLock(block) : nullptr;
    read(static_cast<const uint8_t*>(p), p ? GlobalSize(block) : 0);
    if (p) GlobalUnlock(block);
}

}  // namespace

bool EditPrinter(HWND parent, TPrinterProperty& property) {
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = parent;
    dialog.Flags = PD_PRINTSETUP;
    dialog.hDevNames = GlobalFromBytes(BuildDevNames(property));
    dialog.hDevMode = GlobalFromBytes(BuildDeviceMode(property));
    const bool chosen = PrintDlgW(&dialog) != FALSE;
    if (chosen) {
        if (dialog.hDevNames)
            ReadGlobal(dialog.hDevNames, [&](const uint8_t* bytes, size_t size) { ReadDevNames(property, bytes, size); });
        ReadGlobal(dialog.hDevMode, [&](const uint8_t* bytes, size_t size) { ReadDeviceMode(property, bytes, size); });
    }
    // The dialog may have replaced either block; what it holds now is ours to free.
    if (dialog.hDevNames) GlobalFree(dialog.hDevNames);
    if (dialog.hDevMode) GlobalFree(dialog.hDevMode);
    return chosen;
}

bool ChoosePrinterValue(HWND parent, std::u16string& value, std::u16string& shown) {
    TPrinterProperty printer;
    ParsePrinter(value, printer);
    if (!EditPrinter(parent, printer)) return false;
    printer.useDefault = false;
    value = PrinterToText(printer);
    shown = PrinterShortText(printer);
    return true;
}

int RunPrinterRoute(TConfigSession& session, void* parent) {
    TPrinterProperty printer;
    for (const TDataValue& data : session.dataValues) {
        if (data.name == u"Printer") {
            ParsePrinter(data.value, printer);
            break;
        }
    }
    if (!EditPrinter(static_cast<HWND>(parent), printer)) return IDCANCEL;
    printer.useDefault = false;
    if (TElementDef* element = session.FindElement(u"Printer")) element->value = PrinterToText(printer);
    return IDOK;
}

}  // namespace qrl
