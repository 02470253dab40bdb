#include <gtest/gtest.h>

#include <string>

#include "colours/attrdialogdata.h"
#include "colours/colourhooks.h"
#include "request/reply.h"
#include "request/session.h"
#include "xml/xml_testing.h"

using namespace qrl;

namespace {

const char16_t kRequest[] =
    uR"(<Config ModuleType="ColourMap"><DTD><Element Name="CurrScheme" Type="text"/>)"
    uR"(<Element Name="Schemes" Type="colourschemelist"/><Element Name="Names" Type="attrnames"/></DTD><Data>)"
    uR"(<Item Element="CurrScheme" Value="night"/>)"
    uR"(<Item Element="Names"><feature index="2" long="Underscore" short="Us"/>)"
    uR"(<colour index="3" descr="Teal"/><field index="1" descr="Protected"/></Item>)"
    uR"(<Item Element="Schemes"><ColourScheme Element="Day"><Item Element="BoldMode" Value="1"/></ColourScheme>)"
    uR"(<ColourScheme Element="Night"><palette value="1 2 3"/></ColourScheme></Item>)"
    uR"(<Item Element="Schemes"><ColourScheme Element="Third"/></Item></Data></Config>)";

}  // namespace

// What changed schemes write is checked with the scheme document and with every list kind at once.
TEST(ColourHooks, RequestFillsSessionAndAnUnchangedListIsWrittenEmpty) {
    TConfigSession session;
    session.LoadRequestText(kRequest);
    session.ApplyDataValues();
    EXPECT_EQ(session.longFeatureNames[2] + u"|" + session.shortFeatureNames[2] + u"|" + session.colourDescriptions[3] +
                  u"|" + session.fieldDescriptions[1],
              u"Underscore|Us|Teal|Protected");
    EXPECT_EQ(SessionColourSchemes(session).size(), 3u);  // every item adds to the list

    // Nothing changed: an empty ColourSchemeList, and never the attribute names.
    EXPECT_EQ(WriteDataReply(session, false), xmltest::DataReply(u"    <Item Element=\"CurrScheme\" Value=\"night\"/>\n"
                                                                 u"    <Item Element=\"ColourSchemeList\"/>\n"));
}

TEST(AttrDialogData, SettingsComeFromDataAndGoBackToElements) {
    TConfigSession session;
    session.LoadRequestText(
        uR"(<Config><DTD><Element Name="CurrScheme"/><Element Name="DisplayMode" Type="int"/>)"
        uR"(<Element Name="EnableBlink" Type="bool"/><Element Name="EnableInvisCfg" Type="bool"/>)"
        uR"(<Element Name="BoxStyle" Type="int"/><Element Name="FeaturesUsed" Type="int" Default="9"/>)"
        uR"(<Element Name="N" Type="attrnames"/></DTD><Data>)"
        uR"(<Item Element="currscheme" Value="Night"/><Item Element="CurrScheme" Value="Day"/>)"
        uR"(<Item Element="DisplayMode" Value="2x"/><Item Element="FeaturesUsed" Value="31"/>)"
        uR"(<Item Element="NormalColour" Value="1031"/><Item Element="EnableInvisCfg" Value="1"/>)"
        uR"(<Item Element="MergeBoxes" Value="yes"/><Item Element="BoxStyle" Value="3"/>)"
        uR"(<Item Element="N"><colour index="2" descr="Leaf"/></Item></Data></Config>)");
    TAttrDialogData d;
    d.working.name = u"left over";
    LoadAttrDialogData(d, session);
    EXPECT_TRUE(d.working.name.empty());
    EXPECT_EQ(d.currentName, u"Night");  // the first item of that name, case ignored
    // NormalColour 1031 is 0x407; EnableBlink is absent; "yes" is no number.
    EXPECT_EQ(std::vector<uint32_t>(
                  {d.displayMode, d.featuresUsed, d.normalForeground, d.normalBackground, d.enableBlink, d.mergeBoxes}),
              std::vector<uint32_t>({2, 31, 7, 4, 0, 0}));
    EXPECT_EQ(d.colourNames[2], u"Leaf");

    d.currentName = u"(custom)";
    d.enableBlink = true;
    d.enableInvisCfg = false;
    d.boxStyle = 4;
    d.mergeBoxes = true;  // MergeBoxes has no definition: skipped
    StoreAttrDialogData(d, session);
    std::u16string values;
    for (auto name : {u"CurrScheme", u"DisplayMode", u"EnableBlink", u"EnableInvisCfg", u"BoxStyle", u"FeaturesUsed"}) {
        values += session.FindElement(name)->value + u"|";
    }
    EXPECT_EQ(values, u"(custom)|2|1|0|4|9|");  // FeaturesUsed is not written back
    EXPECT_EQ(session.FindElement(u"MergeBoxes"), nullptr);
}
