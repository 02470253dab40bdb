// The reader behind Parser::Parse. Element nesting is kept on an explicit stack of open elements,
// and the children of open elements wait in one shared list until their end tag gives each its
// exact-size array in the document's arena. Internal to the XML layer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "xml/cursor.h"
#include "xml/impl.h"
#include "xml/parser.h"

namespace AdvXMLParser::detail {

// Numbers of ParsingException.
enum ErrorNumber : int {
    kErrEndOfText = 1,
    kErrControl = 2,
    kErrNoEq = 3,
    kErrValueNotQuoted = 4,
    kErrLtInValue = 5,
    kErrReference = 6,
    kErrNoHexDigit = 7,
    kErrNoDigit = 8,
    kErrUnknownEntity = 9,
    kErrNoName = 10,
    kErrSlashNoGt = 11,
    kErrTagNotClosed = 12,
    kErrEndTagMismatch = 13,
    kErrBadLt = 14,
    kErrCDataEnd = 15,
    kErrNoRoot = 16,
    kErrVersion = 17,
    kErrDeclNotClosed = 18,
    kErrEncodingQuote = 19,
    kErrEncodingName = 20,
    kErrStandaloneQuote = 21,
    kErrStandaloneValue = 22,
    kErrDoubleHyphen = 23,
    kErrPiTarget = 24,
    kErrPiXml = 25,
    kErrDoctype = 26,
    kErrPeReference = 27,
    kErrPublicChar = 28,
    kErrElementDecl = 29,
    kErrMixed = 30,
    kErrSeparator = 31,
    kErrParticle = 32,
    kErrAttlist = 33,
    kErrAttDef = 34,
    kErrNotationType = 35,
    kErrEnumeration = 36,
    kErrFixed = 37,
    kErrEntityDecl = 38,
    kErrNData = 39,
    kErrNotationDecl = 40,
    kErrExternalId = 41,
    kErrNotationPublic = 42,
    kErrAfterRoot = 43,
};

// The children of the open elements, in document order, until the end tag of their element. Kept
// in blocks that never move, so the most ever waiting is all they hold; a doubling vector would
// hold up to twice that, and three times while it copies.
class PendingChildren {
public:
    void push_back(Node* node) {
        if (next_ == blockEnd_) NextBlock();
        *next_++ = node;
        ++size_;
    }
    std::size_t size() const { return size_; }
    void CopyOut(std::size_t from, Node** out) const;  // the children from that index on
    void resize(std::size_t n);  // n <= size()

private:
    static constexpr std::size_t kBlock = 128;
    void NextBlock();

    std::vector<std::unique_ptr<Node*[]>> blocks_;
    Node** next_ = nullptr;
    Node** blockEnd_ = nullptr;
    std::size_t size_ = 0;
};

class Reader : private Cursor {
public:
    // `starts`, when given, receives the start of each element.
    std::unique_ptr<Document> Run(const char16_t* text, std::size_t length,
                                  std::vector<ElementStart>* starts = nullptr);

private:
    struct Frame {
        NodeContainer* node;
        const NameRec* name;    // of an element, for its end tag
        std::size_t firstChild;  // index into children_
    };
    struct PendingAttribute {
        const NameRec* name;
        const void* text;  // the value as written, 16 or 8 bits a character as flags say
        std::uint32_t length;
        std::uint16_t flags;  // kInlineRefs, kInlineNarrow, kInlineEmbedded
        unsigned char bytes[sizeof(void*)];  // an embedded value, zeros after it
    };
    struct Ref {
        bool entity;
        char16_t character;
    };
    // The attribute names of the last element of a name, in order. The next element of that name
    // nearly always repeats them: a name found where it is expected needs no scan and no lookup.
    struct KnownAttributes {
        const NameRec* element;
        std::uint32_t count;
        std::array<const NameRec*, 12> names;
    };
    struct InternEntry {
        std::uint32_t hash;
        const NameRec* name;
    };

    [[noreturn]] void Fail(int number) const;

    // Document and content (reader.cpp).
    void XmlDeclaration();
    void Eq(int failNumber);
    void Misc();
    void StartTag(bool root);
    void ReadAttributes(Element& element);
    void Content();
    void EndTag();
    void CloseFrame();
    struct PlainRun {
        const char16_t* nameFrom;
        const char16_t* nameTo;
        const char16_t* valueFrom;
        const char16_t* valueTo;  // the closing quote
        const NameRec* name;  // the expected name, when it stood there; else null
        bool references;
    };
    bool PlainAttribute(PlainRun& run, const NameRec* expected) const;
    void AttributeValue(char16_t quote, PendingAttribute* pending);
    void StoreValue(PendingAttribute& pending, const char16_t* from, const char16_t* to, bool references);
    Ref Reference();
    void AddText(const char16_t* from, const char16_t* to);
    void AddTextNode(const char16_t* text, std::size_t n);
    const char16_t* SpaceRun(const char16_t* from, std::size_t n);
    bool IndentRun();
    void CommentNode();
    void CDataNode();
    void PiNode();
    const NameRec* Intern(const char16_t* from, const char16_t* to);
    Node* Owner() const { return open_.back().node; }

    // Names for the declarations (dtd.cpp and reader.cpp).
    std::u16string_view TakeName(int failNumber);
    bool TryName();
    bool TryNmtoken();

    // Document type declaration, read and thrown away (dtd.cpp).
    void Doctype();
    void InternalSubset();
    void ElementDecl();
    void ChildrenModel();
    void Occurrence();
    void AttlistDecl();
    void AttType();
    void DefaultDecl();
    void EntityDecl();
    void EntityValue(char16_t quote);
    void NotationDecl();
    bool ExternalId();
    void SystemLiteral();
    void PublicLiteral(int notQuotedNumber);
    void PeReference();

    std::vector<ElementStart>* starts_ = nullptr;
    Document* doc_ = nullptr;
    Arena* arena_ = nullptr;
    std::vector<Frame> open_;
    PendingChildren children_;
    std::vector<PendingAttribute> attributes_;
    std::vector<InternEntry> names_;
    std::size_t nameCount_ = 0;
    std::array<const NameRec*, 256> recent_{};
    std::array<KnownAttributes, 16> known_{};
    // Runs of white space between tags repeat endlessly; each length keeps its last copy.
    std::array<const char16_t*, 129> spaceRuns_{};
    struct Indent {
        const char16_t* text;  // the line end and the blanks, as stored
        std::size_t length;
        std::uint32_t blanks;
    } lastIndent_{};
};

}  // namespace AdvXMLParser::detail
