// Internal operations of the node tree, shared by the node, writer, clone and reader sources.
// Not part of the public interface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "xml/arena.h"
#include "xml/node.h"

namespace AdvXMLParser::detail {

// Bits of Node::flags_.
enum : std::uint16_t {
    kInArena = 1u << 0,      // storage belongs to a document's arena: destroy, never delete
    kArenaTree = 1u << 1,    // part of a parsed document; a change marks the document dirty
    kOwnsName = 1u << 2,     // name_ is a heap NameRec of this node
    kOwnsText = 1u << 3,     // text_ is a heap array of TextCapacity(length) of this node
    kSharedEmpty = 1u << 4,  // one of the shared empty nodes: never changes
    kPreserve = 1u << 5,     // Element: xml:space="preserve"
    kChildrenHeap = 1u << 6, // children_ is a heap array of ListCapacity(count)
    kInlineValue = 1u << 7,  // Attribute: value is inlineText_/aux_ rather than a Text child
    kAttrsArray = 1u << 8,   // Element: attrArray_ holds the attributes themselves (arena)
    kAttrsHeap = 1u << 9,    // Element: attrList_ is a heap array of ListCapacity(count)
    kStandalone = 1u << 10,  // Document
    kDirty = 1u << 11,       // Document with an arena: some node now holds heap storage
    kInlineRefs = 1u << 12,  // Attribute: the inline value is source text with references in it
    kInlineNarrow = 1u << 13,  // Attribute: the inline value is stored one byte a character
    kInlineEmbedded = 1u << 14,  // Attribute: a narrow inline value of up to 8 bytes, in place of its pointer
    kInlineForm = kInlineValue | kInlineRefs | kInlineNarrow | kInlineEmbedded,
};

// Growable arrays keep no capacity field: it follows from the size.
inline std::size_t ListCapacity(std::size_t count) {
    std::size_t cap = 4;
    while (cap < count) cap *= 2;
    return cap;
}
inline std::size_t TextCapacity(std::size_t length) {
    std::size_t cap = 8;
    while (cap < length) cap *= 2;
    return cap;
}

inline bool IsSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }

// The five predefined entities.
struct Entity {
    std::u16string_view name;
    char16_t character;
};
inline constexpr Entity kEntities[] = {
    {u"lt", u'<'}, {u"gt", u'>'}, {u"amp", u'&'}, {u"apos", u'\''}, {u"quot", u'"'}};
const Entity* FindEntity(std::u16string_view name);
const Entity* FindEntity(char16_t character);

struct Impl {
    using Kind = Node::Kind;

    static Kind KindOf(const Node& n) { return n.kind_; }
    static void SetOwner(Node& n, Node* owner) { n.owner_ = owner; }
    static bool IsContainer(const Node& n) {
        return n.kind_ == Kind::Element || n.kind_ == Kind::Attribute || n.kind_ == Kind::Document;
    }
    static std::uint16_t Flags(const Node& n) { return n.flags_; }
    static std::u16string_view Name(const Node& n);
    static std::u16string_view TextOf(const TextualNode& n) { return {n.text_, n.aux_}; }
    static std::u16string_view TextOf(const Pi& n) { return {n.text_, n.aux_}; }
    // The inline value as 16-bit text; a narrow one is widened into buffer.
    static std::u16string_view InlineValue(const Attribute& a, std::u16string& buffer) {
        if (!(a.flags_ & kInlineNarrow)) return {a.inlineText_, a.aux_};
        const unsigned char* bytes = InlineBytes(a);
        buffer.assign(bytes, bytes + a.aux_);
        return buffer;
    }
    static const unsigned char* InlineBytes(const Attribute& a) {  // of a narrow value
        return (a.flags_ & kInlineEmbedded) ? reinterpret_cast<const unsigned char*>(&a.inlineBytes_) : a.inlineBytes_;
    }
    static std::u16string_view AttrName(const Attribute& a) { return a.name_->View(); }

    // An inline value stands for the children the reader would otherwise have made: runs of text
    // and references. A value with references keeps them as written (the reader has checked them)
    // and is cut into those pieces only when a caller needs them.
    struct InlinePiece {
        Kind kind;  // Text, CharRef or EntityRef
        std::u16string_view text;  // of a Text piece
        char16_t character;  // of a reference
    };
    static InlinePiece NextInlinePiece(std::u16string_view& rest);  // rest is not empty
    template <class F>
    static void ForEachInlinePiece(const Attribute& a, F&& f) {
        std::u16string buffer;
        std::u16string_view rest = InlineValue(a, buffer);
        if (!(a.flags_ & kInlineRefs)) {
            if (!rest.empty()) f(InlinePiece{Kind::Text, rest, 0});
            return;
        }
        while (!rest.empty()) f(NextInlinePiece(rest));
    }
    static std::size_t InlineChildCount(const Attribute& a);
    static void AppendInlineText(const Attribute& a, std::u16string& out);  // the joined texts of the pieces
    // On the heap; a Text piece owns a copy of its text, or with shareText points into the piece.
    static std::unique_ptr<Node> NewPieceNode(const InlinePiece& piece, std::uint16_t flags, bool shareText);
    static const std::u16string& Version(const Document& d) { return d.version_; }
    static const std::u16string& Encoding(const Document& d) { return d.encoding_; }

    // Children by index without the shared-empty substitute; an inline attribute value has no
    // child node until Materialise.
    static std::size_t ChildCount(const NodeContainer& c) { return c.aux_; }
    static Node* ChildAt(const NodeContainer& c, std::size_t i) { return c.children_[i]; }
    static std::size_t AttrCount(const Element& e) { return e.attrCount_; }
    static const Attribute& AttrAt(const Element& e, std::size_t i) {
        return (e.flags_ & kAttrsArray) ? e.attrArray_[i] : *e.attrList_[i];
    }
    static Attribute& AttrAt(Element& e, std::size_t i) {
        return (e.flags_ & kAttrsArray) ? e.attrArray_[i] : *e.attrList_[i];
    }

    // Changes.
    static void MarkDirty(Node& n);
    static void Materialise(const Attribute& a);
    static void PushChild(NodeContainer& c, std::unique_ptr<Node> node);
    static void PushAttribute(Element& e, std::unique_ptr<Attribute> attribute);
    static void AppendText(TextualNode& t, std::u16string_view more);
    static void SetHeapText(TextualNode& t, std::u16string_view text);
    static void SetHeapText(Pi& p, std::u16string_view text);

    // Destruction without recursion: a node's children and attributes move onto a work list that
    // is threaded through owner_, and each node is destroyed only once it has no children left.
    static void DetachChildren(NodeContainer& c, Node*& list);
    static void DetachContents(Node& n, Node*& list);
    static void DestroyList(Node* list);
    static void DestroyContents(Node& n);

    // Whole-tree operations, each with an explicit stack (writer.cpp, clone.cpp, text.cpp).
    static void WriteTree(const Node& top, WriterState& state);
    static std::size_t WrittenSizeHint(const Node& top);
    static void WriteLeaf(const Node& n, WriterState& state);
    static void WriteReference(Kind kind, char16_t c, WriterState& state);
    static std::unique_ptr<Node> CloneTree(const Node& top, NodeContainer* newOwner);
    static std::unique_ptr<Node> CloneShallow(const Node& n);
    static std::u16string ContainerText(const NodeContainer& top);

    // The shared empty nodes (element.cpp).
    static Element& SharedElement();
    static Attribute& SharedAttribute();
    static Comment& SharedComment();
    static Pi& SharedPi();
    static CData& SharedCData();

    // Construction of parsed nodes in a document's arena (reader).
    static std::unique_ptr<Document> NewParsedDocument(std::size_t chunkBytes);
    static Arena& ArenaOf(Document& d) { return *d.arena_; }
    static void SetDeclaration(Document& d, std::u16string_view version, std::u16string_view encoding,
                               bool standalone);
    static void SetRoot(Document& d, Element* root) { d.root_ = root; }
    static Element* NewElement(Arena& a, const NameRec* name, Node* owner);
    static Attribute* NewAttributeAt(void* where, const NameRec* name, Node* owner);
    // text is a char16_t array, or with kInlineNarrow among flags a byte array; an embedded one
    // fills the pointer's bytes, zeros after the value (copied whole: a fixed size needs no call).
    static void SetInlineValue(Attribute& at, const void* text, std::uint32_t length, std::uint16_t flags) {
        at.flags_ |= kInlineValue | flags;
        if (flags & kInlineEmbedded) {
            std::memcpy(&at.inlineBytes_, text, sizeof at.inlineBytes_);
        } else {
            at.inlineText_ = static_cast<const char16_t*>(text);
        }
        at.aux_ = length;
    }
    static void SetChildren(NodeContainer& c, Node** children, std::size_t count);
    static void SetAttributes(Element& e, Attribute* attributes, std::size_t count);
    static void SetPreserve(Element& e, bool preserve);
    static const NameRec* ElementName(const Element& e) { return e.name_; }
    static TextualNode* NewTextual(Arena& a, Kind kind, const char16_t* text, std::uint32_t length, Node* owner);
    static Pi* NewPi(Arena& a, const NameRec* target, const char16_t* text, std::uint32_t length, Node* owner);
    static Reference* NewReference(Arena& a, bool entity, char16_t c, Node* owner);
};

// Collapses every run of white space to one blank and trims the ends.
std::u16string CollapseSpace(std::u16string_view text);

}  // namespace AdvXMLParser::detail
