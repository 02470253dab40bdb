#include "forms/formdef.h"

#include "request/session.h"
#include "xml/parser.h"

#include <gtest/gtest.h>

#include <memory>

namespace qrl {
namespace {

std::unique_ptr<AdvXMLParser::Document> Parse(std::u16string_view text) {
    AdvXMLParser::Parser parser;
    return parser.Parse(text.data(), text.size());
}

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
    EXPECT_EQ(form->session, &session);
    EXPECT_EQ(form->left, 5);
    EXPECT_EQ(form->height, 100);
    EXPECT_EQ(form->fontName, u"Arial");
    EXPECT_EQ(form->fontSize, 9);
    EXPECT_FALSE(form->usesTree);
    ASSERT_EQ(form->items.size(), 11u);

    const TFormItem& b = form->items[0];
    EXPECT_EQ(b.kind, ItemKind::Button);
    EXPECT_EQ(b.caption, u"&Go");
    EXPECT_EQ(b.idText, u"77");
    EXPECT_EQ(b.controlId, -1);  // the id text is kept, not used
    EXPECT_EQ(b.action, FormAction::OK);
    EXPECT_EQ(b.left, 12);
    EXPECT_EQ(b.top, 0);
    EXPECT_TRUE(form->items[1].inverted);
    EXPECT_EQ(form->items[1].element, u"Flag");
    EXPECT_FALSE(form->items[2].inverted);
    EXPECT_EQ(form->items[2].kind, ItemKind::CheckBox);
    EXPECT_EQ(form->items[3].action, FormAction::None);
    EXPECT_EQ(form->items[4].action, FormAction::Form);
    EXPECT_EQ(form->items[4].actionParam, u"Second");
    EXPECT_EQ(form->items[5].value, u"a");
    EXPECT_EQ(form->items[6].kind, ItemKind::ComboBox);
    EXPECT_EQ(form->items[7].kind, ItemKind::Edit);
    EXPECT_EQ(form->items[8].kind, ItemKind::GroupBox);
    EXPECT_EQ(form->items[9].kind, ItemKind::Label);
    EXPECT_EQ(form->items[10].kind, ItemKind::ListBox);

    EXPECT_EQ(FindForm(session, u"Second"), nullptr);
    EXPECT_EQ(FindForm(session, u""), nullptr);  // no StartForm asks for the built-in form
    TConfigSession empty;
    EXPECT_EQ(FindForm(empty, u"Main"), nullptr);
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

TEST(FormActions, WordsAndIds) {
    EXPECT_EQ(ActionFromName(u"MODULESELECT"), FormAction::ModuleSelect);
    EXPECT_EQ(ActionFromName(u""), FormAction::None);
    EXPECT_EQ(ActionControlId(FormAction::ModuleSelect), 4900);
    EXPECT_EQ(ActionControlId(FormAction::Connect), 4901);
    EXPECT_EQ(ActionControlId(FormAction::OK), 1);
    EXPECT_EQ(ActionControlId(FormAction::Cancel), 2);
    EXPECT_EQ(ActionControlId(FormAction::Help), 9);
    EXPECT_EQ(ActionControlId(FormAction::Form), -1);
    EXPECT_EQ(ActionControlId(FormAction::None), -1);
    EXPECT_EQ(ItemKindFromTag(u"radiobutton"), ItemKind::RadioButton);
    EXPECT_EQ(ItemKindFromTag(u"Tree"), ItemKind::Unknown);  // the built-in kinds have no tag
}

}  // namespace
}  // namespace qrl
