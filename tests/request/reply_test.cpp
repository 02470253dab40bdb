#include <gtest/gtest.h>

#include "hotspots/hotspotdata.h"
#include "request/hooks.h"
#include "request/reply.h"
#include "request/session.h"
#include "xml/node.h"
#include "xml/xml_testing.h"

namespace qrl {
namespace {

using xmltest::DataReply;

// A loaded and applied session, as the general route has it before the dialog.
void load(TConfigSession& s, std::u16string_view request) {
    s.LoadRequestText(request);
    s.ApplyDataValues();
}

TEST(Reply, ChangedValuesOnly) {
    TConfigSession s;
    load(s,
         u"<Config><DTD><Element Name=\"A\" Default=\"a\"/><Element Name=\"B\"/><Element Name=\"C\" Default=\"c\"/>"
         u"<Element Name=\"Pw\" password=\"1\"/></DTD>"
         u"<Data><Item Element=\"a\" Value=\"abc\"/><Item Element=\"A\" Value=\"other\"/>"
         u"<Item Element=\"B\" Value=\"b\"/><Item Element=\"pw\" Value=\"secret\"/><Item Element=\"Extra\" Value=\"e\"/>"
         u"</Data></Config>");
    // A holds the last of its two items but is compared with the first, so it counts as changed; C,
    // which the request never sent, is written although it holds its default.
    EXPECT_EQ(WriteDataReply(s, true), DataReply(u"    <Item Element=\"A\" Value=\"other\"/>\n"
                                                 u"    <Item Element=\"C\" Value=\"c\"/>\n"));

    s.FindElement(u"A")->value = u"abc";  // back to the first item's value: unchanged
    EXPECT_EQ(WriteDataReply(s, true), DataReply(u"    <Item Element=\"C\" Value=\"c\"/>\n"));

    s.FindElement(u"A")->value = u"ABC";   // a change of case is a change
    s.FindElement(u"Pw")->value = u"<&>";  // written in clear, escaped
    s.FindElement(u"Extra")->value = u"f";
    EXPECT_EQ(WriteDataReply(s, true),
              DataReply(u"    <Item Element=\"A\" Value=\"ABC\"/>\n"
                        u"    <Item Element=\"C\" Value=\"c\"/>\n"
                        u"    <Item Element=\"Pw\" Value=\"&lt;&amp;&gt;\"/>\n"
                        u"    <Item Element=\"Extra\" Value=\"f\"/>\n"));
}

// Walks in list order try the next record first; a repeated name there must still find the first.
TEST(Reply, RepeatedNamesInListOrderFindTheFirst) {
    TConfigSession s;
    load(s,
         u"<Config><DTD><Element Name=\"X\"/><Element Name=\"Y\"/><Element Name=\"x\" Default=\"d\"/></DTD>"
         u"<Data><Item Element=\"X\" Value=\"1\"/><Item Element=\"Y\" Value=\"2\"/>"
         u"<Item Element=\"x\" Value=\"3\"/></Data></Config>");
    EXPECT_EQ(s.elements[0].value, u"3");
    EXPECT_EQ(s.elements[2].value, u"d");
    EXPECT_EQ(WriteDataReply(s, true), DataReply(u"    <Item Element=\"X\" Value=\"3\"/>\n"
                                                 u"    <Item Element=\"x\" Value=\"d\"/>\n"));
}

// The written change itself is the run test's module row.
TEST(Reply, ModuleChangeNeedsTheExactTypeAndAList) {
    const std::u16string empty = std::u16string(xmltest::kReplyHead) + u"  <Directives/>\n</Config>";
    TConfigSession lower;
    load(lower, u"<Config ModuleType=\"emul\"><ModuleList Current=\"vt\"/></Config>");
    EXPECT_EQ(WriteModuleChangeReply(lower), empty);  // "emul" is not "Emul"
    TConfigSession noList;
    load(noList, u"<Config ModuleType=\"FXfer\"/>");
    EXPECT_EQ(WriteModuleChangeReply(noList), empty);
}

void writeKeyMap(const TConfigSession&, const TElementDef& def, AdvXMLParser::Element& data) {
    AdvXMLParser::Element& item = data.AddElement(u"Item");
    item.SetAttribute(u"Element").SetText(u"KeyMap");
    item.SetAttribute(u"From").SetText(def.name);
}

// What the hooks write once list data came is checked with every list kind at once.
TEST(Reply, ListTypesWriteNothingWithoutTheirData) {
    TRequestHooks hooks;
    ASSERT_TRUE(hooks.SetDataKind(u"keymaplist", TDataKind{nullptr, &writeKeyMap}));
    ASSERT_TRUE(hooks.SetDataKind(u"keylist", TDataKind{nullptr, &writeKeyMap}));
    ASSERT_TRUE(hooks.SetDataKind(u"hotspots", TDataKind{nullptr, &WriteHotspotItem}));
    TConfigSession s;
    s.hooks = &hooks;
    load(s,
         u"<Config><DTD><Element Name=\"Keys\" Type=\"keylist\"/><Element Name=\"Map\" Type=\"keymaplist\"/>"
         u"<Element Name=\"Spots\" Type=\"hotspots\"/><Element Name=\"Names\" Type=\"attrnames\"/>"
         u"<Element Name=\"Tandem\" Type=\"tandemcolrs\" Default=\"t\"/><Element Name=\"U\" Type=\"whatever\"/></DTD>"
         u"<Data><Item Element=\"Tandem\" Value=\"t\"/><Item Element=\"U\" Value=\"\"/></Data></Config>");
    // No list data arrived: no list is written; the plain ones, all sent and unchanged, are left out,
    // and one of a type no one knows is a plain one.
    EXPECT_EQ(WriteDataReply(s, true), DataReply(u""));
    s.FindElement(u"U")->value = u"u";
    EXPECT_EQ(WriteDataReply(s, true), DataReply(u"    <Item Element=\"U\" Value=\"u\"/>\n"));
}

TEST(Reply, CopyFitsWithRoomForTheTerminator) {
    const std::u16string reply = u"abcd";
    char16_t buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), u'#');
    EXPECT_EQ(CopyReply(reply, buffer, 4), kResultTooSmall);
    EXPECT_EQ(buffer[0], u'#');
    EXPECT_EQ(CopyReply(reply, nullptr, 100), kResultTooSmall);
    EXPECT_EQ(CopyReply(reply, buffer, 5), kResultOk);
    EXPECT_EQ(std::u16string(buffer), u"abcd");
    EXPECT_EQ(buffer[5], u'#');
}

}  // namespace
}  // namespace qrl
