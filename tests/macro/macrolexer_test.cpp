#include "macro/macro.h"

#include <gtest/gtest.h>

#include <vector>

namespace qrl {
namespace {

struct Step {
    int32_t Class;
    char16_t Char;
    uint32_t Start;
    uint32_t End;
};

std::vector<Step> lexAll(std::u16string text, uint32_t flags)
{
    std::vector<Step> steps;
    MacroLexer lexer(std::move(text), flags);
    while (!lexer.atEnd()) {
        steps.push_back({lexer.Class, lexer.Char, lexer.Start, lexer.End});
        lexer.step();
    }
    return steps;
}

TEST(MacroLexer, EscapesAndTheirValues)
{
    struct Case {
        const char16_t* Text;
        int32_t Class;
        char16_t Char;
    } cases[] = {
        {u"\\n", MacroClass::Escaped, 10},  {u"\\r", MacroClass::Escaped, 13},
        {u"\\t", MacroClass::Escaped, 9},   {u"\\b", MacroClass::Escaped, 8},
        {u"\\f", MacroClass::Escaped, 12},  {u"\\{", MacroClass::Escaped, 123},
        {u"\\}", MacroClass::Escaped, 125}, {u"\\\\", MacroClass::Escaped, u'\\'},
        {u"\\q", MacroClass::Escaped, u'q'}, {u"\\\"", MacroClass::Escaped, u'"'},
        {u"\\x41", MacroClass::Hex, 0x41},  {u"\\xfF", MacroClass::Hex, 0xFF},
        {u"\\x4", MacroClass::Hex, 4},      {u"\\x", MacroClass::Hex, 0},
    };
    for (const Case& c : cases) {
        auto steps = lexAll(c.Text, MacroEscapes);
        ASSERT_EQ(steps.size(), 1u) << std::u16string(c.Text).size();
        EXPECT_EQ(steps[0].Class, c.Class);
        EXPECT_EQ(steps[0].Char, c.Char);
        EXPECT_EQ(steps[0].Start, 0u);
        EXPECT_EQ(steps[0].End, std::u16string(c.Text).size() - 1);
    }
}

TEST(MacroLexer, HexTakesAtMostTwoDigits)
{
    auto steps = lexAll(u"\\x414\\xZZ", MacroEscapes);
    ASSERT_EQ(steps.size(), 5u);
    EXPECT_EQ(steps[0].Char, 0x41);
    EXPECT_EQ(steps[0].End, 3u);
    EXPECT_EQ(steps[1].Char, u'4');
    EXPECT_EQ(steps[1].Class, MacroClass::Plain);
    EXPECT_EQ(steps[2].Class, MacroClass::Hex);
    EXPECT_EQ(steps[2].Char, 0);
    EXPECT_EQ(steps[2].Start, 5u);
    EXPECT_EQ(steps[3].Char, u'Z');
}

TEST(MacroLexer, BackslashStaysPlainAtEndOrWithoutEscapes)
{
    auto steps = lexAll(u"a\\", MacroEscapes | MacroKeys | MacroLanguage);
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[1].Class, MacroClass::Plain);
    EXPECT_EQ(steps[1].Char, u'\\');

    steps = lexAll(u"\\n", MacroKeys);
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].Class, MacroClass::Plain);
    EXPECT_EQ(steps[1].Char, u'n');
}

TEST(MacroLexer, ClassicLettersOnlyAtFullLevel)
{
    for (char16_t letter : std::u16string(u"ESUempv")) {
        std::u16string text = {u'\\', letter};
        auto full = lexAll(text, 7);
        ASSERT_EQ(full.size(), 1u);
        EXPECT_EQ(full[0].Class, MacroClass::Classic);
        EXPECT_EQ(full[0].Char, letter);
        for (uint32_t flags : {1u, 3u}) {
            auto lower = lexAll(text, flags);
            ASSERT_EQ(lower.size(), 1u);
            EXPECT_EQ(lower[0].Class, MacroClass::Escaped);
            EXPECT_EQ(lower[0].Char, letter);
        }
    }
    // AtStart is never cleared, so a classic letter counts anywhere in the text.
    auto later = lexAll(u"ab\\p", 7);
    ASSERT_EQ(later.size(), 3u);
    EXPECT_EQ(later[2].Class, MacroClass::Classic);
}

}  // namespace
}  // namespace qrl
