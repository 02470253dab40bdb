// The character maps of a run, kept in the session in the order they were opened, and their
// exchange with the kernel over the session's host link.
#pragma once

#include <string_view>

#include "charmap/charmap.h"

namespace qrl {

class TConfigSession;

// The session's characterMaps; made empty on first use.
TCharMapList& SessionCharMaps(TConfigSession& session);

TCharMap* FindCharMap(TConfigSession& session, std::u16string_view emName, std::u16string_view mapName,
                      std::u16string_view language);
bool AnyCharMapModified(const TConfigSession& session);
// The map from memory, or fetched with host link code 8437; null when the fetch fails.
TCharMap* FetchCharMap(TConfigSession& session, std::u16string_view emName, std::u16string_view mapName,
                       std::u16string_view language);
// Sends each modified map with code 8437, then code 8438 once if anything was sent.
void SaveCharacterMaps(TConfigSession& session);

}  // namespace qrl
