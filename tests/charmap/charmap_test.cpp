#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "charmap/charmap.h"
#include "charmap/charmapedit.h"
#include "charmap/charmapsession.h"
#include "request/fakehost.h"
#include "request/session.h"
#include "text/textutil.h"

namespace qrl {
namespace {

using qrl::testing::AnswerWith;
using qrl::testing::ExchangeOf;
using qrl::testing::TFakeHost;

const std::u16string kDeclaration = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST(CharMapTable, GrowsWithIdentityAndNeverShrinks) {
    TCharMap m;
    m.SetTableLength(4);
    EXPECT_EQ(m.map, (std::vector<uint16_t>{0, 1, 2, 3}));
    EXPECT_EQ(m.defaultMap, m.map);
    m.map[1] = 0x41;
    m.SetTableLength(2);
    EXPECT_EQ(m.map.size(), 4u);
    m.SetEntry(6, 0x99);
    EXPECT_EQ(m.map, (std::vector<uint16_t>{0, 0x41, 2, 3, 4, 5, 0x99}));
    EXPECT_EQ(m.defaultMap, (std::vector<uint16_t>{0, 1, 2, 3, 4, 5, 6}));
    // Codes are 16-bit: nothing grows past 65536 entries.
    m.SetEntry(0x10000, 1);
    EXPECT_EQ(m.map.size(), 7u);
    m.SetTableLength(0xFFFFFFFFu);
    EXPECT_EQ(m.map.size(), kMaxCharMapLength);
    EXPECT_EQ(m.defaultMap.size(), kMaxCharMapLength);
    EXPECT_EQ(m.map[0xFFFF], 0xFFFF);
}

TEST(CharMapDocument, ReadsRangeFlagsAndBlocks) {
    TCharMap m;
    EXPECT_EQ(ReadCharMapReply(m, u"<x flags=\"0\"><map start=\"20\" length=\"5\"/></x>"), kCharMapRead);
    // The table reaches 0x20 + 5; the root's name plays no part.
    EXPECT_EQ(std::vector<std::size_t>({m.map.size(), m.start, m.length}), std::vector<std::size_t>({37, 0x20, 5}));

    TCharMap r;
    EXPECT_EQ(ReadCharMapReply(r, u"<charmap flags=\"1\"><map start=\"0\" length=\"100\"/></charmap>"), 0);
    EXPECT_EQ(std::pair(r.flags, r.map.size()), std::pair(1u, kReverseTableLength));

    TCharMap b;
    EXPECT_EQ(ReadCharMapReply(b,
                               u"<charmap flags=\"8\">\n"
                               u"  <map start=\"0\" length=\"10\">\n"
                               u"    <block idx=\"2\" map=\" c1 C2\tc3 \"/>\n"
                               u"    <Block idx=\"0\" map=\"ff\"/>\n"
                               u"    <block idx=\"e\" map=\"a1 a2 a3 a4\"/>\n"  // runs past the end
                               u"    <block idx=\"7\" map=\"12345 b1 zz b2\"/>\n"
                               u"    <block idx=\"400\" map=\"1\"/>\n"  // beyond the table
                               u"  </map>\n"
                               u"  <defmap><block idx=\"3\" map=\"c2\"/></defmap>\n"
                               u"  <other><block idx=\"0\" map=\"55\"/></other>\n"
                               u"</charmap>"),
              0);
    EXPECT_EQ(b.flags, 8u);
    EXPECT_EQ(b.map, (std::vector<uint16_t>{0, 1, 0xC1, 0xC2, 0xC3, 5, 6, 0x2345, 0xB1, 9, 10, 11, 12, 13, 0xA1,
                                            0xA2}));
    EXPECT_EQ(b.defaultMap, (std::vector<uint16_t>{0, 1, 2, 0xC2, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));

    TCharMap early;  // a defmap before the map is lost
    EXPECT_EQ(ReadCharMapReply(early, u"<c><defmap><block idx=\"0\" map=\"9\"/></defmap><map start=\"0\" length=\"2\"/>"
                                      u"</c>"),
              0);
    EXPECT_EQ(early.defaultMap, (std::vector<uint16_t>{0, 1}));
}

TEST(CharMapDocument, FailuresOfTheReply) {
    TCharMap m;
    EXPECT_EQ(ReadCharMapReply(m, u"<charmap error=\"no such map\"><map start=\"0\" length=\"5\"/></charmap>"),
              kCharMapHostError);
    EXPECT_TRUE(m.map.empty());
    EXPECT_EQ(ReadCharMapReply(m, u""), kCharMapBadReply);  // no link: empty reply
    EXPECT_EQ(ReadCharMapReply(m, u"<charmap flags=\"1\">"), kCharMapBadReply);
    EXPECT_EQ(ReadCharMapReply(m, u"not xml at all"), kCharMapBadReply);
    EXPECT_TRUE(m.map.empty());
    // An error of only blanks is trimmed to nothing and is no error.
    EXPECT_EQ(ReadCharMapReply(m, u"<charmap error=\"  \"/>"), kCharMapRead);
}

TEST(CharMapDocument, PutSendsDifferencesInBlocksOfAtMost32) {
    // The put says flags 0 whatever the kind.
    TCharMap m{.emName = u"IBM 5250", .mapName = u"cp037", .language = u"Deutsch", .start = 0x40, .length = 0xC0,
               .flags = kCharMapHostBytes};
    m.SetTableLength(0x100);
    m.map[5] = 0xAB;
    m.map[7] = 0xCD;  // 6 agrees: two blocks
    for (std::size_t i = 0x40; i < 0x40 + 40; ++i) m.map[i] = static_cast<uint16_t>(0x1000 + i);
    const std::u16string text = WriteCharMapPut(m);
    std::u16string run32, run8;
    for (uint32_t i = 0x40; i < 0x68; ++i) (i < 0x60 ? run32 : run8) += hexLower(0x1000 + i) + u" ";
    EXPECT_EQ(text, kDeclaration +
                        u"<charmap op=\"put\" emname=\"IBM 5250\" mapname=\"cp037\" language=\"Deutsch\" flags=\"0\">\n"
                        u"  <map start=\"40\" length=\"c0\">\n"
                        u"    <block idx=\"5\" map=\"ab \"/>\n"
                        u"    <block idx=\"7\" map=\"cd \"/>\n"
                        u"    <block idx=\"40\" map=\"" + run32 + u"\"/>\n"
                        u"    <block idx=\"60\" map=\"" + run8 + u"\"/>\n"
                        u"  </map>\n"
                        u"</charmap>");
}

TEST(CharMapDocument, GetKeepsOddBlanksUnescapedPutEscapesNamesAndSkipsUnchanged) {
    TCharMap m{.emName = u"A&B", .mapName = u"<m>", .language = u"\"x\"", .length = 0x10};
    m.SetTableLength(0x10);
    m.map[0xF] = 0xF;  // the same value again is no difference
    EXPECT_EQ(WriteCharMapPut(m),
              kDeclaration +
                  u"<charmap op=\"put\" emname=\"A&amp;B\" mapname=\"&lt;m&gt;\" language=\"&quot;x&quot;\" flags=\"0\">\n"
                  u"  <map start=\"0\" length=\"10\"/>\n"
                  u"</charmap>");

    EXPECT_EQ(CharMapGetRequest(u"IBM 5250", u"cp\"037", u"Deutsch"),
              u"<charmap op=\"get\" emname=\"IBM 5250\" mapname = \"cp\"037\" language=\"Deutsch\"/>");
}

TEST(CharMapList, FetchFindsOrAsksAndDropsFailures) {
    TCharMapList maps;
    std::vector<std::u16string> sent;
    std::u16string answer = u"<charmap flags=\"0\"><map start=\"0\" length=\"4\"><block idx=\"1\" map=\"41\"/></map></charmap>";
    const TCharMapExchange exchange = [&](const std::u16string& request) {
        sent.push_back(request);
        return answer;
    };
    TCharMap* first = FetchCharMap(maps, exchange, u"em", u"map", u"lang");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->map, (std::vector<uint16_t>{0, 0x41, 2, 3}));
    EXPECT_EQ(first->language, u"lang");
    EXPECT_EQ(sent, std::vector<std::u16string>{CharMapGetRequest(u"em", u"map", u"lang")});
    // Opened before: from memory, with its edits, and the kernel is not asked again.
    first->map[2] = 0x99;
    EXPECT_EQ(FetchCharMap(maps, exchange, u"em", u"map", u"lang"), first);
    EXPECT_EQ(sent.size(), 1u);
    // Names compare exactly, case included.
    EXPECT_EQ(FindCharMap(maps, u"em", u"map", u"Lang"), nullptr);
    answer = u"<charmap error=\"1\"/>";
    EXPECT_EQ(FetchCharMap(maps, exchange, u"em", u"map", u"Lang"), nullptr);
    EXPECT_EQ(maps.size(), 1u);
    EXPECT_EQ(sent.size(), 2u);
}

TCharMap Map(uint32_t flags, uint32_t start, uint32_t length, std::size_t table) {
    TCharMap map{.mapName = u"cp", .start = start, .length = length, .flags = flags};
    map.SetTableLength(table);
    return map;
}

TEST(CharMapRows, CountsAndFormatsOfTheThreeKinds) {
    EXPECT_EQ(CharMapRowCount(Map(0, 0xF0, 0x40, 0x130)), 16u);  // codes above 255 are not reachable
    EXPECT_EQ(CharMapRowCount(Map(0, 0x100, 4, 0x104)), 0u);
    EXPECT_EQ(CharMapRowCount(Map(0, 5, 0, 5)), 0u);
    EXPECT_EQ(CharMapRowCount(Map(kCharMapReverse, 0, 0, 10)), 256u);

    TCharMap direct = Map(0, 0x40, 3, 0x43);
    direct.map[0x41] = 0x00C4;
    const TCharInverse none = BuildInverse(direct);
    EXPECT_EQ(CharMapRowText(direct, none, 0), u"\t40\t->\t0040 @");
    EXPECT_EQ(CharMapRowText(direct, none, 1), u"*\t41\t->\t00C4 \u00C4");

    TCharMap bytes = Map(kCharMapHostBytes, 0, 2, 2);
    bytes.map[1] = 0xC1;
    EXPECT_EQ(CharMapRowText(bytes, BuildInverse(bytes), 1), u"*\t0001 <SOH>\t->\tC1");
    EXPECT_EQ(CharMapRowText(bytes, BuildInverse(bytes), 0), u"\t0000 <NUL>\t->\t00");

    // Two Unicode values for one byte: the higher wins.
    TCharMap reverse = Map(kCharMapReverse, 0, 0, 0x300);
    reverse.map[0x2C0] = 0x41;
    reverse.map[0x2D0] = 0x41;
    const TCharInverse inverse = BuildInverse(reverse);
    EXPECT_EQ(inverse[0x41], 0x2D0);
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x41), u"*\t02D0 \u02D0\t<-\t41");
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x7F), u"\t007F <DEL>\t<-\t7F");
    EXPECT_EQ(CharMapRowText(reverse, inverse, 0x85), u"\t0085 \t<-\t85");  // no name for a C1 control
}

TEST(CharMapEntry, HexFieldRules) {
    const struct { const char16_t* text; bool unicode; std::optional<uint32_t> value; } cases[] = {
        {u"1F ", true, 0x1F}, {u"1G", true, std::nullopt},  {u"", true, 0},           {u"100", false, std::nullopt},
        {u"100", true, 0x100}, {u"FF", false, 0xFF},         {u"FFFF", true, 0xFFFF}, {u"10000", true, std::nullopt},
        {u" 2a", true, 0x2A},  {u"-1", true, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.text, c.text + std::char_traits<char16_t>::length(c.text)));
        EXPECT_EQ(ParseCharEntryHex(c.text, c.unicode), c.value);
    }
    EXPECT_EQ(CharEntryHexText(0x41, true) + u"|" + CharEntryHexText(0x41, false), u"0041|41");
    EXPECT_EQ(CharEntryCharText(u' ') + u"|" + CharEntryCharText(0x9F) + u"|" + CharEntryCharText(0xD800), u" ||");
}

TEST(CharMapEntry, DirectEditsAreAtOnceReverseOnesWaitForTheTable) {
    TCharMap direct = Map(kCharMapHostBytes, 0x10, 4, 0x14);
    TCharInverse inverse = BuildInverse(direct);
    const TCharEntry start = CharEntryOf(direct, inverse, 2);
    EXPECT_EQ(start.source, u"0012 <DC2>");
    EXPECT_FALSE(start.unicodeValue);
    StoreCharEntry(direct, inverse, 2, 0xF2);
    EXPECT_EQ(direct.map[0x12], 0xF2);
    EXPECT_TRUE(direct.modified);

    TCharMap reverse = Map(kCharMapReverse, 0, 0, 0x200);
    reverse.map[0x1E9] = 0x45;  // the kernel's own choice, undone by a rebuild from the default
    inverse = BuildInverse(reverse);
    const TCharEntry row = CharEntryOf(reverse, inverse, 0x45);
    EXPECT_EQ(row.source, u"45");
    EXPECT_EQ(row.value, 0x1E9u);
    StoreCharEntry(reverse, inverse, 0xC9, 0xC9 + 0x100);
    EXPECT_EQ(reverse.map[0x1C9], 0x1C9);  // not yet
    ApplyInverse(reverse, inverse);
    EXPECT_EQ(reverse.map[0x1C9], 0xC9);
    EXPECT_EQ(reverse.map[0x1E9], 0x45);  // still named by the inverse
}

// "[" and the exact name of a language in use are checked in the dialog's own test.
TEST(NewLanguageName, ClosingBracketIsInvalidToo) {
    EXPECT_EQ(CheckNewLanguageName(u"b]", {u"a"}), LanguageNameProblem::InvalidCharacters);
}

// The dialog's test follows the get, its second try with room enough, the put and the notice; here
// only what a save does with and without changes.
TEST(CharMapSession, SaveSendsOnlyModifiedMapsAndClearsTheMark) {
    TFakeHost host;
    std::vector<std::u16string> requests;
    std::vector<uint32_t> codes;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        codes.push_back(r.code);
        if (r.code != static_cast<uint32_t>(HostCode::Exchange)) return 0;
        requests.push_back(TFakeHost::TextAt(ExchangeOf(r).request));
        return AnswerWith(r, u"<charmap flags=\"0\"><map start=\"40\" length=\"c0\"/></charmap>");
    };
    TConfigSession session;
    session.link = {.window = 0x10, .message = 0x400, .channel = &host};

    TCharMap* map = FetchCharMap(session, u"IBM 5250", u"cp037", u"Deutsch");
    ASSERT_NE(map, nullptr);
    // Nothing modified: a save sends nothing, not even 8438.
    codes.clear();
    SaveCharacterMaps(session);
    EXPECT_TRUE(codes.empty());

    map->SetEntry(0x42, 0xE2);
    map->modified = true;
    EXPECT_TRUE(AnyCharMapModified(session));
    requests.clear();
    SaveCharacterMaps(session);
    EXPECT_EQ(requests, (std::vector<std::u16string>{WriteCharMapPut(*map)}));
    ASSERT_FALSE(codes.empty());
    EXPECT_EQ(codes.back(), static_cast<uint32_t>(HostCode::MapsSaved));
    EXPECT_FALSE(AnyCharMapModified(session));
}

}  // namespace
}  // namespace qrl
