#include "forms/formeditor.h"

#include "forms/forms_rc.h"
#include "request/elementdef.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qrl {
namespace {

bool Has(const std::vector<int>& ids, int id) { return std::find(ids.begin(), ids.end(), id) != ids.end(); }

TElementDef Def(ElementType type, std::u16string value = u"") {
    TElementDef e;
    e.name = u"Name";
    e.description = u"Label";
    e.type = type;
    e.value = std::move(value);
    return e;
}

TEST(EditorChoice, TextFamily) {
    TElementDef text = Def(ElementType::Text, u"abc");
    text.maxLength = 12;
    text.password = true;
    text.macroAssist = true;
    EditorView v = DescribeEditor(text, false);
    EXPECT_EQ(v.shown, (std::vector<int>{IDC_VALUE_LABEL, IDC_VALUE_EDIT}));
    EXPECT_EQ(*v.editText, u"abc");
    EXPECT_EQ(v.editLimit, 12);
    EXPECT_TRUE(v.passwordChar);
    EXPECT_FALSE(v.numbersOnly);
    EXPECT_EQ(v.focus, IDC_VALUE_EDIT);
    EXPECT_TRUE(Has(DescribeEditor(text, true).shown, IDC_MACRO_ASSIST));

    TElementDef path = Def(ElementType::FilePath);
    path.password = true;
    v = DescribeEditor(path, true);
    EXPECT_TRUE(Has(v.shown, IDC_FILE_BROWSE));
    EXPECT_FALSE(v.passwordChar);
    v = DescribeEditor(Def(ElementType::Directory), true);
    EXPECT_FALSE(Has(v.shown, IDC_DIR_BROWSE));
    EXPECT_TRUE(Has(v.shown, IDC_VALUE_EDIT));

    TElementDef number = Def(ElementType::Int, u"7");
    number.maxLength = 3;
    v = DescribeEditor(number, false);
    EXPECT_TRUE(v.numbersOnly);
    EXPECT_EQ(v.editLimit, 0);
    EXPECT_TRUE(Has(v.guarded, IDC_VALUE_EDIT));
}

TEST(EditorChoice, CheckAndChoices) {
    EditorView v = DescribeEditor(Def(ElementType::Bool, u"on"), false);
    EXPECT_EQ(v.shown, (std::vector<int>{IDC_VALUE_CHECK}));  // no separate label
    EXPECT_EQ(v.checkText, u"Label");
    EXPECT_TRUE(v.checked);

    TElementDef lang = Def(ElementType::StringSet, u"German");
    lang.name = u"LanguageName";
    lang.strings = {u"English", u"German"};
    v = DescribeEditor(lang, false);
    EXPECT_EQ(v.comboEntries, lang.strings);
    EXPECT_EQ(v.comboSelection, 1);
    EXPECT_TRUE(Has(v.shown, IDC_LANG_ADD));
    EXPECT_TRUE(Has(v.shown, IDC_LANG_DELETE));
    lang.name = u"languagename";  // compared case counting
    EXPECT_FALSE(Has(DescribeEditor(lang, false).shown, IDC_LANG_ADD));
    lang.value = u"French";
    EXPECT_EQ(DescribeEditor(lang, false).comboSelection, -1);

    TElementDef c = Def(ElementType::Char8, u"66");
    c.min = 64;
    c.max = 70;
    c.readOnly = true;
    v = DescribeEditor(c, false);
    ASSERT_EQ(v.comboEntries.size(), 7u);
    EXPECT_EQ(v.comboEntries[1], u"A 0x41");
    EXPECT_EQ(v.comboSelection, 66);  // the code itself, not less min
    EXPECT_FALSE(Has(v.guarded, IDC_VALUE_COMBO));  // never disabled
    c.max = 0;
    EXPECT_EQ(DescribeEditor(c, false).comboEntries.size(), 256u - 64u);
    c.min = 300;
    EXPECT_EQ(DescribeEditor(c, false).comboEntries.size(), 1u);  // min cut to 255
    // Only the top is cut: a negative min lists its codes as bytes, and the rows still start at min.
    c.min = -2;
    c.max = 3;
    v = DescribeEditor(c, false);
    ASSERT_EQ(v.comboEntries.size(), 6u);
    EXPECT_EQ(v.comboEntries[2], u"<NUL> 0x00");
    EXPECT_EQ(v.comboEntries[1], u"\u00FF 0xFF");
    c.min = INT32_MIN;  // a broken request still gets a dialog that opens
    EXPECT_LE(DescribeEditor(c, false).comboEntries.size(), 65536u);

    TElementDef ssh = Def(ElementType::SshAuthFile, u"id_rsa");
    v = DescribeEditor(ssh, false);
    EXPECT_TRUE(v.comboAuthFiles);
    EXPECT_EQ(v.comboSelectText, u"id_rsa");
    EXPECT_TRUE(Has(v.shown, IDC_SSH_IMPORT));
}

TEST(EditorChoice, SpecialValues) {
    EditorView v = DescribeEditor(Def(ElementType::Rgb, u"0000ff"), false);
    EXPECT_EQ(*v.colour, 0xFFu);
    EXPECT_TRUE(Has(v.shown, IDC_COLOUR_SAMPLE));
    EXPECT_TRUE(Has(v.guarded, IDC_COLOUR_EDIT));

    v = DescribeEditor(Def(ElementType::Charset), false);
    EXPECT_EQ(v.label, u"Label character set");
    EXPECT_EQ(v.focus, IDC_SPECIAL_EDIT);

    v = DescribeEditor(Def(ElementType::Printer), false);
    EXPECT_TRUE(Has(v.shown, IDC_PRINTER_DEFAULT));
    EXPECT_TRUE(v.printerText.has_value());

    v = DescribeEditor(Def(ElementType::SslCertificate), false);
    EXPECT_FALSE(Has(v.shown, IDC_PRINTER_TEXT));  // its text goes to a hidden control
    EXPECT_TRUE(v.printerText.has_value());

    v = DescribeEditor(Def(ElementType::KeyList), false);
    EXPECT_EQ(v.label, u"Unimplemented data type");
    EXPECT_EQ(v.shown, (std::vector<int>{IDC_VALUE_LABEL}));
    EXPECT_EQ(v.focus, 0);
}

}  // namespace
}  // namespace qrl
