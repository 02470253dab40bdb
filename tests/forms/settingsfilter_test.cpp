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
        form.treeIndex.clear();
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
    // Keys of the matches and of the shown nodes, in the tree's order.
    std::u16string Keys(const TFilterView& view, bool shownNodes, const TSettingsFilter& filter) const {
        std::u16string out;
        if (shownNodes) {
            for (std::size_t n : filter.DisplayOrder())
                if (view.shown[n]) out += (form.treeIndex[n].key.empty() ? u"^" : form.treeIndex[n].key) + u" ";
        } else {
            for (std::size_t n : view.matches) out += form.treeIndex[n].key + u" ";
        }
        return out;
    }
    TConfigSession s;
    TFormDef form;
    std::vector<TreeInsertion> plan;
};

TEST_F(SettingsFilter, KeepsMatchesWithTheirGroupsInTreeOrder) {
    TSettingsFilter filter(form, plan);
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
        EXPECT_EQ(Keys(view, false, filter), c.matches);
        EXPECT_EQ(Keys(view, true, filter), c.shown);
        EXPECT_EQ(MatchCountText(view, c.search), c.count);
    }
}

TEST_F(SettingsFilter, FollowsValuesChangedAfterItWasMade) {
    TSettingsFilter filter(form, plan);
    EXPECT_TRUE(filter.Apply(u"19200", false).matches.empty());
    s.FindElement(u"Baud")->value = u"19200";
    EXPECT_EQ(filter.Apply(u"19200", false).matches.size(), 1u);
    EXPECT_EQ(filter.Apply(u"", true).matches.size(), 3u);  // now customised too
}

TEST_F(SettingsFilter, ChangesMarkTheElementAndItsGroupsUntilSetBack) {
    TSettingsFilter filter(form, plan);
    std::vector<std::ptrdiff_t> parents;
    for (std::size_t n = 0; n < filter.Size(); ++n) parents.push_back(filter.Parent(n));
    TChangeMarks marks(form, parents);
    const auto node = [&](const char16_t* key) { return static_cast<std::size_t>(FindTreeNode(form, key)); };
    const auto keys = [&](const std::vector<std::size_t>& nodes) {
        std::u16string out;
        for (std::size_t n : nodes) out += form.treeIndex[n].key + u" ";
        return out;
    };
    s.FindElement(u"Font")->value = u"y";
    EXPECT_EQ(keys(marks.Update(node(u"Font"))), u"Font Screen ");  // the root stays plain
    s.FindElement(u"Echo")->value = u"0";
    EXPECT_EQ(keys(marks.Update(node(u"Echo"))), u"Echo ");          // the group is bold already
    s.FindElement(u"Font")->value = u"x";
    EXPECT_EQ(keys(marks.Update(node(u"Font"))), u"Font ");
    EXPECT_TRUE(marks.Bold(node(u"Screen")));
    s.FindElement(u"Echo")->value = u"1";
    EXPECT_EQ(keys(marks.Update(node(u"Echo"))), u"Echo Screen ");
    EXPECT_TRUE(marks.Update(node(u"Echo")).empty());  // nothing new
    EXPECT_FALSE(marks.Bold(node(u"Screen")) || marks.Bold(0));
}

TEST_F(SettingsFilter, ResetTakesTheChangeableCustomisedElementsBelowANode) {
    TSettingsFilter filter(form, plan);
    std::vector<std::ptrdiff_t> parents;
    for (std::size_t n = 0; n < filter.Size(); ++n) parents.push_back(filter.Parent(n));
    TElementDef& secret = *s.FindElement(u"Secret");
    secret.value = u"new";
    secret.readOnly = true;  // the user can't change it, so no reset either
    const auto keys = [&](std::size_t node) {
        std::u16string out;
        for (std::size_t n : ResettableBelow(form, parents, node)) out += form.treeIndex[n].key + u" ";
        return out;
    };
    EXPECT_EQ(keys(static_cast<std::size_t>(FindTreeNode(form, u"Screen"))), u"Echo ");
    EXPECT_EQ(keys(0), u"Echo Parity ");
    EXPECT_EQ(keys(static_cast<std::size_t>(FindTreeNode(form, u"Font"))), u"");
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
