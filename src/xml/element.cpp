// Element, Attribute and Document: construction, attributes, the shared empty nodes, and the
// constructors the reader uses for nodes in a document's arena.
#include <cstring>
#include <new>

#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

// ---- Attribute

Attribute::Attribute(std::u16string_view name)
    : NodeContainer(Kind::Attribute, kOwnsName), name_(NewHeapName(name)) {}

Attribute::Attribute(const NameRec* name, std::uint16_t flags) : NodeContainer(Kind::Attribute, flags), name_(name) {}

Attribute::~Attribute() {
    if (flags_ & kOwnsName) FreeHeapName(name_);
}

void Attribute::SetText(std::u16string_view text) {
    if (flags_ & kSharedEmpty) return;
    Clear();
    AddText(text);
}

// ---- Element

Element::Element(std::u16string_view name) : NodeContainer(Kind::Element, kOwnsName), name_(NewHeapName(name)) {}

Element::Element(const NameRec* name, std::uint16_t flags) : NodeContainer(Kind::Element, flags), name_(name) {}

Element::~Element() {
    Impl::DestroyContents(*this);
    if (flags_ & kOwnsName) FreeHeapName(name_);
}

const Attribute& Element::GetAttribute(std::u16string_view name) const {
    for (std::size_t i = 0; i < attrCount_; ++i) {
        const Attribute& a = Impl::AttrAt(*this, i);
        if (Impl::AttrName(a) == name) return a;
    }
    return EmptyAttribute();
}

std::size_t Element::GetAttributeCount() const { return attrCount_; }

const Attribute& Element::GetAttributeAt(std::size_t i) const {
    return i < attrCount_ ? Impl::AttrAt(*this, i) : EmptyAttribute();
}

Element& Element::AddElement(std::u16string_view name) {
    if (flags_ & kSharedEmpty) return EmptyElement();
    Impl::MarkDirty(*this);
    auto child = std::make_unique<Element>(name);
    Element& added = *child;
    Impl::PushChild(*this, std::move(child));
    return added;
}

Attribute& Element::SetAttribute(std::u16string_view name) {
    if (flags_ & kSharedEmpty) return EmptyAttribute();
    for (std::size_t i = 0; i < attrCount_; ++i) {
        Attribute& a = Impl::AttrAt(*this, i);
        if (a.GetName() == name) return a;
    }
    Impl::MarkDirty(*this);
    auto attribute = std::make_unique<Attribute>(name);
    Attribute& added = *attribute;
    Impl::PushAttribute(*this, std::move(attribute));
    return added;
}

bool Element::IsPreserve() const { return (flags_ & kPreserve) != 0; }
bool Element::IsSharedEmpty() const { return (flags_ & kSharedEmpty) != 0; }

// ---- Document

Document::Document() : NodeContainer(Kind::Document, kStandalone), version_(u"1.0"), encoding_(u"UTF-8") {}

Document::Document(std::u16string_view rootName) : Document() {
    auto root = std::make_unique<Element>(rootName);
    root_ = root.get();
    Impl::PushChild(*this, std::move(root));
}

Document::~Document() {
    if (arena_ && !(flags_ & kDirty)) {
        // Every node and string is in the arena and holds nothing else: dropping the arena is all.
        children_ = nullptr;
        aux_ = 0;
    } else {
        Impl::DestroyContents(*this);
    }
}

Element* Document::Root() { return root_; }
const Element* Document::Root() const { return root_; }
std::u16string_view Document::GetVersion() const { return version_; }
std::u16string_view Document::GetEncoding() const { return encoding_; }
bool Document::IsStandalone() const { return (flags_ & kStandalone) != 0; }

// ---- The shared empty nodes. Built at load, never destroyed: their storage is static, so they
// outlive every document and every static object that might still read through them.

namespace detail {

template <class T>
struct SharedStorage {
    alignas(T) unsigned char bytes[sizeof(T)];
};

Element& Impl::SharedElement() {
    static SharedStorage<Element> storage;
    static Element* node = new (storage.bytes) Element(EmptyName(), kSharedEmpty);
    return *node;
}
Attribute& Impl::SharedAttribute() {
    static SharedStorage<Attribute> storage;
    static Attribute* node = new (storage.bytes) Attribute(EmptyName(), kSharedEmpty);
    return *node;
}
Comment& Impl::SharedComment() {
    static SharedStorage<Comment> storage;
    static Comment* node = new (storage.bytes) Comment(ArenaTag{}, kSharedEmpty);
    return *node;
}
Pi& Impl::SharedPi() {
    static SharedStorage<Pi> storage;
    static Pi* node = new (storage.bytes) Pi(EmptyName(), kSharedEmpty);
    return *node;
}
CData& Impl::SharedCData() {
    static SharedStorage<CData> storage;
    static CData* node = new (storage.bytes) CData(ArenaTag{}, kSharedEmpty);
    return *node;
}

}  // namespace detail

Element& EmptyElement() { return Impl::SharedElement(); }
Attribute& EmptyAttribute() { return Impl::SharedAttribute(); }
Comment& EmptyComment() { return Impl::SharedComment(); }
Pi& EmptyPi() { return Impl::SharedPi(); }
CData& EmptyCData() { return Impl::SharedCData(); }

namespace {
[[maybe_unused]] const bool kSharedBuiltAtLoad =
    (EmptyElement(), EmptyAttribute(), EmptyComment(), EmptyPi(), EmptyCData(), true);
}

// ---- Parsed nodes

namespace detail {

std::unique_ptr<Document> Impl::NewParsedDocument(std::size_t chunkBytes) {
    std::unique_ptr<Document> d(new Document());
    d->flags_ |= kArenaTree;
    d->arena_ = std::make_unique<Arena>(chunkBytes);
    return d;
}

void Impl::SetDeclaration(Document& d, std::u16string_view version, std::u16string_view encoding, bool standalone) {
    d.version_.assign(version);
    d.encoding_.assign(encoding);
    if (standalone)
        d.flags_ |= kStandalone;
    else
        d.flags_ &= static_cast<std::uint16_t>(~kStandalone);
}

Element* Impl::NewElement(Arena& a, const NameRec* name, Node* owner) {
    Element* e = new (a.AllocNode(sizeof(Element))) Element(name, kInArena | kArenaTree);
    e->owner_ = owner;
    return e;
}

Attribute* Impl::NewAttributeAt(void* where, const NameRec* name, Node* owner) {
    Attribute* at = new (where) Attribute(name, kInArena | kArenaTree);
    at->owner_ = owner;
    return at;
}


void Impl::SetChildren(NodeContainer& c, Node** children, std::size_t count) {
    c.children_ = children;
    c.aux_ = static_cast<std::uint32_t>(count);
}

void Impl::SetAttributes(Element& e, Attribute* attributes, std::size_t count) {
    e.attrArray_ = attributes;
    e.attrCount_ = static_cast<std::uint32_t>(count);
    e.flags_ |= kAttrsArray;
}

void Impl::SetPreserve(Element& e, bool preserve) {
    if (preserve)
        e.flags_ |= kPreserve;
    else
        e.flags_ &= static_cast<std::uint16_t>(~kPreserve);
}

TextualNode* Impl::NewTextual(Arena& a, Kind kind, const char16_t* text, std::uint32_t length, Node* owner) {
    constexpr std::uint16_t flags = kInArena | kArenaTree;
    TextualNode* n;
    if (kind == Kind::Text)
        n = new (a.AllocNode(sizeof(Text))) Text(ArenaTag{}, flags);
    else if (kind == Kind::CData)
        n = new (a.AllocNode(sizeof(CData))) CData(ArenaTag{}, flags);
    else
        n = new (a.AllocNode(sizeof(Comment))) Comment(ArenaTag{}, flags);
    n->text_ = text;
    n->aux_ = length;
    n->owner_ = owner;
    return n;
}

Pi* Impl::NewPi(Arena& a, const NameRec* target, const char16_t* text, std::uint32_t length, Node* owner) {
    Pi* p = new (a.AllocNode(sizeof(Pi))) Pi(target, kInArena | kArenaTree);
    p->text_ = text;
    p->aux_ = length;
    p->owner_ = owner;
    return p;
}

Reference* Impl::NewReference(Arena& a, bool entity, char16_t c, Node* owner) {
    constexpr std::uint16_t flags = kInArena | kArenaTree;
    Reference* r;
    if (entity)
        r = new (a.AllocNode(sizeof(EntityRef))) EntityRef(c, flags);
    else
        r = new (a.AllocNode(sizeof(CharRef))) CharRef(c, flags);
    r->owner_ = owner;
    return r;
}

}  // namespace detail

}  // namespace AdvXMLParser
