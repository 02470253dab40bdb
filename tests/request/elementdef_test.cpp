#include <gtest/gtest.h>

#include <tuple>

#include "request/elementdef.h"

namespace qrl {
namespace {

TElementDef element(ElementType type, std::u16string value) {
    TElementDef e;
    e.name = u"E";
    e.type = type;
    e.value = std::move(value);
    return e;
}

TEST(ElementType, WordsFoldCaseAndUnknownWordsAreUndefined) {
    const std::pair<const char16_t*, ElementType> cases[] = {
        {u"BOOL", ElementType::Bool}, {u"Boolean", ElementType::Bool}, {u"bools", ElementType::Undefined},
        {u"", ElementType::Text}, {u"String", ElementType::Text}, {u"Integer", ElementType::Int},
        {u"5250COLRS", ElementType::Ibm5250Colours}, {u"SSLCertificate", ElementType::SslCertificate},
        {u"sshauthfile", ElementType::SshAuthFile}, {u" int", ElementType::Undefined},
    };
    for (const auto& [word, type] : cases) EXPECT_EQ(ParseElementType(word), type) << ::testing::PrintToString(word);
}

TEST(CommaList, RunsOfCommasAreOneSeparator) {
    using V = std::vector<std::u16string_view>;
    const auto SplitCommaList = [](std::u16string_view text) {
        V items;
        ForEachCommaItem(text, [&](std::u16string_view item) { items.push_back(item); });
        return items;
    };
    EXPECT_EQ(SplitCommaList(u"a,,b"), (V{u"a", u"b"}));
    EXPECT_EQ(SplitCommaList(u",a, b,"), (V{u"a", u" b"}));
    EXPECT_EQ(SplitCommaList(u""), V{});
    EXPECT_EQ(SplitCommaList(u"\"x,y\""), (V{u"\"x", u"y\""}));
}

TEST(ChoiceIndex, ValuesThenStringsThenRange) {
    const struct Case {
        ElementType type;
        int min, max;
        std::vector<std::u16string> values, strings;
        const char16_t* text;
        int fallback, index;
    } cases[] = {
        {ElementType::Int, 10, 20, {}, {}, u"15", 0, 5},
        {ElementType::Int, 10, 20, {}, {}, u"25", 3, 3},
        {ElementType::Int, 10, 20, {}, {}, u"10", 3, 0},
        {ElementType::Int, 10, 20, {}, {}, u"20x", 3, 10},  // trailing characters are ignored
        {ElementType::Int, 10, 20, {}, {}, u"", 3, 3},      // 0 is outside 10..20
        {ElementType::Int, 10, 20, {u"Low", u"High"}, {}, u"high", -1, 1},  // case ignored
        {ElementType::Int, 10, 20, {u"Low", u"High"}, {}, u"15", -1, -1},   // values win over the range
        {ElementType::StringSet, 0, 0, {}, {u"One", u"Two"}, u"TWO", 9, 1},
        {ElementType::Text, 0, 0, {}, {u"One"}, u"One", 9, 9},  // only a stringset searches its strings
        {ElementType::Char8, INT32_MIN, INT32_MAX, {}, {}, u"-2147483648", 7, 0},
    };
    for (const Case& c : cases) {
        TElementDef e = element(c.type, u"");
        e.min = c.min;
        e.max = c.max;
        e.values = c.values;
        e.strings = c.strings;
        EXPECT_EQ(e.GetChoiceIndex(c.text, c.fallback), c.index) << ::testing::PrintToString(c.text);
    }
}

TEST(BoolReading, ByType) {
    // {type, value, stored values of the choice, reads as on}
    const struct Case { ElementType type; const char16_t* value; std::vector<std::u16string> values; bool on; } cases[] = {
        {ElementType::Bool, u"Yes", {}, true}, {ElementType::Bool, u"ON", {}, true}, {ElementType::Bool, u"2", {}, true},
        {ElementType::Bool, u"no", {}, false}, {ElementType::Bool, u"", {}, false}, {ElementType::Text, u"true", {}, true},
        {ElementType::Int, u"yes", {}, false},  // an int reads numbers only
        {ElementType::Int, u"ON", {u"off", u"on"}, true}, {ElementType::Int, u"off", {u"off", u"on"}, false},
        {ElementType::Set, u"1", {u"0", u"1"}, true},
        {ElementType::Set, u"7", {u"0", u"1"}, false},  // not among values: the fallback 0
    };
    for (const Case& c : cases) {
        TElementDef e = element(c.type, c.value);
        e.values = c.values;
        EXPECT_EQ(e.GetBool(), c.on) << static_cast<int>(c.type) << " " << ::testing::PrintToString(c.value);
    }
}

TEST(SetIndex, ComparesAsNumbersOverTheStrings) {
    TElementDef e = element(ElementType::Set, u"007");
    e.strings = {u"a", u"b"};
    e.values = {u"3", u"7", u"9"};
    EXPECT_EQ(e.GetSetIndex(), 1);
    e.value = u"9";  // a third value without a string is not looked at
    EXPECT_EQ(e.GetSetIndex(), -1);
}

TEST(MacroMode, FromTheFlags) {
    // {allow_emkeys, cencoded, mode}
    for (const auto& [emKeys, cEncoded, mode] :
         {std::tuple{false, false, 7}, {true, false, 7}, {true, true, 3}, {false, true, 1}}) {
        TElementDef e;
        e.allowEmKeys = emKeys;
        e.cEncoded = cEncoded;
        EXPECT_EQ(e.MacroMode(), mode) << emKeys << cEncoded;
    }
}

TEST(ShortText, PlainTypesAndPassword) {
    TElementDef e = element(ElementType::Text, u"abcde");
    EXPECT_EQ(ElementValueToText(e), u"(abcde)");
    e.password = true;
    EXPECT_EQ(ElementValueToText(e), u"(*****)");
    e.type = ElementType::Bool;  // masking concerns only the plain texts
    EXPECT_EQ(ElementValueToText(e), u"(off)");

    // Bool texts come from GetBool, tested above; a char8 from CharacterText, tested below.
    const struct Case { ElementType type; const char16_t* value; const char16_t* text; } cases[] = {
        {ElementType::Bool, u"Yes", u"(on)"}, {ElementType::Rgb, u"0000ff", u"(RGB=0000ff)"},
        {ElementType::Undefined, u"x", u"(?\?\?)"}, {ElementType::KeyList, u"x", u"(?\?\?)"},
        {ElementType::Charset, u"x", u""}, {ElementType::SshAuthFile, u"id_rsa", u"(id_rsa)"},
        {ElementType::Char8, u"27", u"(<ESC> 0x1B)"}, {ElementType::Font, u"", u"()"},
        {ElementType::Printer, u"", u"(Default printer)"},
        // The font shows its face name: "Ab" in the stream's hexadecimal form.
        {ElementType::Font, u"-12 0 0 0 400 0 0 0 0 0 0 0 0 '00410062'", u"(Ab)"},
        {ElementType::SslCertificate, u"Type=1|Store=MY|Subject=CN=me, O=x|", u"(me)"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ElementValueToText(element(c.type, c.value)), c.text) << static_cast<int>(c.type);

    TElementDef set = element(ElementType::Set, u"1");
    set.strings = {u"Low", u"High"};
    set.values = {u"0", u"1"};
    EXPECT_EQ(ElementValueToText(set), u"(High)");
    set.value = u"5";
    EXPECT_EQ(ElementValueToText(set), u"(?\?\?)");
}

TEST(ShortText, Characters) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"27", u"<ESC> 0x1B"}, {u"65", u"A 0x41"}, {u"0", u"<NUL> 0x00"}, {u"32", u"<SP> 0x20"},
        {u"127", u"<DEL> 0x7F"}, {u"300", u", 0x2C"},  // the low byte of 300 is 44
        {u"-1", u"\u00FF 0xFF"}, {u"150", u"0x96"},     // a C1 control has neither name nor glyph
        {u"x", u"<NUL> 0x00"},
    };
    for (const auto& [value, text] : cases) EXPECT_EQ(CharacterText(value), text) << ::testing::PrintToString(value);
}

}  // namespace
}  // namespace qrl
