#include "charmap/charmapsession.h"

#include "request/session.h"

namespace qrl {

namespace {

struct TCharMapStore {
    TCharMapList characterMaps;
};

TCharMapExchange exchangeOver(const HostLink& link) {
    return [&link](const std::u16string& request) {
        return link.Exchange(static_cast<uint32_t>(HostCode::Exchange), request);
    };
}

}  // namespace

TCharMapList& SessionCharMaps(TConfigSession& session) { return session.Part<TCharMapStore>().characterMaps; }

TCharMap* FindCharMap(TConfigSession& session, std::u16string_view emName, std::u16string_view mapName,
                      std::u16string_view language) {
    return FindCharMap(SessionCharMaps(session), emName, mapName, language);
}

bool AnyCharMapModified(const TConfigSession& session) {
    const TCharMapStore* store = session.FindPart<TCharMapStore>();
    return store && AnyCharMapModified(store->characterMaps);
}

TCharMap* FetchCharMap(TConfigSession& session, std::u16string_view emName, std::u16string_view mapName,
                       std::u16string_view language) {
    return FetchCharMap(SessionCharMaps(session), exchangeOver(session.link), emName, mapName, language);
}

void SaveCharacterMaps(TConfigSession& session) {
    const HostLink& link = session.link;
    SaveCharacterMaps(SessionCharMaps(session), exchangeOver(link), [&link] { link.Send(HostCode::MapsSaved, 0, 0); });
}

}  // namespace qrl
