#include <gtest/gtest.h>

#include <cstddef>

#include "fakehost.h"
#include "request/hostlink.h"
#include "request/session.h"

namespace qrl {
namespace {

using testing::AnswerWith;
using testing::ExchangeOf;
using testing::TFakeHost;

TEST(HostLinkRecords, WireLayout) {
    using E = THostExchangeRecord;
    using C = THostAttributeColourRecord;
    using L = THostAddLanguageRecord;
    const std::vector<std::size_t> offsets{
        offsetof(THostLinkRecord, first), offsetof(THostLinkRecord, second), offsetof(E, request), offsetof(E, reply),
        offsetof(E, capacity), offsetof(E, needed), offsetof(C, attribute2), offsetof(C, foreground),
        offsetof(C, background), offsetof(L, name), offsetof(L, base)};
    EXPECT_EQ(offsets, (std::vector<std::size_t>{4, 12, 8, 16, 24, 32, 5, 20, 24, 8, 16}));
    EXPECT_EQ(THostExchangeRecord{}.size, 48u);
}

TEST(HostLinkSend, NeedsWindowAndMessage) {
    TFakeHost host;
    host.answer = [](const THostLinkRecord&) -> uint64_t { return 77; };
    HostLink link{0x1234, 0x400, &host};
    EXPECT_EQ(link.Send(8438, 1, 2), 77u);
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(TFakeHost::Key(host.calls[0]), TFakeHost::Key({0x1234, 0x400, {8438, 1, 0}}));
    EXPECT_EQ(host.calls[0].record.second, 2u);
    link.message = 0;
    EXPECT_EQ(link.Send(8438, 0, 0), 0u);
    link.message = 0x400;
    link.window = 0;
    EXPECT_EQ(link.Send(8438, 0, 0), 0u);
    EXPECT_EQ(host.calls.size(), 1u);

    // A link with no channel of its own and none for the process answers 0.
    const HostLink bare{1, 1};
    EXPECT_EQ(bare.Send(1, 0, 0), 0u);
}

TEST(HostLinkHelp, EmptyTopicSendsTheFallback) {
    TFakeHost host;
    std::vector<std::u16string> topics;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        topics.push_back(TFakeHost::TextAt(r.second));
        return 0;
    };
    TConfigSession session;
    session.link = {0x1234, 0x400, &host};
    session.helpTopic = u"main";
    session.ShowHelp(u"charmap.index");
    session.ShowHelp(u"");
    session.helpTopic.clear();
    session.ShowHelp(u"");
    EXPECT_EQ(topics, (std::vector<std::u16string>{u"charmap.index", u"main", u""}));
    for (const auto& call : host.calls) EXPECT_EQ(call.record.code, 2094u);
}

TEST(HostLinkExchange, RetriesOnceWithTheNeededSizeAndFailsWithAnEmptyReply) {
    TFakeHost host;
    const std::u16string big(5000, u'x');
    std::vector<uint64_t> capacities;
    std::u16string request;
    host.answer = [&](const THostLinkRecord& r) {
        capacities.push_back(ExchangeOf(r).capacity);
        EXPECT_EQ(ExchangeOf(r).size, 48u);
        request = TFakeHost::TextAt(ExchangeOf(r).request);
        return AnswerWith(r, big);
    };
    const HostLink link{0x1234, 0x400, &host};
    EXPECT_EQ(link.Exchange(8437, u"<charmap/>"), big);
    EXPECT_EQ(capacities, (std::vector<uint64_t>{2048, 5001}));
    EXPECT_EQ(request, u"<charmap/>");

    // Failures give an empty reply.
    int calls = 0;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {  // 160 twice
        ++calls;
        ExchangeOf(r).needed = ExchangeOf(r).capacity + 10;
        return 160;
    };
    EXPECT_EQ(link.Exchange(8437, u"x"), u"");
    EXPECT_EQ(calls, 2);

    calls = 0;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {  // an absurd size is not attempted
        ++calls;
        ExchangeOf(r).needed = uint64_t{1} << 60;
        return 160;
    };
    EXPECT_EQ(link.Exchange(8437, u"x"), u"");
    EXPECT_EQ(calls, 1);

    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        AnswerWith(r, u"text");
        return 5;
    };
    EXPECT_EQ(link.Exchange(8437, u"x"), u"");

    // A reply without a terminator is read up to the buffer's end and no further.
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        auto* buffer = reinterpret_cast<char16_t*>(static_cast<uintptr_t>(ExchangeOf(r).reply));
        std::fill(buffer, buffer + ExchangeOf(r).capacity, u'z');
        return 0;
    };
    EXPECT_EQ(link.Exchange(8437, u"x"), std::u16string(2048, u'z'));

    HostLink none;
    EXPECT_EQ(none.Exchange(8437, u"x"), u"");
}

TEST(HostLinkQueries, AuthDirectoryAndEmulationName) {
    TFakeHost host;
    const HostLink link{0x1234, 0x400, &host};
    host.authDirectory = std::u16string(300, u'k');  // filled to the brim without a terminator
    EXPECT_EQ(link.AuthDirectory(), std::u16string(260, u'k'));

    static const char16_t kName[] = u"IBM 5250";
    host.answer = [](const THostLinkRecord& r) -> uint64_t {
        EXPECT_EQ(r.code, 8204u);
        auto** pointer = reinterpret_cast<const char16_t**>(static_cast<uintptr_t>(r.second));
        EXPECT_EQ(**pointer, u'\0');  // preset to an empty text
        *pointer = kName;
        return 0;
    };
    EXPECT_EQ(link.EmulationName(), u"IBM 5250");
    host.answer = [](const THostLinkRecord& r) -> uint64_t {
        *reinterpret_cast<const char16_t**>(static_cast<uintptr_t>(r.second)) = nullptr;
        return 0;
    };
    EXPECT_EQ(link.EmulationName(), u"");
}

TEST(HostLinkQueries, LanguagesAndColours) {
    TFakeHost host;
    const HostLink link{0x1234, 0x400, &host};
    std::vector<std::u16string> texts;
    host.answer = [&](const THostLinkRecord& r) -> uint64_t {
        if (r.code == 8440) {
            const auto* add = reinterpret_cast<const THostAddLanguageRecord*>(static_cast<uintptr_t>(r.second));
            texts.push_back(TFakeHost::TextAt(add->name) + u"<" + TFakeHost::TextAt(add->base));
            return 3;
        }
        if (r.code == 8439) texts.push_back(TFakeHost::TextAt(r.second));
        if (r.code == 1) {
            auto* colours = reinterpret_cast<THostAttributeColourRecord*>(static_cast<uintptr_t>(r.second));
            colours->foreground = colours->kind == 4 ? 0xFF : 0;
            colours->background = colours->attribute1;
        }
        return 0;
    };
    EXPECT_EQ(link.AddLanguage(u"Klingon", u""), 3u);
    EXPECT_EQ(link.DeleteLanguage(u"Klingon"), 0u);
    link.MapsSaved();
    EXPECT_EQ(texts, (std::vector<std::u16string>{u"Klingon<", u"Klingon"}));
    THostAttributeColourRecord colours;
    colours.kind = 4;
    colours.attribute1 = 0x22;
    link.AttributeColours(colours);
    EXPECT_EQ(colours.foreground, 0xFFu);
    EXPECT_EQ(colours.background, 0x22u);
    ASSERT_EQ(host.calls.size(), 4u);
    EXPECT_EQ(host.calls[2].record.code, 8438u);
}

}  // namespace
}  // namespace qrl
