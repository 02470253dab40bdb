// Deep copies. The copy is always built on the heap, also from a parsed document, so that it can
// outlive the document and be added to another tree.
#include <vector>

#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

namespace detail {

std::unique_ptr<Node> Impl::CloneShallow(const Node& n) {
    switch (n.kind_) {
    case Kind::Element: {
        auto e = std::make_unique<Element>(Name(n));
        SetPreserve(*e, (n.flags_ & kPreserve) != 0);
        return e;
    }
    case Kind::Attribute: return std::make_unique<Attribute>(Name(n));
    case Kind::Document: {
        const Document& d = static_cast<const Document&>(n);
        auto copy = std::make_unique<Document>();
        SetDeclaration(*copy, d.version_, d.encoding_, (d.flags_ & kStandalone) != 0);
        return copy;
    }
    case Kind::Text: return std::make_unique<Text>(TextOf(static_cast<const TextualNode&>(n)));
    case Kind::CData: return std::make_unique<CData>(TextOf(static_cast<const TextualNode&>(n)));
    case Kind::Comment: return std::make_unique<Comment>(TextOf(static_cast<const TextualNode&>(n)));
    case Kind::Pi: return std::make_unique<Pi>(Name(n), TextOf(static_cast<const Pi&>(n)));
    case Kind::CharRef: return std::make_unique<CharRef>(static_cast<const Reference&>(n).GetChar());
    case Kind::EntityRef:
        return std::unique_ptr<Node>(new EntityRef(static_cast<const Reference&>(n).GetChar(), 0));
    }
    return nullptr;
}

std::unique_ptr<Node> Impl::CloneTree(const Node& top, NodeContainer* newOwner) {
    std::unique_ptr<Node> copy = CloneShallow(top);
    copy->owner_ = newOwner;
    if (!IsContainer(top)) return copy;

    struct Frame {
        const NodeContainer* source;
        NodeContainer* target;
        std::size_t next;
        bool attributes;  // an element's attributes come before its children
    };
    std::vector<Frame> stack;
    auto visit = [&stack](const Node& source, Node& target) {
        if (source.flags_ & kInlineValue) {
            const Attribute& a = static_cast<const Attribute&>(source);
            ForEachInlinePiece(a, [&target](const InlinePiece& p) {
                PushChild(static_cast<Attribute&>(target), NewPieceNode(p, 0, false));
            });
        } else if (IsContainer(source)) {
            stack.push_back({static_cast<const NodeContainer*>(&source), static_cast<NodeContainer*>(&target), 0,
                             source.kind_ == Kind::Element});
        }
    };
    visit(top, *copy);
    while (!stack.empty()) {
        Frame& f = stack.back();
        if (f.attributes) {
            const Element& source = static_cast<const Element&>(*f.source);
            if (f.next < source.attrCount_) {
                const Attribute& a = AttrAt(source, f.next++);
                auto attribute = std::make_unique<Attribute>(Name(a));
                Attribute& target = *attribute;
                PushAttribute(static_cast<Element&>(*f.target), std::move(attribute));
                visit(a, target);
                continue;
            }
            f.attributes = false;
            f.next = 0;
            continue;
        }
        if (f.next < f.source->aux_) {
            const Node& child = *f.source->children_[f.next++];
            NodeContainer& parent = *f.target;
            const bool isRoot = f.source->kind_ == Kind::Document &&
                                static_cast<const Document*>(f.source)->root_ == &child;
            std::unique_ptr<Node> childCopy = CloneShallow(child);
            Node& target = *childCopy;
            PushChild(parent, std::move(childCopy));
            if (isRoot) static_cast<Document&>(parent).root_ = static_cast<Element*>(&target);
            visit(child, target);  // may grow the stack: f is not used again this round
            continue;
        }
        stack.pop_back();
    }
    return copy;
}

}  // namespace detail

std::unique_ptr<Node> Element::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> Attribute::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> Document::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> Text::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> CData::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> Comment::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> Pi::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> CharRef::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }
std::unique_ptr<Node> EntityRef::Clone(NodeContainer* newOwner) const { return Impl::CloneTree(*this, newOwner); }

}  // namespace AdvXMLParser
