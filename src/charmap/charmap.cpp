#include "charmap/charmap.h"

#include <algorithm>

#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

using AdvXMLParser::Element;

namespace qrl {

void TCharMap::SetTableLength(std::size_t n) {
    n = std::min(n, kMaxCharMapLength);
    // Both tables grow together; an entry no document mentions is its own code.
    for (std::vector<uint16_t>* table : {&map, &defaultMap}) {
        std::size_t i = table->size();
        if (n <= i) continue;
        table->resize(n);
        for (; i < n; ++i) (*table)[i] = static_cast<uint16_t>(i);
    }
}

void TCharMap::SetEntry(std::size_t code, uint16_t value) {
    if (code >= kMaxCharMapLength) return;
    if (code >= map.size()) SetTableLength(code + 1);
    map[code] = value;
}

std::u16string CharMapGetRequest(std::u16string_view emName, std::u16string_view mapName,
                                 std::u16string_view language) {
    // The blanks around the second "=" are part of what the kernel expects.
    std::u16string text = u"<charmap op=\"get\" emname=\"";
    text += emName;
    text += u"\" mapname = \"";
    text += mapName;
    text += u"\" language=\"";
    text += language;
    text += u"\"/>";
    return text;
}

namespace {

uint32_t hexAttr(const Element& e, std::u16string_view name) {
    return wcstoulBase16(e.GetAttribute(name).GetText());
}

// Blocks of differences: from `idx` on, one hexadecimal value per code, until the text runs out, a
// non-number is met, or the table ends.
void readBlocks(std::vector<uint16_t>& table, const Element& parent) {
    for (std::size_t i = 0; i < parent.GetChildCount(); ++i) {
        const Element* block = parent.GetChild(i).AsElement();
        if (!block || block->GetName() != u"block") continue;
        std::size_t pos = hexAttr(*block, u"idx");
        const std::u16string values = block->GetAttribute(u"map").GetText();
        std::u16string_view rest = values;
        while (pos < table.size()) {
            std::size_t used = 0;
            const uint32_t value = wcstoulBase16(rest, &used);
            if (used == 0) break;
            table[pos++] = static_cast<uint16_t>(value);
            rest.remove_prefix(used);
        }
    }
}

}  // namespace

int ReadCharMapReply(TCharMap& map, std::u16string_view replyText) {
    std::unique_ptr<AdvXMLParser::Document> doc;
    try {
        AdvXMLParser::Parser parser;
        doc = parser.Parse(replyText.data(), replyText.size());
    } catch (...) {
        return kCharMapBadReply;
    }
    if (!doc || !doc->Root()) return kCharMapBadReply;
    const Element& root = *doc->Root();  // its name plays no part
    if (!root.GetAttribute(u"error").GetText().empty()) return kCharMapHostError;
    map.flags = hexAttr(root, u"flags");
    for (std::size_t i = 0; i < root.GetChildCount(); ++i) {
        const Element* e = root.GetChild(i).AsElement();
        if (!e) continue;
        if (e->GetName() == u"map") {
            map.start = hexAttr(*e, u"start");
            map.length = hexAttr(*e, u"length");
            const std::size_t n = (map.flags & kCharMapReverse)
                                      ? kReverseTableLength
                                      : static_cast<std::size_t>(uint64_t{map.start} + map.length);
            map.SetTableLength(n);
            readBlocks(map.map, *e);
        } else if (e->GetName() == u"defmap") {
            // No size of its own: a defmap ahead of map meets an empty table.
            readBlocks(map.defaultMap, *e);
        }
    }
    return kCharMapRead;
}

std::u16string WriteCharMapPut(const TCharMap& map) {
    AdvXMLParser::Document doc(u"charmap");
    Element& root = *doc.Root();
    root.SetAttribute(u"op").SetText(u"put");
    root.SetAttribute(u"emname").SetText(map.emName);
    root.SetAttribute(u"mapname").SetText(map.mapName);
    root.SetAttribute(u"language").SetText(map.language);
    root.SetAttribute(u"flags").SetText(u"0");  // whatever the map's kind, the kernel wants 0 here
    Element& table = root.AddElement(u"map");
    table.SetAttribute(u"start").SetText(hexLower(map.start));
    table.SetAttribute(u"length").SetText(hexLower(map.length));

    constexpr std::size_t kBlockValues = 32;
    const std::size_t n = std::min(map.map.size(), map.defaultMap.size());
    const auto differs = [&](std::size_t i) { return map.map[i] != map.defaultMap[i]; };
    std::size_t i = 0;
    while (i < n) {
        if (!differs(i)) {
            ++i;
            continue;
        }
        Element& block = table.AddElement(u"block");
        block.SetAttribute(u"idx").SetText(hexLower(static_cast<uint32_t>(i)));
        std::u16string values;
        std::size_t count = 0;
        do {
            values += hexLower(map.map[i]);
            values += u' ';
            ++count;
            ++i;
        } while (count < kBlockValues && i < n && differs(i));
        block.SetAttribute(u"map").SetText(values);
    }

    std::u16string text;
    AdvXMLParser::WriteDocument(doc, text);
    return text;
}

TCharMap* FindCharMap(const TCharMapList& maps, std::u16string_view emName, std::u16string_view mapName,
                      std::u16string_view language) {
    for (const auto& m : maps)
        if (m->emName == emName && m->mapName == mapName && m->language == language) return m.get();
    return nullptr;
}

bool AnyCharMapModified(const TCharMapList& maps) {
    return std::any_of(maps.begin(), maps.end(), [](const auto& m) { return m->modified; });
}

TCharMap* FetchCharMap(TCharMapList& maps, const TCharMapExchange& exchange, std::u16string_view emName,
                       std::u16string_view mapName, std::u16string_view language) {
    if (TCharMap* known = FindCharMap(maps, emName, mapName, language)) return known;
    const std::u16string reply = exchange(CharMapGetRequest(emName, mapName, language));
    auto map = std::make_unique<TCharMap>();
    map->emName = emName;
    map->mapName = mapName;
    map->language = language;
    if (ReadCharMapReply(*map, reply) != kCharMapRead) return nullptr;
    maps.push_back(std::move(map));
    return maps.back().get();
}

bool SaveCharacterMaps(TCharMapList& maps, const TCharMapExchange& exchange, const std::function<void()>& mapsSaved) {
    bool sent = false;
    for (const auto& m : maps) {
        if (!m->modified) continue;
        exchange(WriteCharMapPut(*m));  // nobody reads the reply to a save
        m->modified = false;
        sent = true;
    }
    if (sent && mapsSaved) mapsSaved();
    return sent;
}

}  // namespace qrl
