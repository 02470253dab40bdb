#include "forms/formtree.h"

#include "request/session.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TElementDef& Add(TConfigSession& s, const char16_t* name, const char16_t* group, bool hidden = false) {
    TElementDef& e = s.AddElement(name);
    e.group = group;
    e.hidden = hidden;
    e.value = u"v";
    return e;
}

void AddGroup(TConfigSession& s, const char16_t* name, bool hidden = false, bool expanded = false) {
    TFormStore& store = s.Part<TFormStore>();
    TGroupDef& g = store.groups.emplace_back();
    g.name = name;
    g.hidden = hidden;
    g.expanded = expanded;
    store.groupIndex.Add(g.name, &g);
}

// The plan, one line per insertion in order: key, "<" parent key, the text, and "+"/"-" for a
// group's expanded state.
std::u16string Plan(const TFormDef& form, const std::vector<TreeInsertion>& plan) {
    std::u16string out;
    for (const TreeInsertion& step : plan) {
        const std::u16string parent(step.parent < 0 ? u"^" : form.treeIndex.at(static_cast<std::size_t>(step.parent)).key);
        out += std::u16string(form.treeIndex.at(step.node).key) + u"<" + parent + u" " + step.text +
               (step.isGroup ? (step.expanded ? u" +" : u" -") : u"") + u"\n";
    }
    return out;
}

TEST(TreeRoot, TextByModuleType) {
    TConfigSession s;
    TreeNodeKind kind;
    s.moduleType = u"FXfer";
    EXPECT_EQ(TreeRootText(s, kind), u"no current file transfer");
    EXPECT_EQ(kind, TreeNodeKind::Root);
    s.moduleType = u"emul";  // exact
    EXPECT_EQ(TreeRootText(s, kind), u"General");
    EXPECT_EQ(kind, TreeNodeKind::UnknownRoot);
    s.moduleLists.push_back({u"", u"VT220", {{u"vt220", u"VT 220"}}});
    EXPECT_EQ(TreeRootText(s, kind), u"VT 220");
    EXPECT_EQ(kind, TreeNodeKind::UnknownRoot);
    s.moduleLists.front().current = u"other";
    EXPECT_EQ(TreeRootText(s, kind), u"General");
}

TEST(TreeIndex, GroupsHiddenGroupsAndUnlistedGroups) {
    TConfigSession s;
    s.moduleType = u"Comms";
    AddGroup(s, u"Line", false, true);
    AddGroup(s, u"Line.Speed");
    AddGroup(s, u"Secret", true);
    Add(s, u"Host", u"");
    Add(s, u"Port", u"Line");
    Add(s, u"Baud", u"Line.Speed");
    Add(s, u"Key", u"Secret");       // hidden group: where Baud went
    Add(s, u"Odd", u"Nowhere");      // unlisted group: the same
    Add(s, u"Gone", u"Line", true);  // hidden element: no node
    Add(s, u"Parity", u"line");      // differs from the last group: looked up again
    Add(s, u"Back", u"");
    TFormDef form;
    const std::vector<TreeInsertion> plan = BuildTreeIndex(form, s);

    ASSERT_EQ(plan.size(), form.treeIndex.size());
    // Hidden and unlisted groups put their elements where the last group went; a hidden element
    // gets no node; "line" differs from the last group and is looked up again, case ignored.
    EXPECT_EQ(Plan(form, plan),
              u"<^ no current comms\n"
              u"Host< Host (v)\n"
              u"Line< Line +\n"
              u"Port<Line Port (v)\n"
              u"Line.Speed<Line Speed -\n"
              u"Baud<Line.Speed Baud (v)\n"
              u"Key<Line.Speed Key (v)\n"
              u"Odd<Line.Speed Odd (v)\n"
              u"Parity<Line Parity (v)\n"
              u"Back< Back (v)\n");
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(FindTreeNode(form, u"LINE"))].kind, TreeNodeKind::Group);
    const std::ptrdiff_t host = FindTreeNode(form, u"host");
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(host)].element, s.FindElement(u"Host"));
    EXPECT_EQ(FindTreeNode(form, u"Nope"), -1);

    // Built again: the index starts afresh.
    EXPECT_EQ(BuildTreeIndex(form, s).size(), plan.size());
}

TEST(TreeIndex, EmptyRequestAndUnlistedPrefixes) {
    TConfigSession empty;
    TFormDef form;
    EXPECT_EQ(BuildTreeIndex(form, empty).size(), 1u);  // only the root

    // "a.b" listed without "a": the prefix still gets a node.
    TConfigSession s;
    AddGroup(s, u"a.b");
    Add(s, u"E1", u"a.b");
    EXPECT_EQ(Plan(form, BuildTreeIndex(form, s)), u"<^ General\na< a -\na.b<a b -\nE1<a.b E1 (v)\n");
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(FindTreeNode(form, u"a"))].group, nullptr);

    // A deep name is walked without recursion.
    std::u16string deep = u"x";
    for (int i = 0; i < 10000; ++i) deep += u".x";
    AddGroup(s, deep.c_str());
    Add(s, u"E2", deep.c_str());
    const std::vector<TreeInsertion> plan = BuildTreeIndex(form, s);
    ASSERT_EQ(plan.size(), 4u + 10001u + 1u);
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(plan.back().parent)].key, deep);
}

}  // namespace
}  // namespace qrl
