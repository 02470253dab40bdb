// The Data item of type mousemap, the reply written from it, and edits of the map.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "mouse/mousemapdoc.h"
#include "mouse/mousenames.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"
#include "xmlfuzz.h"

using AdvXMLParser::Document;
using AdvXMLParser::Element;

namespace {

using fuzzing::firstElement;
using fuzzing::parse;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string input = qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    // The text forms on their own, whatever the document does.
    const qrl::TMouseEvent e = qrl::ParseMouseEvent(input);
    const qrl::TMouseAction a = qrl::ParseMouseAction(input);
    if (e.event >= qrl::kMouseEventCount || a.action >= qrl::kMouseActionCount) std::abort();
    if (!(qrl::ParseMouseEvent(qrl::MouseEventText(e)) == e)) std::abort();
    (void)qrl::MouseEventLabel(e, qrl::MouseNames());

    const auto doc = parse(input);
    if (!doc || !doc->Root()) return 0;
    qrl::TMouseMap map;
    qrl::ReadMouseMap(map, *doc->Root());

    // Edits driven by the entries read: set each, then unassign every other one.
    qrl::TMouseMap edited;
    for (std::size_t i = 0; i < map.size(); ++i) {
        qrl::SetMapping(edited, map[i].event, map[i].action);
        if (i % 2 == 1) qrl::SetMapping(edited, map[i].event, qrl::TMouseAction{});
        if (qrl::Lookup(edited, map[i].event).action >= qrl::kMouseActionCount) std::abort();
    }

    Document reply(u"Config");
    Element& dataNode = reply.Root()->AddElement(u"Data");
    qrl::WriteMouseMapItem(dataNode, map);
    std::u16string text;
    AdvXMLParser::WriteDocument(reply, text);
    const auto again = parse(text);
    if (!again || !again->Root()) return 0;  // texts the reader rejects
    const Element* dataBack = firstElement(*again->Root());
    const Element* item = dataBack ? firstElement(*dataBack) : nullptr;
    if (!item) std::abort();
    qrl::TMouseMap back;
    qrl::ReadMouseMap(back, *item);
    std::size_t j = 0;
    for (const auto& entry : map) {
        if (entry.action.action == qrl::kMouseNotAssigned) continue;
        if (j >= back.size() || !(back[j].event == entry.event) || back[j].action.action != entry.action.action)
            std::abort();
        ++j;
    }
    if (j != back.size()) std::abort();
    return 0;
}
