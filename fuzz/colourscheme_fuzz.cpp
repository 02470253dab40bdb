// Data items of type attrnames and colourschemelist, the reply block written from what was read,
// and the resolution rules on the schemes read.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "colours/attrdialogdata.h"
#include "colours/colourschemedoc.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"
#include "xmlfuzz.h"

using AdvXMLParser::Document;
using AdvXMLParser::Element;

namespace {

using fuzzing::firstElement;
using fuzzing::parse;

bool sameScheme(const qrl::TColourScheme& a, const qrl::TColourScheme& b) {
    if (a.palette != b.palette || a.colours != b.colours) return false;
    for (std::size_t i = 0; i < a.features.size(); ++i) {
        const auto& x = a.features[i];
        const auto& y = b.features[i];
        if (x.override != y.override || x.features != y.features || x.foreground != y.foreground ||
            x.background != y.background)
            return false;
    }
    for (std::size_t i = 0; i < a.fields.size(); ++i) {
        const auto& x = a.fields[i];
        const auto& y = b.fields[i];
        if (x.override != y.override || x.secondFlag != y.secondFlag || x.features != y.features ||
            x.foreground != y.foreground || x.background != y.background)
            return false;
    }
    return a.boldMode == b.boldMode && a.dimMode == b.dimMode && a.useBgGraphic == b.useBgGraphic &&
           a.graphicMode == b.graphicMode;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const auto doc = parse(qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size)));
    if (!doc || !doc->Root()) return 0;
    const Element& item = *doc->Root();

    qrl::TAttrNameTables names;
    qrl::ReadAttrNames(names, item);
    qrl::TColourSchemeList schemes;
    qrl::ReadColourSchemes(schemes, item);

    qrl::TAttrDialogData dialog;
    qrl::LoadAttrDialogNames(dialog, names, qrl::ColourTexts());
    dialog.enableInvisCfg = size % 2 == 0;
    for (std::size_t s = 0; s < schemes.size() && s < 4; ++s) {
        dialog.working = schemes[s];
        for (int i = -1; i <= 256; ++i) {
            const qrl::TResolvedAttr f = qrl::ResolveFeature(dialog, i);
            const qrl::TResolvedAttr g = qrl::ResolveField(dialog, i);
            if (f.foreground > 255 || f.background > 255 || g.foreground > 255 || g.background > 255) std::abort();
            (void)qrl::FeatureListText(dialog, static_cast<uint32_t>(i), i % 2 == 0);
        }
    }

    // Everything read must survive the reply: written as updates and read back, it is the same.
    for (auto& scheme : schemes) scheme.operation = qrl::kSchemeUpdate;
    Document reply(u"Config");
    Element& dataNode = reply.Root()->AddElement(u"Data");
    qrl::WriteColourSchemeListItem(dataNode, schemes);
    std::u16string text;
    AdvXMLParser::WriteDocument(reply, text);
    const auto again = parse(text);
    if (!again || !again->Root()) return 0;  // names the reader rejects
    const Element* listItem = firstElement(*again->Root());
    if (!listItem) std::abort();
    const Element* list = firstElement(*listItem);
    if (!list) std::abort();
    qrl::TColourSchemeList back;
    qrl::ReadColourSchemes(back, *list);
    if (back.size() != schemes.size()) std::abort();
    for (std::size_t s = 0; s < schemes.size(); ++s)
        if (!sameScheme(schemes[s], back[s])) std::abort();
    return 0;
}
