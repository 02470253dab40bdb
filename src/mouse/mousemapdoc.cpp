#include "mouse/mousemapdoc.h"

#include "text/textutil.h"
#include "xml/node.h"

using AdvXMLParser::Element;

namespace qrl {

void ReadMouseMap(TMouseMap& map, const Element& item) {
    map.clear();
    for (std::size_t i = 0; i < item.GetChildCount(); ++i) {
        const Element* e = item.GetChild(i).AsElement();
        if (!e || !iequals(e->GetName(), u"Map")) continue;
        // Entries are taken as they come: two for one event are both kept, and event 0 too.
        map.push_back({ParseMouseEvent(e->GetAttribute(u"Event").GetText()),
                       ParseMouseAction(e->GetAttribute(u"Action").GetText())});
    }
}

void WriteMouseMapItem(Element& data, const TMouseMap& map) {
    Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(u"MouseMap");
    for (const TMouseMapEntry& entry : map) {
        if (entry.action.action == kMouseNotAssigned) continue;
        Element& e = item.AddElement(u"Map");
        e.SetAttribute(u"Event").SetText(MouseEventText(entry.event));
        e.SetAttribute(u"Action").SetText(MouseActionText(entry.action));
    }
}

}  // namespace qrl
