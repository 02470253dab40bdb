#include <gtest/gtest.h>

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
    EXPECT_EQ(ParseElementType(u"BOOL"), ElementType::Bool);
    EXPECT_EQ(ParseElementType(u"Boolean"), ElementType::Bool);
    EXPECT_EQ(ParseElementType(u"bools"), ElementType::Undefined);
    EXPECT_EQ(ParseElementType(u""), ElementType::Text);
    EXPECT_EQ(ParseElementType(u"String"), ElementType::Text);
    EXPECT_EQ(ParseElementType(u"Integer"), ElementType::Int);
    EXPECT_EQ(ParseElementType(u"5250COLRS"), ElementType::Ibm5250Colours);
    EXPECT_EQ(ParseElementType(u"SSLCertificate"), ElementType::SslCertificate);
    EXPECT_EQ(ParseElementType(u"sshauthfile"), ElementType::SshAuthFile);
    EXPECT_EQ(ParseElementType(u" int"), ElementType::Undefined);
    EXPECT_TRUE(IsListType(ElementType::KeyList));
    EXPECT_TRUE(IsListType(ElementType::MouseMap));
    EXPECT_FALSE(IsListType(ElementType::TandemColours));
    EXPECT_FALSE(IsListType(ElementType::Undefined));
}

TEST(CommaList, RunsOfCommasAreOneSeparator) {
    using V = std::vector<std::u16string_view>;
    EXPECT_EQ(SplitCommaList(u"a,,b"), (V{u"a", u"b"}));
    EXPECT_EQ(SplitCommaList(u",a, b,"), (V{u"a", u" b"}));
    EXPECT_EQ(SplitCommaList(u",,,"), V{});
    EXPECT_EQ(SplitCommaList(u""), V{});
    EXPECT_EQ(SplitCommaList(u"\"x,y\""), (V{u"\"x", u"y\""}));
}

TEST(ChoiceIndex, ValuesThenStringsThenRange) {
    TElementDef e = element(ElementType::Int, u"");
    e.min = 10;
    e.max = 20;
    EXPECT_EQ(e.GetChoiceIndex(u"15", 0), 5);
    EXPECT_EQ(e.GetChoiceIndex(u"25", 3), 3);
    EXPECT_EQ(e.GetChoiceIndex(u"10", 3), 0);
    EXPECT_EQ(e.GetChoiceIndex(u"20x", 3), 10);  // trailing characters are ignored
    EXPECT_EQ(e.GetChoiceIndex(u"", 3), 3);      // 0 is outside 10..20

    e.values = {u"Low", u"High"};
    EXPECT_EQ(e.GetChoiceIndex(u"high", -1), 1);  // case ignored
    EXPECT_EQ(e.GetChoiceIndex(u"15", -1), -1);   // values win over the range

    TElementDef s = element(ElementType::StringSet, u"");
    s.strings = {u"One", u"Two"};
    EXPECT_EQ(s.GetChoiceIndex(u"TWO", 9), 1);
    TElementDef t = element(ElementType::Text, u"");
    t.strings = {u"One"};
    EXPECT_EQ(t.GetChoiceIndex(u"One", 9), 9);  // only a stringset searches its strings

    TElementDef wide = element(ElementType::Char8, u"");
    wide.min = INT32_MIN;
    wide.max = INT32_MAX;
    EXPECT_EQ(wide.GetChoiceIndex(u"-2147483648", 7), 0);
}

TEST(BoolReading, ByType) {
    EXPECT_TRUE(element(ElementType::Bool, u"Yes").GetBool());
    EXPECT_TRUE(element(ElementType::Bool, u"ON").GetBool());
    EXPECT_TRUE(element(ElementType::Bool, u"2").GetBool());
    EXPECT_FALSE(element(ElementType::Bool, u"no").GetBool());
    EXPECT_FALSE(element(ElementType::Bool, u"").GetBool());
    EXPECT_TRUE(element(ElementType::Text, u"true").GetBool());

    TElementDef i = element(ElementType::Int, u"yes");
    EXPECT_FALSE(i.GetBool());  // an int reads numbers only
    i.values = {u"off", u"on"};
    i.value = u"ON";
    EXPECT_TRUE(i.GetBool());
    i.value = u"off";
    EXPECT_FALSE(i.GetBool());

    TElementDef set = element(ElementType::Set, u"1");
    set.values = {u"0", u"1"};
    EXPECT_TRUE(set.GetBool());
    set.value = u"7";  // not among values: the fallback 0
    EXPECT_FALSE(set.GetBool());
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
    TElementDef e;
    EXPECT_EQ(e.MacroMode(), 7);
    e.allowEmKeys = true;
    EXPECT_EQ(e.MacroMode(), 7);
    e.cEncoded = true;
    EXPECT_EQ(e.MacroMode(), 3);
    e.allowEmKeys = false;
    EXPECT_EQ(e.MacroMode(), 1);
}

TEST(ShortText, PlainTypesAndPassword) {
    TElementDef e = element(ElementType::Text, u"abcde");
    EXPECT_EQ(ElementValueToText(e), u"(abcde)");
    e.password = true;
    EXPECT_EQ(ElementValueToText(e), u"(*****)");
    e.type = ElementType::Bool;  // masking concerns only the plain texts
    EXPECT_EQ(ElementValueToText(e), u"(off)");

    EXPECT_EQ(ElementValueToText(element(ElementType::Bool, u"Yes")), u"(on)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Bool, u"2")), u"(on)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Bool, u"no")), u"(off)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Rgb, u"0000ff")), u"(RGB=0000ff)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Undefined, u"x")), u"(?\?\?)");
    EXPECT_EQ(ElementValueToText(element(ElementType::KeyList, u"x")), u"(?\?\?)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Charset, u"x")), u"");
    EXPECT_EQ(ElementValueToText(element(ElementType::TandemColours, u"x")), u"");
    EXPECT_EQ(ElementValueToText(element(ElementType::Ibm5250Colours, u"x")), u"");
    EXPECT_EQ(ElementValueToText(element(ElementType::SshAuthFile, u"id_rsa")), u"(id_rsa)");

    TElementDef set = element(ElementType::Set, u"1");
    set.strings = {u"Low", u"High"};
    set.values = {u"0", u"1"};
    EXPECT_EQ(ElementValueToText(set), u"(High)");
    set.value = u"5";
    EXPECT_EQ(ElementValueToText(set), u"(?\?\?)");
}

TEST(ShortText, Characters) {
    EXPECT_EQ(CharacterText(u"27"), u"<ESC> 0x1B");
    EXPECT_EQ(CharacterText(u"65"), u"A 0x41");
    EXPECT_EQ(CharacterText(u"0"), u"<NUL> 0x00");
    EXPECT_EQ(CharacterText(u"32"), u"<SP> 0x20");
    EXPECT_EQ(CharacterText(u"127"), u"<DEL> 0x7F");
    EXPECT_EQ(CharacterText(u"300"), u", 0x2C");  // the low byte of 300 is 44
    EXPECT_EQ(CharacterText(u"-1"), u"\u00FF 0xFF");
    EXPECT_EQ(CharacterText(u"150"), u"0x96");  // a C1 control has neither name nor glyph
    EXPECT_EQ(CharacterText(u"x"), u"<NUL> 0x00");
    EXPECT_EQ(ElementValueToText(element(ElementType::Char8, u"27")), u"(<ESC> 0x1B)");
}

TEST(ShortText, StructuredValues) {
    // The font shows its face name: "Ab" in the stream's hexadecimal form.
    EXPECT_EQ(ElementValueToText(element(ElementType::Font, u"-12 0 0 0 400 0 0 0 0 0 0 0 0 '00410062'")),
              u"(Ab)");
    EXPECT_EQ(ElementValueToText(element(ElementType::Font, u"")), u"()");
    EXPECT_EQ(ElementValueToText(element(ElementType::Printer, u"")), u"(Default printer)");
    EXPECT_EQ(ElementValueToText(element(ElementType::SslCertificate, u"Type=1|Store=MY|Subject=CN=me, O=x|")),
              u"(me)");
}

}  // namespace
}  // namespace qrl
