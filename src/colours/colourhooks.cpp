#include "colours/colourhooks.h"

#include "colours/colourschemedoc.h"
#include "request/hooks.h"
#include "request/session.h"
#include "xml/node.h"

using AdvXMLParser::Element;

namespace qrl {

namespace {

// The session's record for the colour model.
struct TColourStore {
    TColourSchemeList colourSchemes;
};

void readSchemes(TConfigSession& session, const TElementDef&, const Element& item) {
    ReadColourSchemes(SessionColourSchemes(session), item);
}

void readNames(TConfigSession& session, const TElementDef&, const Element& item) { ReadAttrNames(session, item); }

void writeSchemes(const TConfigSession& session, const TElementDef&, Element& data) {
    WriteColourSchemeListItem(data, SessionColourSchemes(session));
}

}  // namespace

TColourSchemeList& SessionColourSchemes(TConfigSession& session) {
    return session.Part<TColourStore>().colourSchemes;
}

const TColourSchemeList& SessionColourSchemes(const TConfigSession& session) {
    static const TColourSchemeList none;
    const TColourStore* store = session.FindPart<TColourStore>();
    return store ? store->colourSchemes : none;
}

void InstallColourHooks(TRequestHooks& hooks) {
    hooks.SetDataKind(u"colourschemelist", TDataKind{&readSchemes, &writeSchemes});
    // Attribute names travel one way: nothing to write.
    hooks.SetDataKind(u"attrnames", TDataKind{&readNames, nullptr});
}

}  // namespace qrl
