// Node and NodeContainer: names, ownership of children, and destruction without recursion.
#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

const char* Exception::what() const noexcept { return "XML exception"; }
const char* InvalidRefException::what() const noexcept { return "invalid entity reference"; }

namespace detail {

const Entity* FindEntity(std::u16string_view name) {
    for (const Entity& e : kEntities)
        if (e.name == name) return &e;
    return nullptr;
}

const Entity* FindEntity(char16_t character) {
    for (const Entity& e : kEntities)
        if (e.character == character) return &e;
    return nullptr;
}

std::u16string_view Impl::Name(const Node& n) {
    switch (n.kind_) {
    case Kind::Element: return static_cast<const Element&>(n).name_->View();
    case Kind::Attribute: return static_cast<const Attribute&>(n).name_->View();
    case Kind::Pi: return static_cast<const Pi&>(n).name_->View();
    case Kind::Text: return u"#text";
    case Kind::CData: return u"#cdata-section";
    case Kind::Comment: return u"#comment";
    case Kind::Document: return u"#document";
    case Kind::EntityRef: {
        const Entity* e = FindEntity(static_cast<char16_t>(n.aux_));
        return e ? e->name : std::u16string_view{};
    }
    case Kind::CharRef: break;
    }
    return {};
}

// A parsed document frees its arena without visiting the nodes, unless some node has since been
// given heap storage; every change to a node of such a tree reports itself here.
void Impl::MarkDirty(Node& n) {
    if (!(n.flags_ & kArenaTree)) return;
    for (Node* p = &n; p; p = p->owner_) {
        if (p->kind_ == Kind::Document) {
            p->flags_ |= kDirty;
            return;
        }
    }
}

void Impl::PushChild(NodeContainer& c, std::unique_ptr<Node> node) {
    const std::size_t count = c.aux_;
    if (!(c.flags_ & kChildrenHeap)) {
        // No array yet, or an exact-size one from the arena: move to a growable heap array.
        Node** list = static_cast<Node**>(::operator new(ListCapacity(count + 1) * sizeof(Node*)));
        if (count) std::memcpy(list, c.children_, count * sizeof(Node*));
        c.children_ = list;
        c.flags_ |= kChildrenHeap;
    } else if (count == ListCapacity(count)) {
        Node** list = static_cast<Node**>(::operator new(ListCapacity(count + 1) * sizeof(Node*)));
        std::memcpy(list, c.children_, count * sizeof(Node*));
        ::operator delete(c.children_);
        c.children_ = list;
    }
    node->owner_ = &c;
    c.children_[count] = node.release();
    c.aux_ = static_cast<std::uint32_t>(count + 1);
}

void Impl::PushAttribute(Element& e, std::unique_ptr<Attribute> attribute) {
    const std::size_t count = e.attrCount_;
    if (!(e.flags_ & kAttrsHeap)) {
        Attribute** list = static_cast<Attribute**>(::operator new(ListCapacity(count + 1) * sizeof(Attribute*)));
        for (std::size_t i = 0; i < count; ++i) list[i] = &AttrAt(e, i);
        e.attrList_ = list;
        e.flags_ = static_cast<std::uint16_t>((e.flags_ & ~kAttrsArray) | kAttrsHeap);
    } else if (count == ListCapacity(count)) {
        Attribute** list = static_cast<Attribute**>(::operator new(ListCapacity(count + 1) * sizeof(Attribute*)));
        std::memcpy(list, e.attrList_, count * sizeof(Attribute*));
        ::operator delete(e.attrList_);
        e.attrList_ = list;
    }
    attribute->owner_ = &e;
    e.attrList_[count] = attribute.release();
    e.attrCount_ = static_cast<std::uint32_t>(count + 1);
}

Impl::InlinePiece Impl::NextInlinePiece(std::u16string_view& rest) {
    if (rest[0] != u'&') {
        const std::size_t n = std::min(rest.find(u'&'), rest.size());
        const InlinePiece piece{Kind::Text, rest.substr(0, n), 0};
        rest.remove_prefix(n);
        return piece;
    }
    // The reader has checked the reference: a known entity name, or digits and a ';'.
    const std::size_t semicolon = rest.find(u';');
    const std::u16string_view body = rest.substr(1, semicolon - 1);
    rest.remove_prefix(semicolon + 1);
    if (body[0] != u'#') return {Kind::EntityRef, {}, FindEntity(body)->character};
    std::uint32_t value = 0;  // wraps as the reader's does; only the low 16 bits count
    if (body[1] == u'x') {
        for (const char16_t c : body.substr(2))
            value = value * 16 + static_cast<std::uint32_t>(c <= u'9' ? c - u'0' : (c | 0x20) - u'a' + 10);
    } else {
        for (const char16_t c : body.substr(1)) value = value * 10 + static_cast<std::uint32_t>(c - u'0');
    }
    return {Kind::CharRef, {}, static_cast<char16_t>(value & 0xFFFF)};
}

std::size_t Impl::InlineChildCount(const Attribute& a) {
    std::size_t count = 0;
    ForEachInlinePiece(a, [&count](const InlinePiece&) { ++count; });
    return count;
}

void Impl::AppendInlineText(const Attribute& a, std::u16string& out) {
    ForEachInlinePiece(a, [&out](const InlinePiece& p) {
        if (p.kind == Kind::Text)
            out.append(p.text);
        else
            out.push_back(p.character);
    });
}

std::unique_ptr<Node> Impl::NewPieceNode(const InlinePiece& piece, std::uint16_t flags, bool shareText) {
    if (piece.kind == Kind::CharRef) return std::unique_ptr<Node>(new CharRef(piece.character, flags));
    if (piece.kind == Kind::EntityRef) return std::unique_ptr<Node>(new EntityRef(piece.character, flags));
    if (!shareText) {
        auto t = std::make_unique<Text>(piece.text);
        t->flags_ |= flags;
        return t;
    }
    std::unique_ptr<Text> t(new Text(ArenaTag{}, flags));
    t->text_ = piece.text.data();
    t->aux_ = static_cast<std::uint32_t>(piece.text.size());
    return t;
}

// Gives a parsed attribute the children that its inline value stands for. Their text stays in the
// arena: the children can never leave this document.
void Impl::Materialise(const Attribute& constAttr) {
    if (!(constAttr.flags_ & kInlineValue)) return;
    Attribute& a = const_cast<Attribute&>(constAttr);
    std::vector<std::unique_ptr<Node>> children;
    // 16-bit text stays in the arena; a narrow value has to be widened into each child's own copy.
    const bool shareText = !(a.flags_ & kInlineNarrow);
    ForEachInlinePiece(a, [&](const InlinePiece& p) { children.push_back(NewPieceNode(p, kArenaTree, shareText)); });
    const char16_t* text = a.inlineText_;
    const std::uint32_t length = a.aux_;
    const std::uint16_t inlineFlags = a.flags_ & kInlineForm;
    a.flags_ &= static_cast<std::uint16_t>(~inlineFlags);
    a.children_ = nullptr;
    a.aux_ = 0;
    MarkDirty(a);
    try {
        for (std::unique_ptr<Node>& child : children) PushChild(a, std::move(child));
    } catch (...) {
        Node* list = nullptr;  // out of memory: leave the value as it was
        DetachChildren(a, list);
        DestroyList(list);
        a.inlineText_ = text;
        a.aux_ = length;
        a.flags_ |= inlineFlags;
        throw;
    }
}

void Impl::DetachChildren(NodeContainer& c, Node*& list) {
    if (c.flags_ & kInlineValue) {
        c.flags_ &= static_cast<std::uint16_t>(~kInlineForm);
    } else {
        for (std::size_t i = 0; i < c.aux_; ++i) {
            c.children_[i]->owner_ = list;
            list = c.children_[i];
        }
        if (c.flags_ & kChildrenHeap) ::operator delete(c.children_);
    }
    c.children_ = nullptr;
    c.aux_ = 0;
    c.flags_ &= static_cast<std::uint16_t>(~kChildrenHeap);
}

void Impl::DetachContents(Node& n, Node*& list) {
    if (n.kind_ == Kind::Element) {
        Element& e = static_cast<Element&>(n);
        for (std::size_t i = 0; i < e.attrCount_; ++i) {
            Attribute& a = AttrAt(e, i);
            a.owner_ = list;
            list = &a;
        }
        if (e.flags_ & kAttrsHeap) ::operator delete(e.attrList_);
        e.attrList_ = nullptr;
        e.attrCount_ = 0;
        e.flags_ &= static_cast<std::uint16_t>(~(kAttrsHeap | kAttrsArray));
    }
    if (IsContainer(n)) DetachChildren(static_cast<NodeContainer&>(n), list);
}

void Impl::DestroyList(Node* list) {
    while (list) {
        Node* n = list;
        list = n->owner_;
        // A nested parsed document frees its own arena; its nodes must go before it does.
        if (!(n->kind_ == Kind::Document && static_cast<Document*>(n)->arena_)) DetachContents(*n, list);
        if (n->flags_ & kInArena)
            n->~Node();
        else
            delete n;
    }
}

void Impl::DestroyContents(Node& n) {
    Node* list = nullptr;
    DetachContents(n, list);
    DestroyList(list);
}

}  // namespace detail

Node::~Node() = default;

std::u16string Node::GetValue() const { return {}; }
std::u16string Node::GetText() const { return {}; }

bool Node::IsOfType(int typeNumber) const {
    static constexpr int kNumbers[] = {kElement, kAttribute, kText, kCData, kReference, kReference,
                                       kPi,      kComment,   kDocument};
    return kNumbers[static_cast<int>(kind_)] == typeNumber;
}

std::u16string_view Node::GetName() const { return Impl::Name(*this); }

NodeContainer* Node::GetOwner() const {
    // Only containers ever own; see owner_.
    return static_cast<NodeContainer*>(owner_);
}

const Element* Node::AsElement() const {
    return kind_ == Kind::Element ? static_cast<const Element*>(this) : nullptr;
}
Element* Node::AsElement() { return kind_ == Kind::Element ? static_cast<Element*>(this) : nullptr; }

// An Element or Document has already released its contents in its own destructor; what is left
// here is the children of an Attribute.
NodeContainer::~NodeContainer() {
    Node* list = nullptr;
    Impl::DetachChildren(*this, list);
    Impl::DestroyList(list);
}

std::size_t NodeContainer::GetChildCount() const {
    if (flags_ & kInlineValue) return Impl::InlineChildCount(static_cast<const Attribute&>(*this));
    return aux_;
}

const Node& NodeContainer::GetChild(std::size_t i) const {
    if (i >= GetChildCount()) return EmptyElement();
    if (flags_ & kInlineValue) Impl::Materialise(static_cast<const Attribute&>(*this));
    return *children_[i];
}

Node& NodeContainer::GetChild(std::size_t i) {
    if (i >= GetChildCount()) return EmptyElement();
    if (flags_ & kInlineValue) Impl::Materialise(static_cast<const Attribute&>(*this));
    return *children_[i];
}

void NodeContainer::Add(std::unique_ptr<Node> node) {
    if (!node || (flags_ & kSharedEmpty)) return;  // the shared empty nodes never change
    if (flags_ & kInlineValue) Impl::Materialise(static_cast<const Attribute&>(*this));
    Impl::MarkDirty(*this);
    Node* added = node.get();
    Impl::PushChild(*this, std::move(node));
    if (kind_ == Kind::Document) {
        Document& d = static_cast<Document&>(*this);
        if (!d.Root() && added->AsElement()) Impl::SetRoot(d, added->AsElement());
    }
}

void NodeContainer::AddText(std::u16string_view text) {
    if (flags_ & kSharedEmpty) return;
    if (flags_ & kInlineValue) Impl::Materialise(static_cast<const Attribute&>(*this));
    Impl::MarkDirty(*this);
    if (aux_ > 0) {
        Node* last = children_[aux_ - 1];
        if (Impl::KindOf(*last) == Kind::Text) {
            Impl::AppendText(static_cast<TextualNode&>(*last), text);
            return;
        }
    }
    Impl::PushChild(*this, std::make_unique<Text>(text));
}

void NodeContainer::Clear() {
    if (flags_ & kSharedEmpty) return;
    Impl::MarkDirty(*this);
    Node* list = nullptr;
    Impl::DetachChildren(*this, list);  // an element keeps its attributes
    if (kind_ == Kind::Document) Impl::SetRoot(static_cast<Document&>(*this), nullptr);
    Impl::DestroyList(list);
}

}  // namespace AdvXMLParser
