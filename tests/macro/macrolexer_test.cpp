#include "macro/macro.h"

#include <gtest/gtest.h>

#include <string>

namespace qrl {
namespace {

// Each step as "class:value@start-end", the value in decimal.
std::string lexAll(std::u16string text, uint32_t flags)
{
    std::string out;
    MacroLexer lexer(std::move(text), flags);
    for (; !lexer.atEnd(); lexer.step()) {
        out += out.empty() ? "" : " ";
        out += std::to_string(lexer.Class) + ":" + std::to_string(lexer.Char) + "@" + std::to_string(lexer.Start) +
               "-" + std::to_string(lexer.End);
    }
    return out;
}

TEST(MacroLexer, Steps)
{
    struct Case {
        std::u16string_view text;
        uint32_t flags;
        std::string steps;
    };
    const Case cases[] = {
        {u"\\n\\r\\t\\b\\f", MacroEscapes, "2:10@0-1 2:13@2-3 2:9@4-5 2:8@6-7 2:12@8-9"},
        {u"\\{\\}\\\\\\q\\\"", MacroEscapes, "2:123@0-1 2:125@2-3 2:92@4-5 2:113@6-7 2:34@8-9"},
        // \x takes at most two digits, of either case, and reads 0 without any.
        {u"\\x414\\xfF\\x4\\xZZ\\x", MacroEscapes, "3:65@0-3 1:52@4-4 3:255@5-8 3:4@9-11 3:0@12-13 1:90@14-14 "
                                                   "1:90@15-15 3:0@16-17"},
        {u"a\\", MacroEscapes | MacroKeys | MacroLanguage, "1:97@0-0 1:92@1-1"},  // a backslash at the end is plain
        {u"\\n", MacroKeys, "1:92@0-0 1:110@1-1"},                                  // and so is one without escapes
        {u"{a}", MacroKeys, "4:123@0-0 1:97@1-1 5:125@2-2"},
        // AtStart is never cleared, so a classic letter counts anywhere in the text.
        {u"ab\\p", 7, "1:97@0-0 1:98@1-1 6:112@2-3"},
    };
    for (const Case& c : cases) EXPECT_EQ(lexAll(std::u16string(c.text), c.flags), c.steps) << c.steps;
}

TEST(MacroLexer, ClassicLettersOnlyAtFullLevel)
{
    for (char16_t letter : std::u16string(u"ESUempv")) {
        const std::u16string text = {u'\\', letter};
        const std::string value = std::to_string(letter) + "@0-1";
        EXPECT_EQ(lexAll(text, 7), "6:" + value);
        EXPECT_EQ(lexAll(text, 1), "2:" + value);
        EXPECT_EQ(lexAll(text, 3), "2:" + value);
    }
}

}  // namespace
}  // namespace qrl
