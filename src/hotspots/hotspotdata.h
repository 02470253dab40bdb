// The request's share of the hotspot job: the `Data` item of type hotspots names the file, its
// folder and the emulation, whose name is the default set.
#pragma once

#include <string>

namespace AdvXMLParser {
class Element;
}

namespace qrl {

class TConfigSession;
class TElementDef;
class TRequestHooks;

// Reads the `Item` children `filename`, `directory` and `emulation` (names case ignored) into
// hotspotFile, hotspotDirectory and hotspotEmulation; other names and other tags are passed over.
void ReadHotspotItem(TConfigSession& session, const TElementDef& def, const AdvXMLParser::Element& item);
// Appends the reply's `Hotspots` item: the file in use (hotspotFile).
void WriteHotspotItem(const TConfigSession& session, const TElementDef& def, AdvXMLParser::Element& data);

// Installs the reader and the writer of the hotspots type.
void InstallHotspotHooks(TRequestHooks& hooks);

// The path of the file in use: hotspotFile as it stands when absolute, else inside
// hotspotDirectory.
std::u16string HotSpotFullPath(const TConfigSession& session);

}  // namespace qrl
