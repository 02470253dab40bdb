#include "app/module_win.h"

#include "charmap/charmapdlg.h"
#include "charmap/charmapsession.h"
#include "colours/colourconfigdlg.h"
#include "colours/colourmapdlg.h"
#include "hotspots/hotspotsdlg.h"
#include "keyboard/classickeymapdlg.h"
#include "keyboard/keymapdlg.h"
#include "keyboard/keymapdata.h"
#include "keyboard/keymapsettings.h"
#include "macro/macroassistdlg.h"
#include "mouse/mousedlg.h"
#include "properties/fontdlg.h"
#include "properties/printer.h"
#include "properties/printerdlg.h"
#include "properties/sslcertdlg.h"
#include "request/session.h"

namespace qrl {

namespace {

int RunKeymapRoute(TConfigSession& session, void* parent) {
    return RunKeymapEditor(session, parent, &runKeymapDialog, &RunClassicKeymap);
}

int AssistFormMacro(HWND parent, const TConfigSession& session, std::u16string& text, uint32_t mode) {
    return runMacroAssistant(parent, text, NamesOf(KeyDataOf(session).emulationKeys), session.link.window, mode);
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

const TFormEditors& FormEditors() {
    static const TFormEditors editors{
        &AssistFormMacro,     // macro (text elements with the Assist button)
        &ChoosePrinterValue,  // properties
        &UseDefaultPrinter,   // properties
        &ChooseFontValue,     // properties
        &SpecialValueEditor,  // colours, charmap, properties
        &AnyCharMapModified,  // charmap
        &SaveCharacterMaps,   // charmap
        &RunAddLanguage,      // charmap
    };
    return editors;
}

}  // namespace qrl
