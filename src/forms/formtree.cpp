#include "forms/formtree.h"

#include "forms/formvalues.h"
#include "locale/language.h"
#include "request/nameindex.h"
#include "request/session.h"
#include "text/textutil.h"

#include <deque>

namespace qrl {

std::u16string TreeRootText(const TConfigSession& session, TreeNodeKind& kind) {
    kind = TreeNodeKind::Root;
    std::u16string text;
    if (session.moduleType == u"Emul") {
        text = sharedText(SharedText::NoCurrentEmulation);
    } else if (session.moduleType == u"Comms") {
        text = sharedText(SharedText::NoCurrentComms);
    } else if (session.moduleType == u"FXfer") {
        text = sharedText(SharedText::NoCurrentFileXfer);
    } else {
        text = sharedText(SharedText::General);
        kind = TreeNodeKind::UnknownRoot;
    }
    if (!session.moduleLists.empty()) {
        const TModuleList& list = session.moduleLists.front();
        for (const TModuleEntry& entry : list.modules) {
            if (iequals(entry.name, list.current)) {
                text = entry.description;
                break;
            }
        }
    }
    return text;
}

namespace {

class TreeBuilder {
public:
    TreeBuilder(TFormDef& form, TConfigSession& session) : form_(form), session_(session) {}

    std::vector<TreeInsertion> Build() {
        form_.treeIndex.clear();
        form_.currentNode = nullptr;
        // One node per element at most, besides the root and the groups: no regrowing on the way.
        insertions_.reserve(session_.elements.size() + 1);
        keys_.Reserve(session_.elements.size() + 1);
        TreeNodeKind rootKind = TreeNodeKind::Root;
        std::u16string rootText = TreeRootText(session_, rootKind);
        Append(u"", TreeNodeKind::Root);  // the root's key is empty; its kind is known after the text
        form_.treeIndex.back().kind = rootKind;
        insertions_.push_back(TreeInsertion{0, -1, std::move(rootText), false, false});

        std::u16string lastGroup;
        std::size_t parent = 0;
        for (TElementDef& element : session_.elements) {
            if (element.hidden) continue;
            if (element.group != lastGroup) {  // case counting
                if (element.group.empty()) {
                    parent = 0;
                    lastGroup.clear();
                } else if (const TGroupDef* group = FindGroup(session_, element.group); group && !group->hidden) {
                    parent = GroupNode(element.group);
                    lastGroup = element.group;
                }
                // A hidden or unlisted group: the element goes where the one before it went.
            }
            const std::size_t node = Append(element.name, TreeNodeKind::Element);
            form_.treeIndex[node].element = &element;
            insertions_.push_back(TreeInsertion{node, static_cast<std::ptrdiff_t>(parent), ElementTreeText(element)});
        }
        return std::move(insertions_);
    }

private:
    std::size_t Append(std::u16string_view key, TreeNodeKind kind) {
        TTreeNode& node = form_.treeIndex.emplace_back();
        node.key = key;
        node.kind = kind;
        const std::size_t at = form_.treeIndex.size() - 1;
        positions_.push_back(at);
        if (!keys_.Add(key, &positions_.back())) positions_.pop_back();  // first node of a key wins
        return at;
    }

    // The node of a group path, made with its parents as needed. Walks up to the first path that
    // has a node (the empty path is the root), then makes the missing ones downwards; iterative,
    // so that a name of very many dots can't exhaust the stack.
    std::size_t GroupNode(std::u16string_view path) {
        std::vector<std::u16string_view> missing;
        std::size_t node = 0;
        for (std::u16string_view p = path;;) {
            if (const std::size_t* found = keys_.Find(p)) {
                node = *found;
                break;
            }
            missing.push_back(p);
            const std::size_t dot = p.rfind(u'.');
            p = dot == std::u16string_view::npos ? std::u16string_view() : p.substr(0, dot);
        }
        for (auto it = missing.rbegin(); it != missing.rend(); ++it) node = MakeGroupNode(*it, node);
        return node;
    }

    std::size_t MakeGroupNode(std::u16string_view path, std::size_t parentNode) {
        const std::size_t dot = path.rfind(u'.');
        const std::u16string_view leaf = dot == std::u16string_view::npos ? path : path.substr(dot + 1);
        TGroupDef* group = FindGroup(session_, path);
        // A prefix that is not listed as a group of its own still gets a node, keyed by the path.
        const std::u16string name = group ? group->name : std::u16string(path);
        std::u16string text = Translate(session_.helpFile + u"." + name, leaf);
        const std::size_t node = Append(path, TreeNodeKind::Group);
        form_.treeIndex[node].group = group;
        insertions_.push_back(TreeInsertion{node, static_cast<std::ptrdiff_t>(parentNode), std::move(text), true,
                                            group != nullptr && group->expanded});
        return node;
    }

    TFormDef& form_;
    TConfigSession& session_;
    std::vector<TreeInsertion> insertions_;
    TNameIndex<const std::size_t> keys_;
    std::deque<std::size_t> positions_;  // what keys_ points to: stays put as it grows
};

}  // namespace

std::vector<TreeInsertion> BuildTreeIndex(TFormDef& form, TConfigSession& session) {
    return TreeBuilder(form, session).Build();
}

std::ptrdiff_t FindTreeNode(const TFormDef& form, std::u16string_view key) {
    for (std::size_t i = 0; i < form.treeIndex.size(); ++i)
        if (iequals(form.treeIndex[i].key, key)) return static_cast<std::ptrdiff_t>(i);
    return -1;
}

}  // namespace qrl
