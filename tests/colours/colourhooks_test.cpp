#include <gtest/gtest.h>

#include <string>

#include "colours/colourhooks.h"
#include "request/reply.h"
#include "request/session.h"

using namespace qrl;

namespace {

const char16_t kRequest[] =
    u"<Config ModuleType=\"ColourMap\">"
    u"<DTD>"
    u"<Element Name=\"CurrScheme\" Type=\"text\"/>"
    u"<Element Name=\"Schemes\" Type=\"colourschemelist\"/>"
    u"<Element Name=\"Names\" Type=\"attrnames\"/>"
    u"</DTD>"
    u"<Data>"
    u"<Item Element=\"CurrScheme\" Value=\"night\"/>"
    u"<Item Element=\"Names\"><feature index=\"2\" long=\"Underscore\" short=\"Us\"/>"
    u"<colour index=\"3\" descr=\"Teal\"/><field index=\"1\" descr=\"Protected\"/></Item>"
    u"<Item Element=\"Schemes\">"
    u"<ColourScheme Element=\"Day\"><Item Element=\"BoldMode\" Value=\"1\"/></ColourScheme>"
    u"<ColourScheme Element=\"Night\"><palette value=\"1 2 3\"/></ColourScheme>"
    u"</Item>"
    u"<Item Element=\"Schemes\"><ColourScheme Element=\"Third\"/></Item>"
    u"</Data>"
    u"</Config>";

}  // namespace

TEST(ColourHooks, RequestFillsSessionAndReplyCarriesOnlyChangedSchemes) {
    TConfigSession session;
    session.LoadRequestText(kRequest);
    session.ApplyDataValues();
    EXPECT_TRUE(session.attrDataPresent);
    EXPECT_EQ(session.longFeatureNames[2], u"Underscore");
    EXPECT_EQ(session.shortFeatureNames[2], u"Us");
    EXPECT_EQ(session.colourDescriptions[3], u"Teal");
    EXPECT_EQ(session.fieldDescriptions[1], u"Protected");
    TColourSchemeList& schemes = SessionColourSchemes(session);
    ASSERT_EQ(schemes.size(), 3u);  // every item adds to the list
    EXPECT_EQ(schemes[0].boldMode, 1u);
    EXPECT_EQ(schemes[1].palette[2], 3u);
    EXPECT_EQ(FindColourScheme(schemes, u"NIGHT"), &schemes[1]);

    // Nothing changed: an empty ColourSchemeList, and never the attribute names.
    EXPECT_EQ(WriteDataReply(session, false),
              u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              u"<Config>\n"
              u"  <Data>\n"
              u"    <Item Element=\"CurrScheme\" Value=\"night\"/>\n"
              u"    <Item Element=\"ColourSchemeList\"/>\n"
              u"  </Data>\n"
              u"</Config>");

    schemes[2].operation = kSchemeDelete;
    schemes[0].operation = kSchemeUpdate;
    const std::u16string reply = WriteDataReply(session, true);
    EXPECT_EQ(reply.find(u"CurrScheme"), std::u16string::npos);  // unchanged plain value
    const std::size_t day = reply.find(u"<ColourScheme Element=\"Day\" operation=\"update\">");
    const std::size_t third = reply.find(u"<ColourScheme Element=\"Third\" operation=\"delete\"/>");
    ASSERT_NE(day, std::u16string::npos);
    ASSERT_NE(third, std::u16string::npos);
    EXPECT_LT(day, third);
    EXPECT_NE(reply.find(u"<Item Element=\"BoldMode\" Value=\"1\"/>"), std::u16string::npos);
    EXPECT_EQ(reply.find(u"Night"), std::u16string::npos);
}

TEST(ColourHooks, NoColourDataNoBlock) {
    TConfigSession session;
    session.LoadRequestText(u"<Config><DTD><Element Name=\"Schemes\" Type=\"colourschemelist\"/></DTD></Config>");
    EXPECT_FALSE(session.attrDataPresent);
    EXPECT_TRUE(SessionColourSchemes(static_cast<const TConfigSession&>(session)).empty());
    EXPECT_EQ(WriteDataReply(session, false),
              u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              u"<Config>\n"
              u"  <Data/>\n"
              u"</Config>");
    // Names alone set the flag too, so the (empty) scheme block is written.
    TConfigSession named;
    named.LoadRequestText(
        u"<Config><DTD><Element Name=\"Schemes\" Type=\"colourschemelist\"/><Element Name=\"N\" Type=\"attrnames\"/>"
        u"</DTD><Data><Item Element=\"N\"/></Data></Config>");
    EXPECT_EQ(WriteDataReply(named, false),
              u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              u"<Config>\n"
              u"  <Data>\n"
              u"    <Item Element=\"ColourSchemeList\"/>\n"
              u"  </Data>\n"
              u"</Config>");
}
