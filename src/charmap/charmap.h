// Character maps held by the emulator's kernel: fetched over the host link when the user opens one,
// edited in memory, and sent back as the differences from the kernel's default table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// Bits of TCharMap::flags; other bits are kept and mean nothing here.
inline constexpr uint32_t kCharMapReverse = 1;    // index is Unicode, entry an 8-bit code
inline constexpr uint32_t kCharMapHostBytes = 8;  // index is Unicode, entry a host byte

inline constexpr std::size_t kReverseTableLength = 65535;
// Codes are 16-bit, so no table is longer than this, whatever a reply's start and length say.
inline constexpr std::size_t kMaxCharMapLength = 0x10000;

// Results of ReadCharMapReply.
inline constexpr int kCharMapRead = 0;
inline constexpr int kCharMapHostError = 10;
inline constexpr int kCharMapBadReply = 630;

struct TCharMap {
    std::u16string emName;
    std::u16string mapName;
    std::u16string language;
    bool modified = false;
    std::vector<uint16_t> map;         // current table, indexed by code
    std::vector<uint16_t> defaultMap;  // the kernel's default, always as long as map
    uint32_t start = 0;                // first code shown
    uint32_t length = 0;               // number of codes shown
    uint32_t flags = 0;

    // Grows both tables to n (at most kMaxCharMapLength), new entries being the identity; never shrinks.
    void SetTableLength(std::size_t n);
    // Grows the table to take code if needed, then sets map[code]; a code beyond 16 bits is ignored.
    void SetEntry(std::size_t code, uint16_t value);
};

// Owned in the order of opening; a dialog keeps pointers to its map, so entries never move.
using TCharMapList = std::vector<std::unique_ptr<TCharMap>>;

// The document exchange of host link code 8437: the request text in, the reply text out (empty when
// the exchange failed).
using TCharMapExchange = std::function<std::u16string(const std::u16string& request)>;

// The `get` request for a map, exactly as the kernel expects it, names unescaped.
std::u16string CharMapGetRequest(std::u16string_view emName, std::u16string_view mapName,
                                 std::u16string_view language);

// Reads the kernel's reply to a `get` into map: kCharMapRead, kCharMapHostError when the reply has
// an error attribute, kCharMapBadReply when it is not a well-formed document.
int ReadCharMapReply(TCharMap& map, std::u16string_view replyText);

// The `put` document that sends the map's differences from its default.
std::u16string WriteCharMapPut(const TCharMap& map);

// The map of exactly these three names, case included, or null.
TCharMap* FindCharMap(const TCharMapList& maps, std::u16string_view emName, std::u16string_view mapName,
                      std::u16string_view language);

bool AnyCharMapModified(const TCharMapList& maps);

// The map of these names, from memory if it was opened before in this run, else fetched through
// exchange and appended. Null when the fetch fails; the list is then as it was.
TCharMap* FetchCharMap(TCharMapList& maps, const TCharMapExchange& exchange, std::u16string_view emName,
                       std::u16string_view mapName, std::u16string_view language);

// Sends every modified map in list order and clears its flag; a failed exchange is not noticed. When
// anything was sent, mapsSaved runs once (host link code 8438). Returns whether anything was sent.
bool SaveCharacterMaps(TCharMapList& maps, const TCharMapExchange& exchange, const std::function<void()>& mapsSaved);

}  // namespace qrl
