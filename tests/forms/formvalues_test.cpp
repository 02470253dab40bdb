#include "forms/formvalues.h"

#include "request/elementdef.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TElementDef Def(ElementType type, std::int32_t min = 0, std::int32_t max = 0) {
    TElementDef e;
    e.name = u"E";
    e.type = type;
    e.min = min;
    e.max = max;
    return e;
}

TEST(ChoiceValue, IntRangeKeepsTheMinus) {
    TElementDef e = Def(ElementType::Int, 1, 3);
    const ListFill fill = ListEntries(e, ItemKind::ComboBox);
    EXPECT_EQ(fill.entries, (std::vector<std::u16string>{u"1", u"2", u"3"}));
    EXPECT_EQ(e.GetChoiceIndex(u"2", -1), 1);
    EXPECT_EQ(ChoiceValue(e, 2), u"1");  // position 2 minus min: not the inverse
    EXPECT_EQ(ChoiceValue(Def(ElementType::Char8, 32, 126), 33), u"1");
    EXPECT_EQ(ChoiceValue(Def(ElementType::Text), 1), u"");

    TElementDef set = Def(ElementType::Set);
    set.values = {u"10", u"20"};
    EXPECT_EQ(ChoiceValue(set, 1), u"20");
    EXPECT_EQ(ChoiceValue(set, 2), u"");
}

TEST(SetBool, ByType) {
    const struct Case {
        ElementType type;
        std::int32_t min, max;
        std::vector<std::u16string> values;
        bool on;
        std::u16string expected;
    } cases[] = {
        {ElementType::Set, 0, 0, {u"off", u"on"}, true, u"on"},
        {ElementType::Set, 0, 0, {u"only"}, true, u"0"},
        {ElementType::Int, 0, 0, {u"5", u"9"}, false, u"5"},
        {ElementType::Int, 65, 90, {}, true, u"A"},  // a character of code min, not the number
        {ElementType::Int, 0, 0, {}, true, u"1"},
        {ElementType::Bool, 0, 0, {}, false, u"0"},
    };
    for (const Case& c : cases) {
        TElementDef e = Def(c.type, c.min, c.max);
        e.values = c.values;
        SetBool(e, c.on);
        EXPECT_EQ(e.value, c.expected) << static_cast<int>(c.type) << " " << c.min << " " << c.values.size();
    }
}

TEST(ListFill, SourcesAndTheMessageUsed) {
    TElementDef e = Def(ElementType::StringSet);
    e.strings = {u"One", u"Two"};
    e.values = {u"1", u"2", u"3"};
    EXPECT_EQ(ListEntries(e, ItemKind::ComboBox).entries, e.strings);
    // Strings and values go with CB_ADDSTRING even to a list box, which then stays empty.
    EXPECT_TRUE(ListEntries(e, ItemKind::ListBox).useComboMessage);
    e.strings.clear();
    EXPECT_EQ(ListEntries(e, ItemKind::ComboBox).entries, e.values);
    EXPECT_FALSE(ListEntries(Def(ElementType::Int, 0, 2), ItemKind::ListBox).useComboMessage);
    EXPECT_TRUE(ListEntries(Def(ElementType::Int, 2, 2), ItemKind::ComboBox).entries.empty());
    // A range from a broken request stays bounded.
    EXPECT_EQ(ListEntries(Def(ElementType::Int, INT32_MIN, INT32_MAX), ItemKind::ComboBox).entries.size(),
              static_cast<std::size_t>(kMaxRangeRows));
}

TEST(ElementTexts, RadioLabelAndTree) {
    TElementDef b = Def(ElementType::Bool);
    b.value = u"yes";
    EXPECT_EQ(RadioCompareText(b), u"1");
    TElementDef t = Def(ElementType::Text);
    t.value = u"Yes";
    EXPECT_EQ(RadioCompareText(t), u"Yes");
    EXPECT_EQ(ElementLabel(t), u"E");
    t.description = u"Host name";
    EXPECT_EQ(ElementTreeText(t), u"Host name (Yes)");
    t.password = true;
    EXPECT_EQ(ElementTreeText(t), u"Host name (***)");
    EXPECT_EQ(ShortTextBare(t), u"***");
}

}  // namespace
}  // namespace qrl
