#include "forms/formtemplate.h"

#include "request/session.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TFormItem Item(ItemKind kind, std::u16string element = u"", FormAction action = FormAction::None) {
    TFormItem item;
    item.kind = kind;
    item.element = std::move(element);
    item.action = action;
    return item;
}

TEST(FormTemplate, IdsAreGivenOnceAndActionsShareTheirs) {
    TConfigSession session;
    TFormDef form;
    form.title = u"T";
    form.items.push_back(Item(ItemKind::Label));
    form.items.push_back(Item(ItemKind::Button, u"", FormAction::OK));
    form.items.push_back(Item(ItemKind::Button, u"", FormAction::OK));
    form.items.push_back(Item(ItemKind::Button, u"", FormAction::Form));
    form.items.push_back(Item(ItemKind::Button, u"", FormAction::Connect));
    form.items.push_back(Item(ItemKind::Edit));
    TemplateBytes bytes = BuildDialogTemplate(session, form);
    EXPECT_EQ(form.items[0].controlId, 5000);
    EXPECT_EQ(form.items[1].controlId, 1);
    EXPECT_EQ(form.items[2].controlId, 1);
    EXPECT_EQ(form.items[3].controlId, 5001);
    EXPECT_EQ(form.items[4].controlId, 4901);
    EXPECT_EQ(form.items[5].controlId, 5002);

    // A second build keeps the ids, also for an item added meanwhile behind them.
    form.items.push_front(Item(ItemKind::Edit));
    bytes = BuildDialogTemplate(session, form);
    EXPECT_EQ(form.items[0].controlId, 5000);  // the new one counts from 5000 again
    EXPECT_EQ(form.items[1].controlId, 5000);
    EXPECT_EQ(form.items[6].controlId, 5002);

    TemplateDialog dialog;
    std::vector<TemplateItem> items;
    ASSERT_TRUE(ReadTemplate(bytes.data(), bytes.size(), dialog, items));
    EXPECT_EQ(dialog.title, u"T");
    EXPECT_EQ(items[2].style, kDefaultButtonStyle | kWsGroup);
    EXPECT_EQ(items[3].style, kDefaultButtonStyle);
    EXPECT_EQ(items[4].style, 0x10010000u);
    EXPECT_EQ(items[6].className, u"EDIT");
    EXPECT_EQ(items[6].style, 0x10810080u | kWsGroup);
}

TEST(FormTemplate, RadioRunsFormOneGroupAndChildPagesHaveTheirStyle) {
    TConfigSession session;
    TFormDef form;
    form.isChild = true;
    for (ItemKind k : {ItemKind::RadioButton, ItemKind::RadioButton, ItemKind::CheckBox, ItemKind::RadioButton,
                       ItemKind::GroupBox, ItemKind::ListBox, ItemKind::ReadOnlyEdit, ItemKind::Unknown})
        form.items.push_back(Item(k));
    const TemplateBytes bytes = BuildDialogTemplate(session, form);
    TemplateDialog dialog;
    std::vector<TemplateItem> items;
    ASSERT_TRUE(ReadTemplate(bytes.data(), bytes.size(), dialog, items));
    EXPECT_EQ(dialog.style, kChildFormStyle);
    EXPECT_EQ(items[0].style, 0x10000009u | kWsGroup);
    EXPECT_EQ(items[1].style, 0x10000009u);
    EXPECT_EQ(items[2].style, 0x10010003u | kWsGroup);
    EXPECT_EQ(items[3].style, 0x10000009u | kWsGroup);
    EXPECT_EQ(items[4].style, 0x10000007u | kWsGroup);
    EXPECT_EQ(items[5].style, 0x10A10000u | kWsGroup);
    EXPECT_EQ(items[6].style, 0x10810880u | kWsGroup);
    EXPECT_EQ(items[7].className, u"STATIC");
}

TEST(FormTemplate, ListBinding) {
    TConfigSession session;
    TElementDef& choice = session.AddElement(u"Choice");
    choice.values = {u"a", u"b"};
    TElementDef& range = session.AddElement(u"Range");
    range.type = ElementType::Int;
    range.min = 1;
    range.max = 3;
    TElementDef& flat = session.AddElement(u"Flat");
    flat.type = ElementType::Int;
    session.AddElement(u"Text");
    TFormDef form;
    for (const char16_t* name : {u"choice", u"Range", u"Flat", u"Text", u"Missing", u""})
        form.items.push_back(Item(ItemKind::ComboBox, name));
    form.items.push_back(Item(ItemKind::ListBox));
    form.items.push_back(Item(ItemKind::Edit, u"Choice"));
    (void)BuildDialogTemplate(session, form);
    const bool expected[] = {true, true, false, false, false, false, true, false};
    for (std::size_t i = 0; i < std::size(expected); ++i) EXPECT_EQ(form.items[i].listBound, expected[i]) << i;
}

}  // namespace
}  // namespace qrl
