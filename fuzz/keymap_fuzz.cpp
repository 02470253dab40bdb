// Arbitrary `Data` content of a key map request: the readers of key lists, maps and strings must
// give their lists (or the loader's ECfgError) and never read or write outside them; the reply,
// the mapping rules and the settings then run over whatever was read. The codes of the reply must
// read back exactly.
//
// Input: UTF-8 text, put between <Data> and </Data> of a request whose DTD defines every key type.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "keyboard/keymapdata.h"
#include "keyboard/keymaprules.h"
#include "keyboard/keymapsettings.h"
#include "request/reply.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/parser.h"

namespace {

constexpr char16_t kDtd[] =
    u"<DTD><Element Name=\"PhysicalKeys\" Type=\"keylist\"/><Element Name=\"EmulationKeys\" Type=\"keylist\"/>"
    u"<Element Name=\"KeyMap\" Type=\"keymaplist\"/><Element Name=\"KeyStrings\" Type=\"keystringlist\"/>"
    u"<Element Name=\"GlobalKeyStrings\" Type=\"keystringlist\"/><Element Name=\"Spots\" Type=\"hotspots\"/>"
    u"<Element Name=\"numpad\" Type=\"int\"/><Element Name=\"numpadshift\" Type=\"bool\"/></DTD>";

void check(bool condition) {
    if (!condition) __builtin_trap();
}

bool load(qrl::TConfigSession& session, const std::u16string& text) {
    try {
        session.LoadRequestText(text);
        return true;
    } catch (const qrl::ECfgError&) {
    } catch (const AdvXMLParser::Exception&) {
    }
    return false;
}

void exerciseRules(qrl::TKeyData& keys) {
    using namespace qrl;
    std::size_t names = 0;
    const std::size_t rounds = keys.keyMap.size() < 8 ? keys.keyMap.size() : 8;
    for (std::size_t i = 0; i < rounds; ++i) {
        const KeyMapEntry entry = keys.keyMap[i];
        names += GraphicKeyName(keys.physicalKeys, entry.PKey).size();
        names += ClassicKeyName(keys.physicalKeys, entry.PKey).size();
        names += ClassicEmulationKeyName(keys.emulationKeys, entry.EmKey).size();
        names += PhysicalCodesFor(keys.keyMap, entry.EmKey, 20).size();
        switch (i % 4) {
        case 0: MapToString(keys, entry.PKey, u"s"); check(MappingKindOf(keys, entry.PKey) >= KeyMappingKind::String); break;
        case 1: MapToGlobalString(keys, entry.PKey, u"g"); check(MappingKindOf(keys, entry.PKey) == KeyMappingKind::GlobalString); break;
        case 2: MapToEmulationKeyReplacing(keys, entry.PKey, entry.PKey, entry.EmKey); break;
        default: UnmapKey(keys, entry.PKey); break;
        }
    }
    check(names != static_cast<std::size_t>(-1));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qrl;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string text = u"<Config>" + std::u16string(kDtd) + u"<Data>" + utf8ToUtf16(bytes) + u"</Data></Config>";

    TConfigSession session;
    if (!load(session, text)) return 0;

    const std::u16string reply = WriteDataReply(session, false);
    WriteDataReply(session, true);

    // The reply's maps read back with the same codes, in the same order.
    const std::u16string::size_type data_at = reply.find(u"<Data");
    check(data_at != std::u16string::npos);
    TConfigSession again;
    check(load(again, u"<Config>" + std::u16string(kDtd) + reply.substr(data_at)));
    const TKeyData& before = KeyDataOf(std::as_const(session));
    const TKeyData& after = KeyDataOf(std::as_const(again));
    check(again.keyDataPresent == session.keyDataPresent);
    if (session.keyDataPresent) {
        check(after.keyMap.size() == before.keyMap.size());
        for (std::size_t i = 0; i < before.keyMap.size(); ++i)
            check(after.keyMap[i].PKey == before.keyMap[i].PKey && after.keyMap[i].EmKey == before.keyMap[i].EmKey);
        check(after.keyStrings.size() == before.keyStrings.size());
        check(after.globalKeyStrings.size() == before.globalKeyStrings.size());
        for (std::size_t i = 0; i < before.keyStrings.size(); ++i) check(after.keyStrings[i].PKey == before.keyStrings[i].PKey);
    }

    KeymapSettings settings(session);
    exerciseRules(settings.keys());
    settings.writeBack();
    WriteDataReply(session, false);
    return 0;
}
