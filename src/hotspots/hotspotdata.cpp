#include "hotspots/hotspotdata.h"

#include "keyboard/kdf.h"
#include "request/hooks.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {

using AdvXMLParser::Element;

void ReadHotspotItem(TConfigSession& session, const TElementDef&, const Element& item) {
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* child = item.GetChild(i).AsElement();
        if (!child) continue;
        if (!iequals(child->GetName(), u"Item")) {
            NoteDoubtful(session.notes, *child,
                         u"<" + std::u16string(child->GetName()) + u"> is not <Item>: the hot spot data passes it over");
            continue;
        }
        const std::u16string name = child->GetAttribute(u"Element").GetText();
        std::u16string value = child->GetAttribute(u"Value").GetText();
        if (iequals(name, u"filename"))
            session.hotspotFile = std::move(value);
        else if (iequals(name, u"directory"))
            session.hotspotDirectory = std::move(value);
        else if (iequals(name, u"emulation"))
            session.hotspotEmulation = std::move(value);
        else
            NoteDoubtful(session.notes, *child,
                         u"hot spot item \"" + name + u"\" is passed over: only filename, directory and emulation are read");
    }
}

// The reply carries back the file in use, as one inner item.
void WriteHotspotItem(const TConfigSession& session, const TElementDef&, Element& data) {
    Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(u"Hotspots");
    Element& file = item.AddElement(u"Item");
    file.SetAttribute(u"Element").SetText(u"filename");
    file.SetAttribute(u"Value").SetText(session.hotspotFile);
}

void InstallHotspotHooks(TRequestHooks& hooks) { hooks.SetDataKind(u"hotspots", {&ReadHotspotItem, &WriteHotspotItem}); }

std::u16string HotSpotFullPath(const TConfigSession& session) {
    return joinPath(session.hotspotDirectory, session.hotspotFile);
}

}  // namespace qrl
