#include "macro/macro.h"

#include <gtest/gtest.h>

#include <set>

namespace qrl {
namespace {

TEST(MacroTables, FunctionTable)
{
    auto rows = macroFunctions();
    ASSERT_EQ(rows.size(), 73u);
    EXPECT_EQ(std::u16string(rows.front().Name), u"ClearScreen");
    EXPECT_EQ(std::u16string(rows.back().Name), u"ViewToolbar");
    std::set<uint32_t> ids;
    std::set<std::u16string> names;
    int withParams = 0;
    for (const MacroFunctionRow& row : rows) {
        ids.insert(row.Id);
        names.insert(row.Name);
        EXPECT_LE(row.ParamCount, 3u);
        for (uint32_t i = 0; i < row.ParamCount; ++i) {
            EXPECT_TRUE(row.ParamTypes[i] == 1 || row.ParamTypes[i] == 2) << row.Id;
            EXPECT_NE(row.Prompts[i], nullptr);
        }
        bool variable = std::u16string(row.Name) == u"EnvVar" || std::u16string(row.Name) == u"UserVar";
        EXPECT_EQ(row.Kind, variable ? 2u : 1u);
        withParams += row.ParamCount > 0;
    }
    EXPECT_EQ(ids.size(), 73u);
    EXPECT_EQ(names.size(), 73u);
    // 3 and 18 are the only ids below 76 that no function has.
    EXPECT_EQ(ids.count(3) + ids.count(18), 0u);
    EXPECT_EQ(*ids.begin(), 1u);
    EXPECT_EQ(*ids.rbegin(), 75u);

    EXPECT_EQ(withParams, 12);
    ASSERT_NE(findMacroFunction(5), nullptr);
    EXPECT_EQ(std::u16string(findMacroFunction(5)->Name), u"Pause");
    EXPECT_EQ(std::u16string(findMacroFunction(15)->Prompts[1]), u"Parameters");
    EXPECT_EQ(findMacroFunction(3), nullptr);
    EXPECT_EQ(findMacroFunction(-1), nullptr);
}

TEST(MacroTables, ClassicTable)
{
    auto rows = macroClassics();
    ASSERT_EQ(rows.size(), 7u);
    std::u16string letters;
    for (const MacroClassicRow& row : rows)
        letters += row.Letter;
    EXPECT_EQ(letters, u"pevUSEm");
    EXPECT_EQ(findMacroClassicLetter(u'p')->Form, MacroClassicForm::Number);
    EXPECT_EQ(findMacroClassicLetter(u'm')->Form, MacroClassicForm::None);
    EXPECT_EQ(findMacroClassicLetter(u'E')->Id, 18u);
    EXPECT_EQ(std::u16string(findMacroClassic(8)->Name), u"User defined variable");
    EXPECT_EQ(std::u16string(findMacroClassic(18)->Prompt), u"Command");
    EXPECT_EQ(findMacroClassicLetter(u'x'), nullptr);
    EXPECT_EQ(findMacroClassic(4), nullptr);
}

TEST(MacroTables, AssistantLists)
{
    auto chars = macroNamedChars();
    ASSERT_EQ(chars.size(), 9u);
    EXPECT_EQ(chars[5].Code, 92);
    EXPECT_EQ(std::u16string(chars[5].Caption), u"\\\\  Backslash");
    EXPECT_EQ(chars.back().Code, 0);
    EXPECT_EQ(std::u16string(chars.back().Caption), u"Hex value");

    EXPECT_EQ(macroByteCaption(0), u"\\x00  NUL");
    EXPECT_EQ(macroByteCaption(13), u"\\x0D  CR");
    EXPECT_EQ(macroByteCaption(32), u"\\x20  Space");
    EXPECT_EQ(macroByteCaption(33), u"\\x21");
    EXPECT_EQ(macroByteCaption(255), u"\\xFF");

    ASSERT_EQ(macroOperators().size(), 6u);
    EXPECT_EQ(macroOperatorText(MacroOperator::NotEqual), u"<>");
    EXPECT_EQ(macroOperatorText(MacroOperator::LessEqual), u"<=");
    EXPECT_EQ(macroOperatorText(6), u"");
}

}  // namespace
}  // namespace qrl
