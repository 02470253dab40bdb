#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "charmap/charmapsession.h"
#include "request/fakehost.h"
#include "request/session.h"

using namespace qrl;
using qrl::testing::TFakeHost;

namespace {

THostExchangeRecord& exchangeOf(const THostLinkRecord& record) {
    return *reinterpret_cast<THostExchangeRecord*>(static_cast<uintptr_t>(record.second));
}

uint64_t answerWith(const THostLinkRecord& record, const std::u16string& text) {
    THostExchangeRecord& exchange = exchangeOf(record);
    if (exchange.capacity < text.size() + 1) {
        exchange.needed = text.size() + 1;
        return 160;
    }
    std::memcpy(reinterpret_cast<char16_t*>(static_cast<uintptr_t>(exchange.reply)), text.c_str(),
                (text.size() + 1) * sizeof(char16_t));
    return 0;
}

}  // namespace

TEST(CharMapSession, FetchEditSaveOverTheLink) {
    TFakeHost host;
    std::vector<std::u16string> requests;
    std::vector<uint32_t> codes;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        codes.push_back(r.code);
        if (r.code != static_cast<uint32_t>(HostCode::Exchange)) return 0;
        requests.push_back(TFakeHost::TextAt(exchangeOf(r).request));
        // A long reply, so that the exchange has to grow its buffer once.
        std::u16string reply = u"<charmap flags=\"0\"><map start=\"40\" length=\"c0\">";
        for (int i = 0; i < 200; ++i) reply += u"<block idx=\"41\" map=\"a0\"/>";
        return answerWith(r, reply + u"</map></charmap>");
    };
    TConfigSession session;
    session.link.window = 0x10;
    session.link.message = 0x400;
    session.link.channel = &host;

    EXPECT_FALSE(AnyCharMapModified(session));
    TCharMap* map = FetchCharMap(session, u"IBM 5250", u"cp037", u"Deutsch");
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->map.size(), 0x100u);
    EXPECT_EQ(map->map[0x41], 0xA0);
    ASSERT_EQ(requests.size(), 2u);  // 160 first, then once more with room enough
    EXPECT_EQ(requests[0], u"<charmap op=\"get\" emname=\"IBM 5250\" mapname = \"cp037\" language=\"Deutsch\"/>");
    EXPECT_EQ(FindCharMap(session, u"IBM 5250", u"cp037", u"Deutsch"), map);
    EXPECT_EQ(SessionCharMaps(session).size(), 1u);

    // Nothing modified: a save sends nothing, not even 8438.
    codes.clear();
    SaveCharacterMaps(session);
    EXPECT_TRUE(codes.empty());

    map->SetEntry(0x42, 0xE2);
    map->modified = true;
    EXPECT_TRUE(AnyCharMapModified(session));
    requests.clear();
    SaveCharacterMaps(session);
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0], WriteCharMapPut(*map));
    EXPECT_NE(requests[0].find(u"<block idx=\"41\" map=\"a0 e2 \"/>"), std::u16string::npos);
    ASSERT_FALSE(codes.empty());
    EXPECT_EQ(codes.back(), static_cast<uint32_t>(HostCode::MapsSaved));
    EXPECT_FALSE(AnyCharMapModified(session));
}

TEST(CharMapSession, NoLinkMeansTheFetchFails) {
    TConfigSession session;
    EXPECT_EQ(FetchCharMap(session, u"e", u"m", u"l"), nullptr);  // empty reply: not a document
    EXPECT_TRUE(SessionCharMaps(session).empty());
    EXPECT_FALSE(AnyCharMapModified(session));
}
