#include "mouse/mousehooks.h"

#include "mouse/mousemapdoc.h"
#include "request/hooks.h"
#include "request/session.h"
#include "xml/node.h"

using AdvXMLParser::Element;

namespace qrl {

namespace {

// The session's record for the mouse map.
struct TMouseStore {
    TMouseMap mouseMap;
};

void readMap(TConfigSession& session, const TElementDef&, const Element& item) {
    ReadMouseMap(SessionMouseMap(session), item);
}

void writeMap(const TConfigSession& session, const TElementDef&, Element& data) {
    WriteMouseMapItem(data, SessionMouseMap(session));
}

}  // namespace

TMouseMap& SessionMouseMap(TConfigSession& session) { return session.Part<TMouseStore>().mouseMap; }

const TMouseMap& SessionMouseMap(const TConfigSession& session) {
    static const TMouseMap none;
    const TMouseStore* store = session.FindPart<TMouseStore>();
    return store ? store->mouseMap : none;
}

void InstallMouseHooks(TRequestHooks& hooks) { hooks.SetDataKind(u"mousemap", TDataKind{&readMap, &writeMap}); }

}  // namespace qrl
