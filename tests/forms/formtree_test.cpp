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

// The key of the parent node of the insertion for `key`.
std::u16string ParentKey(const TFormDef& form, const std::vector<TreeInsertion>& plan, std::u16string_view key) {
    for (const TreeInsertion& step : plan)
        if (form.treeIndex[step.node].key == key)
            return step.parent < 0 ? u"<top>" : form.treeIndex[static_cast<std::size_t>(step.parent)].key;
    return u"<missing>";
}

TEST(TreeRoot, TextByModuleType) {
    TConfigSession s;
    TreeNodeKind kind;
    s.moduleType = u"Emul";
    EXPECT_EQ(TreeRootText(s, kind), u"no current emulation");
    EXPECT_EQ(kind, TreeNodeKind::Root);
    s.moduleType = u"Comms";
    EXPECT_EQ(TreeRootText(s, kind), u"no current comms");
    s.moduleType = u"FXfer";
    EXPECT_EQ(TreeRootText(s, kind), u"no current file transfer");
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
    EXPECT_EQ(form.treeIndex[0].key, u"");
    EXPECT_EQ(form.treeIndex[0].kind, TreeNodeKind::Root);
    EXPECT_EQ(plan[0].text, u"no current comms");
    EXPECT_EQ(plan[0].parent, -1);
    EXPECT_EQ(ParentKey(form, plan, u"Host"), u"");
    EXPECT_EQ(ParentKey(form, plan, u"Line"), u"");
    EXPECT_EQ(ParentKey(form, plan, u"Port"), u"Line");
    EXPECT_EQ(ParentKey(form, plan, u"Line.Speed"), u"Line");
    EXPECT_EQ(ParentKey(form, plan, u"Baud"), u"Line.Speed");
    EXPECT_EQ(ParentKey(form, plan, u"Key"), u"Line.Speed");
    EXPECT_EQ(ParentKey(form, plan, u"Odd"), u"Line.Speed");
    EXPECT_EQ(ParentKey(form, plan, u"Gone"), u"<missing>");
    EXPECT_EQ(ParentKey(form, plan, u"Parity"), u"Line");  // the group node is found case ignored
    EXPECT_EQ(ParentKey(form, plan, u"Back"), u"");
    EXPECT_EQ(ParentKey(form, plan, u"Secret"), u"<missing>");

    // Parents come before children, groups carry their state, elements point at their definition.
    for (const TreeInsertion& step : plan) EXPECT_LT(step.parent, static_cast<std::ptrdiff_t>(step.node));
    const std::ptrdiff_t line = FindTreeNode(form, u"LINE");
    ASSERT_GE(line, 0);
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(line)].kind, TreeNodeKind::Group);
    for (const TreeInsertion& step : plan) {
        if (step.node == static_cast<std::size_t>(line)) {
            EXPECT_TRUE(step.isGroup);
            EXPECT_TRUE(step.expanded);
            EXPECT_EQ(step.text, u"Line");
        }
        if (form.treeIndex[step.node].key == u"Line.Speed") {
            EXPECT_EQ(step.text, u"Speed");
        }
        if (form.treeIndex[step.node].key == u"Host") {
            EXPECT_EQ(step.text, u"Host (v)");
        }
    }
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

    // "a.b" listed without "a": the prefix still gets a node, and a deep name is walked without recursion.
    TConfigSession s;
    AddGroup(s, u"a.b");
    std::u16string deep = u"x";
    for (int i = 0; i < 10000; ++i) deep += u".x";
    AddGroup(s, deep.c_str());
    Add(s, u"E1", u"a.b");
    Add(s, u"E2", deep.c_str());
    const std::vector<TreeInsertion> plan = BuildTreeIndex(form, s);
    EXPECT_EQ(ParentKey(form, plan, u"a.b"), u"a");
    EXPECT_EQ(ParentKey(form, plan, u"E1"), u"a.b");
    EXPECT_EQ(form.treeIndex[static_cast<std::size_t>(FindTreeNode(form, u"a"))].group, nullptr);
    EXPECT_EQ(ParentKey(form, plan, u"E2"), deep);
    EXPECT_EQ(plan.size(), 1u + 2u + 1u + 10001u + 1u);
}

}  // namespace
}  // namespace qrl
