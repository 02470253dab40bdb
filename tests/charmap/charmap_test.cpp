#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "charmap/charmap.h"

using namespace qrl;

namespace {

TCharMap named(std::u16string em, std::u16string map, std::u16string language) {
    TCharMap m;
    m.emName = std::move(em);
    m.mapName = std::move(map);
    m.language = std::move(language);
    return m;
}

const std::u16string kDeclaration = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

}  // namespace

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

TEST(CharMapDocument, GetRequestKeepsTheOddBlanksAndNoEscaping) {
    EXPECT_EQ(CharMapGetRequest(u"IBM 5250", u"cp\"037", u"Deutsch"),
              u"<charmap op=\"get\" emname=\"IBM 5250\" mapname = \"cp\"037\" language=\"Deutsch\"/>");
}

TEST(CharMapDocument, ReadsRangeFlagsAndBlocks) {
    TCharMap m;
    EXPECT_EQ(ReadCharMapReply(m, u"<x flags=\"0\"><map start=\"20\" length=\"5\"/></x>"), kCharMapRead);
    ASSERT_EQ(m.map.size(), 37u);  // 0x20 + 5: the root's name plays no part
    EXPECT_EQ(m.start, 0x20u);
    EXPECT_EQ(m.length, 5u);
    for (std::size_t i = 0; i < m.map.size(); ++i) EXPECT_EQ(m.map[i], i);

    TCharMap r;
    EXPECT_EQ(ReadCharMapReply(r, u"<charmap flags=\"1\"><map start=\"0\" length=\"100\"/></charmap>"), 0);
    EXPECT_EQ(r.flags, 1u);
    ASSERT_EQ(r.map.size(), kReverseTableLength);
    EXPECT_EQ(r.map[65534], 65534);
    EXPECT_EQ(r.defaultMap[300], 300);

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
}

TEST(CharMapDocument, DefmapBeforeMapIsLost) {
    TCharMap m;
    EXPECT_EQ(ReadCharMapReply(m, u"<c><defmap><block idx=\"0\" map=\"9\"/></defmap>"
                                  u"<map start=\"0\" length=\"2\"/></c>"),
              0);
    EXPECT_EQ(m.defaultMap, (std::vector<uint16_t>{0, 1}));
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
    TCharMap m = named(u"IBM 5250", u"cp037", u"Deutsch");
    m.flags = kCharMapHostBytes;  // the put says 0 whatever the kind
    m.start = 0x40;
    m.length = 0xC0;
    m.SetTableLength(0x100);
    m.map[5] = 0xAB;
    m.map[7] = 0xCD;  // 6 agrees: two blocks
    for (std::size_t i = 0x40; i < 0x40 + 40; ++i) m.map[i] = static_cast<uint16_t>(0x1000 + i);
    const std::u16string text = WriteCharMapPut(m);
    std::u16string run32, run8;
    for (std::size_t i = 0x40; i < 0x60; ++i) run32 += u"10" + std::u16string{u"456789abcdef"[i / 16 - 4]} +
                                                        std::u16string{u"0123456789abcdef"[i % 16]} + u" ";
    for (std::size_t i = 0x60; i < 0x68; ++i) run8 += u"106" + std::u16string{u"0123456789abcdef"[i % 16]} + u" ";
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

TEST(CharMapDocument, PutOfUnchangedTableHasNoBlockAndEscapesNames) {
    TCharMap m = named(u"A&B", u"<m>", u"\"x\"");
    m.SetTableLength(0x10);
    m.map[0xF] = 0xF;  // the same value again is no difference
    m.start = 0;
    m.length = 0x10;
    EXPECT_EQ(WriteCharMapPut(m),
              kDeclaration +
                  u"<charmap op=\"put\" emname=\"A&amp;B\" mapname=\"&lt;m&gt;\" language=\"&quot;x&quot;\" flags=\"0\">\n"
                  u"  <map start=\"0\" length=\"10\"/>\n"
                  u"</charmap>");
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
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], CharMapGetRequest(u"em", u"map", u"lang"));
    // Opened before: from memory, with its edits, and the kernel is not asked again.
    first->map[2] = 0x99;
    EXPECT_EQ(FetchCharMap(maps, exchange, u"em", u"map", u"lang"), first);
    EXPECT_EQ(sent.size(), 1u);
    // Names compare exactly, case included.
    EXPECT_EQ(FindCharMap(maps, u"em", u"map", u"Lang"), nullptr);
    answer = u"<charmap error=\"1\"/>";
    EXPECT_EQ(FetchCharMap(maps, exchange, u"em", u"map", u"Lang"), nullptr);
    EXPECT_EQ(maps.size(), 1u);
    answer.clear();
    EXPECT_EQ(FetchCharMap(maps, exchange, u"em", u"other", u"lang"), nullptr);
    EXPECT_EQ(maps.size(), 1u);
    EXPECT_EQ(sent.size(), 3u);
}
