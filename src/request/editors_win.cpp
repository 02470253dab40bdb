#include "request/module_win.h"

#include "charmap/charmapdlg.h"
#include "colours/colourconfigdlg.h"
#include "colours/colourmapdlg.h"
#include "hotspots/hotspotsdlg.h"
#include "keyboard/classickeymapdlg.h"
#include "keyboard/keymapdlg.h"
#include "keyboard/keymapsettings.h"
#include "mouse/mousedlg.h"
#include "properties/printerdlg.h"
#include "properties/sslcertdlg.h"

namespace qrl {

namespace {

int RunKeymapRoute(TConfigSession& session, void* parent) {
    return RunKeymapEditor(session, parent, &runKeymapDialog, &RunClassicKeymap);
}

}  // namespace

const std::array<TEditorRoute, kEditorRouteCount>& EditorRoutes() {
    // By EditorRoute: KeyMap, ColourMap, Printer, Hotspots, MouseMap; each from its subsystem.
    static const std::array<TEditorRoute, kEditorRouteCount> routes{
        &RunKeymapRoute,  // KeyMap (keyboard): the graphic editor, or the classic one
        &RunColourDialog,  // ColourMap (colours)
        &RunPrinterRoute,  // Printer (properties)
        &RunHotSpotDialog,  // Hotspots (hotspots)
        &RunMouseDialog,  // MouseMap (mouse)
    };
    return routes;
}

TSpecialValueEditor SpecialValueEditor(ElementType type) {
    switch (type) {
    case ElementType::Ibm5250Colours: return &Edit5250ColourMap;
    case ElementType::TandemColours: return &EditTandemColourMap;
    case ElementType::Charset: return &EditCharacterSet;
    case ElementType::SslCertificate: return &EditSslCertificate;
    default: return nullptr;
    }
}

}  // namespace qrl
