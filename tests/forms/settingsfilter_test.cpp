#include "forms/settingsfilter.h"

#include "forms/changemarks.h"
#include "forms/valuereset.h"
#include "request/session.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

class SettingsFilter : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char16_t* name : {u"Line", u"Screen"}) {
            TGroupDef& g = s.Part<TFormStore>().groups.emplace_back();
            g.name = name;
            s.Part<TFormStore>().groupIndex.Add(g.name, &g);
        }
        Add(u"Baud", u"Line", u"Speed", u"9600", u"9600");
        Add(u"Font", u"Screen", u"Écran police", u"x", u"x");
        Add(u"Echo", u"Screen", u"", u"1", u"0", ElementType::Bool);
        Add(u"Secret", u"Screen", u"Password", u"abc", u"abc").password = true;
        Add(u"Parity", u"Line", u"Parity", u"even", u"none");  // back to Line: shown before Screen
        plan = BuildTreeIndex(form, s);
    }
    TElementDef& Add(const char16_t* name, const char16_t* group, const char16_t* descr, const char16_t* value,
                     const char16_t* defaultValue, ElementType type = ElementType::Text) {
        TElementDef& e = s.AddElement(name);
        e.group = group;
        e.description = descr;
        e.value = value;
        e.defaultValue = defaultValue;
        e.type = type;
        return e;
    }
    // Keys of nodes, and of the shown ones in the tree's order.
    std::u16string Keys(const std::vector<std::size_t>& nodes) const {
        std::u16string out;
        for (std::size_t n : nodes) out += std::u16string(n ? form.treeIndex[n].key : u"^") + u" ";
        return out;
    }
    std::u16string Shown(const TFilterView& view, const TSettingsFilter& filter) const {
        std::vector<std::size_t> nodes;
        for (std::size_t n : filter.DisplayOrder())
            if (view.shown[n]) nodes.push_back(n);
        return Keys(nodes);
    }
    TConfigSession s;
    TFormDef form;
    std::vector<TreeInsertion> plan;
};

// Searched as the texts come (folded by the search itself) and after folding ahead two at a time.
TEST_F(SettingsFilter, KeepsMatchesWithTheirGroupsInTreeOrder) {
    for (const bool ahead : {false, true}) {
        SCOPED_TRACE(ahead ? "folded ahead" : "folded by the search");
        TSettingsFilter filter(form, plan);
        if (ahead) {
            int ticks = 0;
            while (filter.FoldAhead(2)) ++ticks;
            EXPECT_EQ(ticks, 2);  // five elements: two, two, then the last one
        }
        const struct {
            std::u16string search;
            bool customised;
            std::u16string matches, shown, count;
        } cases[] = {
            {u"", false, u"Baud Parity Font Echo Secret ", u"^ Line Baud Parity Screen Font Echo Secret ", u""},
            {u"PAR", false, u"Parity ", u"^ Line Parity ", u"1 of 5"},
            {u"ecran", false, u"Font ", u"^ Screen Font ", u"1 of 5"},       // accents and case
            {u"screen", false, u"Font Echo Secret ", u"^ Screen Font Echo Secret ", u"3 of 5"},  // group name
            {u"on", false, u"Echo ", u"^ Screen Echo ", u"1 of 5"},          // short text of a bool
            {u"abc", false, u"", u"^ ", u"0 of 5"},                          // a password's value is not shown
            {u"", true, u"Parity Echo ", u"^ Line Parity Screen Echo ", u""},
            {u"e", true, u"Parity Echo ", u"^ Line Parity Screen Echo ", u"2 of 5"},
        };
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(c.search.begin(), c.search.end()));
            const TFilterView view = filter.Apply(c.search, c.customised);
            EXPECT_EQ(view.active, !c.search.empty() || c.customised);
            EXPECT_EQ(Keys(view.matches), c.matches);
            EXPECT_EQ(Shown(view, filter), c.shown);
            EXPECT_EQ(MatchCountText(view, c.search), c.count);
        }
        // A value changed after the filter was made is found by its new short text.
        s.FindElement(u"Baud")->value = u"19200";
        EXPECT_EQ(Keys(filter.Apply(u"192", true).matches), u"Baud ");
        s.FindElement(u"Baud")->value = u"9600";
    }
}

TEST_F(SettingsFilter, ChangesMarkTheElementAndItsGroupsUntilSetBack) {
    TSettingsFilter filter(form, plan);
    TChangeMarks marks(form, filter.Parents());
    const auto set = [&](const char16_t* key, const char16_t* value) {
        s.FindElement(key)->value = value;
        return Keys(marks.Update(static_cast<std::size_t>(FindTreeNode(form, key))));
    };
    EXPECT_EQ(set(u"Font", u"y"), u"Font Screen ");  // the root stays plain
    EXPECT_EQ(set(u"Echo", u"0"), u"Echo ");          // the group is bold already
    EXPECT_EQ(set(u"Font", u"x"), u"Font ");
    EXPECT_TRUE(marks.Bold(static_cast<std::size_t>(FindTreeNode(form, u"Screen"))));
    EXPECT_EQ(set(u"Echo", u"1"), u"Echo Screen ");
    EXPECT_EQ(set(u"Echo", u"1"), u"");
}

TEST_F(SettingsFilter, ResetTakesTheChangeableCustomisedElementsBelowANode) {
    TSettingsFilter filter(form, plan);
    TElementDef& secret = *s.FindElement(u"Secret");
    secret.value = u"new";
    secret.readOnly = true;  // the user can't change it, so no reset either
    const auto below = [&](const char16_t* key) {
        return Keys(ResettableBelow(form, filter.Parents(), static_cast<std::size_t>(FindTreeNode(form, key))));
    };
    EXPECT_EQ(below(u"Screen"), u"Echo ");
    EXPECT_EQ(below(u""), u"Echo Parity ");
    EXPECT_EQ(below(u"Font"), u"");
    EXPECT_EQ(ResetGroupQuestion(2, u"Line"), u"Reset 2 settings in Line to their defaults?");
}

TEST(SettingsFilterSteps, WrapBothWaysAndStartFromTheEndsOffAMatch) {
    const std::vector<std::size_t> m{3, 5, 9};
    const struct {
        std::ptrdiff_t current;
        bool forward;
        std::ptrdiff_t next;
    } cases[] = {{3, true, 5}, {9, true, 3}, {3, false, 9}, {5, false, 3}, {4, true, 3}, {-1, false, 9}};
    for (const auto& c : cases) EXPECT_EQ(StepMatch(m, c.current, c.forward), c.next) << c.current;
    EXPECT_EQ(StepMatch({}, 3, true), -1);
}

}  // namespace
}  // namespace qrl
