// The printer setup through the platform's print dialog, and the "Printer" route. Win32 only.
#pragma once

#include <windows.h>

#include "properties/printer.h"

namespace qrl {

class TConfigSession;

// The platform's printer setup, started from the property; false when the user cancelled, and the
// property then stays as it was.
bool EditPrinter(HWND parent, TPrinterProperty& property);
// The same on a printer value; on true `value` holds the chosen printer and `shown` its short text.
bool ChoosePrinterValue(HWND parent, std::u16string& value, std::u16string& shown);

// The editor of the "Printer" route: the printer dialog alone on the request's "Printer" value. 1
// when the user chose a printer (the element holds it), 2 when not.
int RunPrinterRoute(TConfigSession& session, void* parent);

}  // namespace qrl
