// Where the program is put together: the subsystems that read and write a share of a request are
// joined to the request loader here, for the DLL, the tests, the fuzz targets and the benchmarks.
#include "request/hooks.h"

#include "colours/colourhooks.h"
#include "forms/formdef.h"
#include "hotspots/hotspotdata.h"
#include "keyboard/keymapdata.h"
#include "mouse/mousehooks.h"
#include "properties/font.h"
#include "properties/printer.h"
#include "properties/sslcertificate.h"

namespace qrl {

namespace {

template <class Property>
std::u16string PropertyShortText(std::u16string_view value) {
    Property property;
    property.Parse(value);
    return property.ShortText();
}

std::u16string FontValueShortText(std::u16string_view value) {
    TFontDescription font;
    ParseFont(value, font);
    return FontShortText(font);
}

}  // namespace

const TRequestHooks& RequestHooks() {
    static const TRequestHooks hooks = [] {
        TRequestHooks made;
        InstallRequestHooks(made);
        return made;
    }();
    return hooks;
}

void InstallRequestHooks(TRequestHooks& hooks) {
    hooks.interfaceReader = &ReadInterface;
    hooks.groupsReader = &ReadGroups;
    InstallColourHooks(hooks);
    InstallMouseHooks(hooks);
    InstallKeyDataHooks(hooks);
    InstallHotspotHooks(hooks);
    hooks.SetShortText(ElementType::Font, &FontValueShortText);
    hooks.SetShortText(ElementType::Printer, &PropertyShortText<TPrinterProperty>);
    hooks.SetShortText(ElementType::SslCertificate, &PropertyShortText<TSslCertificateProperty>);
}

}  // namespace qrl
