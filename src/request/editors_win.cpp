#include "request/module_win.h"

#include "hotspots/hotspotsdlg.h"
#include "mouse/mousedlg.h"
#include "properties/printerdlg.h"

namespace qrl {

const std::array<TEditorRoute, kEditorRouteCount>& EditorRoutes() {
    // By EditorRoute: KeyMap, ColourMap, Printer, Hotspots, MouseMap. Each editor's subsystem puts
    // its entry here; until then that module type fails with 630.
    static const std::array<TEditorRoute, kEditorRouteCount> routes{
        nullptr,  // KeyMap (keyboard)
        nullptr,  // ColourMap (colours)
        &RunPrinterRoute,  // Printer (properties)
        &RunHotSpotDialog,  // Hotspots (hotspots)
        &RunMouseDialog,  // MouseMap (mouse)
    };
    return routes;
}

}  // namespace qrl
