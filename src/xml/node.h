// The node tree of every document the module reads or writes, and the writer that turns a tree into
// indented text. Navigation never fails: an absent attribute or child is a shared empty node, so code
// that reads a request needs no null tests.
//
// Trees come in two storage forms that behave the same. A parsed document keeps its nodes and strings
// in one arena that it owns (see arena.h); nodes that callers make (replies) live on the heap one by
// one. Reading, writing, cloning and destroying walk the tree with explicit stacks, so the nesting
// depth of a document is limited by memory only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace AdvXMLParser {

enum NodeTypeNumber : int {
    kElement = 1,
    kAttribute = 2,
    kText = 3,
    kCData = 4,
    kReference = 5,
    kPi = 7,
    kComment = 8,
    kDocument = 9
};

class NodeContainer;
class Element;
class Attribute;
class Document;
class WriterState;

namespace detail {
struct NameRec;
struct ArenaTag {};
class Arena;
struct Impl;  // the tree's internal operations (reader, writer, clone, destruction)
}  // namespace detail

class Exception : public std::exception {
public:
    const char* what() const noexcept override;
};

// An EntityRef built outside the reader with a name other than the five predefined ones.
class InvalidRefException : public Exception {
public:
    const char* what() const noexcept override;
};

class Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node();

    virtual std::u16string GetValue() const;
    virtual std::u16string GetText() const;
    virtual bool IsOfType(int typeNumber) const;
    // A deep copy on the heap whose owner is newOwner; the caller still has to Add it somewhere.
    virtual std::unique_ptr<Node> Clone(NodeContainer* newOwner) const = 0;
    virtual void Write(WriterState& state) const = 0;

    std::u16string_view GetName() const;  // tag, attribute name, "#text", ...
    NodeContainer* GetOwner() const;
    const Element* AsElement() const;  // this if IsOfType(1), else nullptr
    Element* AsElement();

protected:
    enum class Kind : std::uint8_t { Element, Attribute, Text, CData, CharRef, EntityRef, Pi, Comment, Document };
    Node(Kind kind, std::uint16_t flags) : kind_(kind), flags_(flags) {}

    // owner_ is a NodeContainer whenever it is set; it is typed Node* because destruction threads
    // its work list through it.
    Node* owner_ = nullptr;
    Kind kind_;
    std::uint8_t spare_ = 0;
    std::uint16_t flags_;
    std::uint32_t aux_ = 0;  // child count, text length or character, by kind

    friend struct detail::Impl;
};

class NodeContainer : public Node {
public:
    ~NodeContainer() override;

    std::size_t GetChildCount() const;
    const Node& GetChild(std::size_t i) const;  // i >= count: the shared empty Element
    Node& GetChild(std::size_t i);
    void Add(std::unique_ptr<Node> node);  // takes ownership
    void AddText(std::u16string_view text);  // appends to a last Text child, else adds one
    void Clear();

protected:
    NodeContainer(Kind kind, std::uint16_t flags) : Node(kind, flags) {}

    union {
        Node** children_ = nullptr;
        const char16_t* inlineText_;  // an Attribute whose value is one literal run, see Impl
        const unsigned char* inlineBytes_;  // the same, one byte a character
    };

    friend struct detail::Impl;
};

class Attribute : public NodeContainer {
public:
    explicit Attribute(std::u16string_view name);
    ~Attribute() override;

    std::u16string GetValue() const override;
    std::u16string GetText() const override;
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

    void SetText(std::u16string_view text);
    // GetText into `out`, reusing its room: a reader of many values needs no new string for each.
    void AssignText(std::u16string& out) const;

private:
    Attribute(const detail::NameRec* name, std::uint16_t flags);
    const detail::NameRec* name_;

    friend struct detail::Impl;
};

class Element : public NodeContainer {
public:
    explicit Element(std::u16string_view name);
    ~Element() override;

    std::u16string GetValue() const override;
    std::u16string GetText() const override;
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

    // First match, case-sensitive; else the shared empty Attribute.
    const Attribute& GetAttribute(std::u16string_view name) const;
    std::size_t GetAttributeCount() const;
    const Attribute& GetAttributeAt(std::size_t i) const;  // out of range: the shared empty Attribute
    Element& AddElement(std::u16string_view name);  // on a shared empty node: adds nothing, returns EmptyElement()
    Attribute& SetAttribute(std::u16string_view name);  // existing or new; on shared empty: EmptyAttribute()
    bool IsPreserve() const;  // xml:space="preserve"
    bool IsSharedEmpty() const;

private:
    Element(const detail::NameRec* name, std::uint16_t flags);
    const detail::NameRec* name_;
    union {
        Attribute** attrList_ = nullptr;  // heap or arena array of pointers
        Attribute* attrArray_;  // a parsed element's attributes, contiguous in the arena
    };
    std::uint32_t attrCount_ = 0;

    friend struct detail::Impl;
};

class Document : public NodeContainer {
public:
    Document();
    explicit Document(std::u16string_view rootName);  // version "1.0", encoding "UTF-8", root made at once
    ~Document() override;

    std::u16string GetValue() const override;
    std::u16string GetText() const override;
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

    Element* Root();  // may be null
    const Element* Root() const;
    std::u16string_view GetVersion() const;
    std::u16string_view GetEncoding() const;
    bool IsStandalone() const;

private:
    std::u16string version_;
    std::u16string encoding_;
    Element* root_ = nullptr;
    std::unique_ptr<detail::Arena> arena_;  // set for parsed documents

    friend struct detail::Impl;
};

// Text, CData and Comment hold one text and nothing else.
class TextualNode : public Node {
public:
    ~TextualNode() override;
    std::u16string GetValue() const override;
    std::u16string GetText() const override;

protected:
    TextualNode(Kind kind, std::u16string_view text);
    TextualNode(Kind kind, std::uint16_t flags) : Node(kind, flags) {}
    const char16_t* text_ = nullptr;  // aux_ holds the length

    friend struct detail::Impl;
};

class Text : public TextualNode {
public:
    explicit Text(std::u16string_view text);
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    Text(detail::ArenaTag, std::uint16_t flags) : TextualNode(Kind::Text, flags) {}
    friend struct detail::Impl;
};

class CData : public TextualNode {
public:
    explicit CData(std::u16string_view text);
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    CData(detail::ArenaTag, std::uint16_t flags) : TextualNode(Kind::CData, flags) {}
    friend struct detail::Impl;
};

class Comment : public TextualNode {
public:
    explicit Comment(std::u16string_view text);
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    Comment(detail::ArenaTag, std::uint16_t flags) : TextualNode(Kind::Comment, flags) {}
    friend struct detail::Impl;
};

class Pi : public Node {
public:
    Pi(std::u16string_view target, std::u16string_view text);
    ~Pi() override;
    std::u16string GetValue() const override;
    std::u16string GetText() const override;
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    Pi(const detail::NameRec* target, std::uint16_t flags);
    const detail::NameRec* name_;
    const char16_t* text_ = nullptr;  // aux_ holds the length

    friend struct detail::Impl;
};

// A reference stands for one 16-bit character, kept in aux_.
class Reference : public Node {
public:
    std::u16string GetValue() const override;
    std::u16string GetText() const override;
    char16_t GetChar() const { return static_cast<char16_t>(aux_); }

protected:
    Reference(Kind kind, char16_t c, std::uint16_t flags) : Node(kind, flags) { aux_ = c; }
};

class CharRef : public Reference {
public:
    explicit CharRef(char16_t c);
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    CharRef(char16_t c, std::uint16_t flags) : Reference(Kind::CharRef, c, flags) {}
    friend struct detail::Impl;
};

class EntityRef : public Reference {
public:
    explicit EntityRef(std::u16string_view name);  // InvalidRefException unless lt, gt, amp, apos, quot
    std::unique_ptr<Node> Clone(NodeContainer* newOwner) const override;
    void Write(WriterState& state) const override;

private:
    EntityRef(char16_t c, std::uint16_t flags) : Reference(Kind::EntityRef, c, flags) {}
    friend struct detail::Impl;
};

// The shared empty nodes: never changed, never freed; adding to them does nothing.
Element& EmptyElement();
Attribute& EmptyAttribute();
Comment& EmptyComment();
Pi& EmptyPi();
CData& EmptyCData();

// State of one writing run. Flag bit 0 (kCompact): no line breaks and no indent.
class WriterState {
public:
    static constexpr int kCompact = 1;
    explicit WriterState(std::u16string& out, int flags = 0, std::u16string_view indent = u"  ");

    void Put(char16_t c) {
        out_.push_back(c);
        lineBreakWritten_ = false;
    }
    void Put(std::u16string_view text) {
        out_.append(text);
        if (!text.empty()) lineBreakWritten_ = false;
    }
    void PutEscaped(std::u16string_view text);  // < > & ' " as entity references
    void NewLine();
    void Indent();
    void Open();
    void Close();
    void End();

    int GetFlags() const { return flags_; }
    int GetDepth() const { return depth_; }
    std::u16string& Output() { return out_; }

private:
    std::u16string& out_;
    std::u16string indent_;
    int flags_;
    int depth_ = 0;
    bool closingLine_ = false;
    bool lineBreakWritten_ = false;
};

// Clears out and writes the document with the flags 0 and an indent of two blanks.
void WriteDocument(const Document& document, std::u16string& out);

}  // namespace AdvXMLParser
