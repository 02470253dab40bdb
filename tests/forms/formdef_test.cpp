#include "forms/formdef.h"

#include "request/session.h"
#include "text/textutil.h"
#include "xml/xml_testing.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

using xmltest::Parse;

std::u16string ErrorOf(TConfigSession& session, std::u16string_view text,
                       void (*reader)(TConfigSession&, const AdvXMLParser::Element&)) {
    auto doc = Parse(text);
    try {
        reader(session, *doc->Root());
    } catch (const ECfgError& e) {
        return e.Text();
    }
    return u"(no error)";
}

// An item as "kind caption|element|id text/id|action:param|left,top|value|inverted".
std::u16string Describe(const TFormItem& i) {
    auto n = [](auto v) { return toU16(std::to_string(static_cast<long long>(v))); };
    return n(i.kind) + u" " + i.caption + u"|" + i.element + u"|" + i.idText + u"/" + n(i.controlId) + u"|" +
           n(i.action) + u":" + i.actionParam + u"|" + n(i.left) + u"," + n(i.top) + u"|" + i.value + u"|" +
           n(i.inverted);
}

TEST(InterfaceReader, FormsItemsAndAttributes) {
    TConfigSession session;
    auto doc = Parse(
        u"<Interface StartForm='Main'>\n"
        u"  <!-- forms -->\n"
        u"  <Form Name='Main' Title='Settings' Left='5' Top='6' Width='200' Height='100' Font='Arial' FontSize='9'>\n"
        u"    text between items is skipped\n"
        u"    <button Name='b' Caption='&amp;Go' Id='77' Action='ok' Left='12px' Top='x'/>\n"
        u"    <CheckBox Element='Flag' Inverted='1'/>\n"
        u"    <CHECKBOX Element='Other' Inverted='true'/>\n"
        u"    <Button Action='Apply'/>\n"
        u"    <Button Action='form' ActionParam='Second'/>\n"
        u"    <RadioButton Element='Mode' Value='a'/>\n"
        u"    <ComboBox/><Edit/><GroupBox/><Label/><ListBox/>\n"
        u"  </Form>\n"
        u"  <Form Name='main' Title='Shadowed'/>\n"
        u"  <Form Title='Nameless'/>\n"
        u"</Interface>");
    ReadInterface(session, *doc->Root());
    EXPECT_EQ(session.startForm, u"Main");

    TFormDef* form = FindForm(session, u"MAIN");
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->title, u"Settings");  // the first of two forms of one name wins
    EXPECT_EQ(form->left, 5);
    EXPECT_EQ(form->fontName, u"Arial");
    std::vector<std::u16string> items;
    for (const TFormItem& item : form->items) items.push_back(Describe(item));
    // The id text is kept, not used; "x" reads 0; only "1" inverts; an unknown action is none.
    EXPECT_EQ(items, (std::vector<std::u16string>{
                         u"0 &Go||77/-1|3:|12,0||0", u"2 |Flag|/-1|6:|0,0||1", u"2 |Other|/-1|6:|0,0||0",
                         u"0 ||/-1|6:|0,0||0", u"0 ||/-1|0:Second|0,0||0", u"1 |Mode|/-1|6:|0,0|a|0",
                         u"3 ||/-1|6:|0,0||0", u"4 ||/-1|6:|0,0||0", u"6 ||/-1|6:|0,0||0", u"7 ||/-1|6:|0,0||0",
                         u"8 ||/-1|6:|0,0||0"}));

    EXPECT_EQ(FindForm(session, u"Second"), nullptr);
    EXPECT_EQ(FindForm(session, u""), nullptr);  // no StartForm asks for the built-in form
}

TEST(InterfaceReader, WrongChildrenFailWithTheirTexts) {
    TConfigSession s1;
    EXPECT_EQ(ErrorOf(s1, u"<Interface><Form Name='a'/><Other/></Interface>", ReadInterface),
              u"expected tag <Form>, found <Other> instead");
    EXPECT_NE(FindForm(s1, u"a"), nullptr);  // what was read stays

    TConfigSession s2;
    EXPECT_EQ(ErrorOf(s2, u"<Interface><Form Name='f'><Edit/><Slider/></Form></Interface>", ReadInterface),
              u"Unknown item type \"Slider\"");
    ASSERT_NE(FindForm(s2, u"f"), nullptr);
    EXPECT_EQ(FindForm(s2, u"f")->items.size(), 2u);

    TConfigSession s3;
    EXPECT_EQ(ErrorOf(s3, u"<Groups><Group Name='a'/><Form/></Groups>", ReadGroups),
              u"expected tag <Group>, found <Form> instead");
}

TEST(GroupsReader, FlagsAreNumbersAndHelpFileIsTheSessionsSoFar) {
    TConfigSession session;
    session.helpFile = u"comms.hlp";
    auto doc = Parse(
        u"<Groups><Group Name='Display' expanded='2' hidden='0' help_file='d.hlp' help_id='7'/>"
        u"<group Name='Display.Colours' expanded='yes' hidden='1'/></Groups>");
    ReadGroups(session, *doc->Root());
    TGroupDef* display = FindGroup(session, u"display");
    ASSERT_NE(display, nullptr);
    EXPECT_TRUE(display->expanded);
    EXPECT_FALSE(display->hidden);
    EXPECT_EQ(display->helpFile, u"d.hlp");
    EXPECT_EQ(display->helpId, u"7");
    EXPECT_EQ(display->defaultHelpFile, u"comms.hlp");
    TGroupDef* colours = FindGroup(session, u"Display.Colours");
    ASSERT_NE(colours, nullptr);
    EXPECT_FALSE(colours->expanded);  // "yes" reads 0
    EXPECT_TRUE(colours->hidden);
    EXPECT_EQ(FindGroup(session, u"Colours"), nullptr);
}

}  // namespace
}  // namespace qrl
