#include "forms/builtinform.h"

#include "forms/formdef.h"
#include "forms/formtemplate.h"
#include "platform/tempfolder.h"
#include "request/session.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

const TFormItem* ItemWithId(const TFormDef& form, int id) {
    for (const TFormItem& item : form.items)
        if (item.controlId == id) return &item;
    return nullptr;
}

TFormDef& Built(TConfigSession& session) {
    BuildDefaultForm(session);
    TFormDef* form = FindForm(session, u"__Default__");
    EXPECT_NE(form, nullptr);
    return *form;
}

TEST(BuiltInForm, ItemsTitleAndButtonRowForComms) {
    TConfigSession session;
    session.moduleType = u"Comms";
    session.moduleLists.push_back({u"Comms", u"tcp", {{u"serial", u"Serial line"}, {u"TCP", u"Telnet over TCP"}}});
    TFormDef& form = Built(session);
    EXPECT_TRUE(form.usesTree);
    EXPECT_EQ(form.title, u"Configure  Telnet over TCP");
    const TFormItem* connect = ItemWithId(form, 4901);
    EXPECT_EQ(connect->left, 120);
    EXPECT_EQ(connect->action, FormAction::Connect);
    const TFormItem* change = ItemWithId(form, 4900);
    EXPECT_EQ(change->left, 176);
    EXPECT_EQ(change->width, 65);
    EXPECT_EQ(change->caption, u"Change Comms");
    EXPECT_EQ(ItemWithId(form, 9), nullptr);  // no help file

    // Built once per session.
    BuildDefaultForm(session);
    EXPECT_EQ(session.Part<TFormStore>().forms.size(), 1u);
}

TEST(BuiltInForm, ModuleTypesAndHelp) {
    TConfigSession emul;
    emul.moduleType = u"Emul";
    TFormDef& e = Built(emul);
    EXPECT_EQ(e.title, u"Configure  ");  // no module list: the blanks stay
    EXPECT_EQ(ItemWithId(e, 4901), nullptr);
    ASSERT_NE(ItemWithId(e, 4900), nullptr);
    EXPECT_EQ(ItemWithId(e, 4900)->left, 120);
    EXPECT_EQ(ItemWithId(e, 4900)->width, 68);

    // A module type compared exactly: "comms" is none of the three.
    TConfigSession other;
    other.moduleType = u"comms";
    const test::TempFolder folder;
    folder.write("help.chm", "x");
    other.helpBaseFile = folder.file("help.chm");
    TFormDef& o = Built(other);
    EXPECT_EQ(ItemWithId(o, 4900), nullptr);
    EXPECT_EQ(ItemWithId(o, 4901), nullptr);
    EXPECT_TRUE(o.hasHelp);
    ASSERT_NE(ItemWithId(o, 9), nullptr);
    EXPECT_EQ(ItemWithId(o, 9)->left, 120);
    EXPECT_EQ(ItemWithId(o, 9)->action, FormAction::Help);

    TConfigSession comms;
    comms.moduleType = u"Comms";
    comms.helpBaseFile = u"/no/such/file.chm";
    EXPECT_FALSE(Built(comms).hasHelp);
}

TEST(BuiltInForm, TemplateOfTheBuiltInForm) {
    TConfigSession session;
    session.moduleType = u"Comms";
    TFormDef& form = Built(session);
    const TemplateBytes bytes = BuildDialogTemplate(session, form);
    TemplateDialog dialog;
    std::vector<TemplateItem> items;
    ASSERT_TRUE(ReadTemplate(bytes.data(), bytes.size(), dialog, items));
    EXPECT_EQ(dialog.style, 0x90C800C0u);
    EXPECT_EQ(dialog.fontName, u"Helv");
    ASSERT_EQ(items.size(), form.items.size());
    EXPECT_EQ(items[0].className, u"SysTreeView32");
    EXPECT_EQ(items[0].style, 0x10810007u | kWsGroup);
    EXPECT_EQ(items[10].className, u"qrsample");
}

}  // namespace
}  // namespace qrl
