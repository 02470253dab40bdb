// The reader: prolog, elements, attributes, content, references, comments, CDATA and processing
// instructions. The document type declaration is in dtd.cpp.
#include "xml/reader.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "text/textutil.h"

namespace AdvXMLParser {

const char* ParsingException::what() const noexcept { return "XML parsing error"; }

std::unique_ptr<Document> Parser::Parse(const char16_t* text, std::size_t length) {
    detail::Reader reader;
    return reader.Run(text, length);
}

std::unique_ptr<Document> Parser::Parse(const char16_t* text, std::size_t length, std::vector<ElementStart>& starts) {
    starts.clear();
    detail::Reader reader;
    return reader.Run(text, length, &starts);
}

namespace detail {

namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool IsHexDigit(char16_t c) {
    return IsDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}
unsigned HexValue(char16_t c) {
    if (IsDigit(c)) return c - u'0';
    return (c | 0x20) - u'a' + 10;
}
bool IsAsciiLetter(char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); }
bool IsVersionChar(char16_t c) {
    return IsAsciiLetter(c) || IsDigit(c) || c == u'_' || c == u'.' || c == u':' || c == u'-';
}
bool IsEncodingChar(char16_t c) {
    return IsAsciiLetter(c) || IsDigit(c) || c == u'_' || c == u'.' || c == u'-';
}
bool IsQuote(char16_t c) { return c == u'"' || c == u'\''; }

constexpr std::u16string_view kXmlSpace = u"xml:space";  // a constant: no length to count per attribute

// Above this the 32-bit lengths and positions of the tree would not hold.
constexpr std::size_t kMaxLength = 0x7FFFFFFF;

}  // namespace

void PendingChildren::NextBlock() {
    const std::size_t block = size_ / kBlock;
    if (block == blocks_.size()) blocks_.push_back(std::make_unique_for_overwrite<Node*[]>(kBlock));
    next_ = blocks_[block].get();
    blockEnd_ = next_ + kBlock;
}

void PendingChildren::CopyOut(std::size_t from, Node** out) const {
    while (from < size_) {
        const std::size_t offset = from % kBlock;
        const std::size_t n = std::min(kBlock - offset, size_ - from);
        std::memcpy(out, blocks_[from / kBlock].get() + offset, n * sizeof(Node*));
        out += n;
        from += n;
    }
}

void PendingChildren::resize(std::size_t n) {
    size_ = n;
    const std::size_t block = n / kBlock;
    if (block == blocks_.size()) {
        next_ = blockEnd_ = nullptr;  // the next push takes a new block
        return;
    }
    next_ = blocks_[block].get() + n % kBlock;
    blockEnd_ = blocks_[block].get() + kBlock;
}

void Reader::Fail(int number) const {
    throw ParsingException(number, static_cast<int>(line_), static_cast<int>(col_));
}

std::unique_ptr<Document> Reader::Run(const char16_t* text, std::size_t length, std::vector<ElementStart>* starts) {
    if (length > kMaxLength) throw std::length_error("XML text too long");
    if (!text) length = 0;
    Reset(text, length);
    starts_ = starts;

    // Chunks of a thirty-second of the text keep the unused tail of the last chunk small at every size.
    std::size_t chunk = length * sizeof(char16_t) / 32;
    if (chunk < 4096) chunk = 4096;
    if (chunk > (std::size_t{1} << 20)) chunk = std::size_t{1} << 20;
    std::unique_ptr<Document> doc = Impl::NewParsedDocument(chunk);
    doc_ = doc.get();
    arena_ = &Impl::ArenaOf(*doc);
    names_.assign(64, InternEntry{0, nullptr});
    open_.push_back({doc_, nullptr, 0});

    XmlDeclaration();
    Misc();
    if (Match(u"<!DOCTYPE")) {
        Doctype();
        Misc();
    }
    if (Get() != u'<') Fail(kErrNoRoot);
    if (!IsNameStart(Get())) Fail(kErrNoName);
    StartTag(true);
    if (open_.size() > 1) Content();
    Misc();
    Get();
    if (!PastEnd()) Fail(kErrAfterRoot);
    CloseFrame();
    return doc;
}

void Reader::Eq(int failNumber) {
    SkipSpace();
    if (Get() != u'=') Fail(failNumber);
    SkipSpace();
}

// "<?xml" is tested as a literal only, so any processing instruction at the very start whose
// target begins with xml is read as a declaration and fails.
void Reader::XmlDeclaration() {
    if (!Match(u"<?xml")) return;
    if (!SkipSpace() || !Match(u"version")) Fail(kErrVersion);
    Eq(kErrVersion);
    char16_t quote = Get();
    if (!IsQuote(quote)) Fail(kErrVersion);
    const char16_t* from = Position();
    char16_t c = Get();
    if (!IsVersionChar(c)) Fail(kErrVersion);
    while (IsVersionChar(c = Get())) {
    }
    if (c != quote) Fail(kErrVersion);
    const std::u16string_view version(from, static_cast<std::size_t>(Position() - 1 - from));

    std::u16string_view encoding = u"UTF-8";
    State s = Save();
    if (SkipSpace() && Match(u"encoding")) {
        Eq(kErrEncodingQuote);
        quote = Get();
        if (!IsQuote(quote)) Fail(kErrEncodingQuote);
        from = Position();
        if (!IsAsciiLetter(Get())) Fail(kErrEncodingName);
        while (IsEncodingChar(c = Get())) {
        }
        if (c != quote) Fail(kErrEncodingName);
        encoding = std::u16string_view(from, static_cast<std::size_t>(Position() - 1 - from));
    } else {
        Restore(s);
    }

    bool standalone = true;
    s = Save();
    if (SkipSpace() && Match(u"standalone")) {
        Eq(kErrStandaloneQuote);
        quote = Get();
        if (!IsQuote(quote)) Fail(kErrStandaloneQuote);
        if (Match(u"yes"))
            standalone = true;
        else if (Match(u"no"))
            standalone = false;
        else
            Fail(kErrStandaloneValue);
        if (Get() != quote) Fail(kErrStandaloneValue);
    } else {
        Restore(s);
    }
    SkipSpace();
    if (!Match(u"?>")) Fail(kErrDeclNotClosed);
    Impl::SetDeclaration(*doc_, version, encoding, standalone);
}

void Reader::Misc() {
    for (;;) {
        SkipSpace();
        if (Match(u"<!--"))
            CommentNode();
        else if (Match(u"<?"))
            PiNode();
        else
            return;
    }
}

namespace {
bool SameChars(const char16_t* a, const char16_t* b, std::size_t n) {
    for (; n >= 4; n -= 4, a += 4, b += 4) {
        std::uint64_t x, y;
        std::memcpy(&x, a, sizeof x);
        std::memcpy(&y, b, sizeof y);
        if (x != y) return false;
    }
    for (; n > 0; --n)
        if (*a++ != *b++) return false;
    return true;
}
}  // namespace

// Tag and attribute names repeat throughout a document: a small cache by length and end
// characters answers nearly every lookup; the hash table behind it keeps unusual texts fast.
const NameRec* Reader::Intern(const char16_t* from, const char16_t* to) {
    const std::size_t length = static_cast<std::size_t>(to - from);
    const std::size_t slot = (length * 7 + from[0] + (static_cast<std::size_t>(to[-1]) << 3)) % recent_.size();
    const NameRec* recent = recent_[slot];
    if (recent && recent->length == length && SameChars(recent->Chars(), from, length)) return recent;

    std::uint32_t hash = 2166136261u;
    for (const char16_t* p = from; p != to; ++p) hash = (hash ^ *p) * 16777619u;
    std::size_t mask = names_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        const InternEntry& e = names_[i];
        if (!e.name) break;
        if (e.hash == hash && e.name->length == length && SameChars(e.name->Chars(), from, length))
            return recent_[slot] = e.name;
    }
    const NameRec* name = arena_->AllocName(std::u16string_view(from, length));
    if (2 * (nameCount_ + 1) > names_.size()) {
        std::vector<InternEntry> bigger(names_.size() * 2, InternEntry{0, nullptr});
        mask = bigger.size() - 1;
        for (const InternEntry& e : names_) {
            if (!e.name) continue;
            std::size_t i = e.hash & mask;
            while (bigger[i].name) i = (i + 1) & mask;
            bigger[i] = e;
        }
        names_.swap(bigger);
    }
    std::size_t i = hash & mask;
    while (names_[i].name) i = (i + 1) & mask;
    names_[i] = {hash, name};
    ++nameCount_;
    return recent_[slot] = name;
}

// Called with the first character of the name read.
void Reader::StartTag(bool root) {
    const char16_t* from = Position() - 1;
    ScanNameRest();
    const NameRec* name = Intern(from, Position());
    Element* element = Impl::NewElement(*arena_, name, Owner());
    children_.push_back(element);
    if (starts_) starts_->push_back({element, static_cast<std::size_t>(from - 1 - begin_)});
    if (root) Impl::SetRoot(*doc_, element);
    ReadAttributes(*element);
    const char16_t c = Get();
    if (c == u'/') {
        if (Get() != u'>') Fail(kErrSlashNoGt);
    } else if (c == u'>') {
        open_.push_back({element, name, children_.size()});
    } else {
        Fail(kErrTagNotClosed);
    }
}

namespace {

// After '&': the end of a reference to a predefined entity or to a character other than a
// control, else null, for the general path to read and refuse.
const char16_t* PlainReference(const char16_t* p, const char16_t* e) {
    if (p == e) return nullptr;
    if (*p == u'#') {
        std::uint32_t value = 0;  // wraps as Reference() does; only the low 16 bits count
        const char16_t* digits = ++p;
        if (p != e && *p == u'x') {
            digits = ++p;
            while (p != e && IsHexDigit(*p)) value = value * 16 + HexValue(*p++);
        } else {
            while (p != e && IsDigit(*p)) value = value * 10 + static_cast<std::uint32_t>(*p++ - u'0');
        }
        if (p == digits || p == e || *p != u';' || IsControl(static_cast<char16_t>(value & 0xFFFF))) return nullptr;
        return p + 1;
    }
    if (!IsNameStart(*p)) return nullptr;
    const char16_t* const name = p;
    while (++p != e && IsNameChar(*p)) {
    }
    if (p == e || *p != u';' || !FindEntity(std::u16string_view(name, static_cast<std::size_t>(p - name)))) return nullptr;
    return p + 1;
}

}  // namespace

// The usual attribute: blanks, a name, '=' and a quoted value of plain characters and references,
// all on one line. Read with local pointers, it leaves the cursor as the Get() of each character would; any
// thing else returns null with the cursor unmoved, for the general path to read or refuse.
bool Reader::PlainAttribute(PlainRun& run, const NameRec* expected) const {
    const char16_t* p = cur_;
    const char16_t* const e = end_;
    auto blanks = [&p, e] {
        while (p != e && (*p == u' ' || *p == u'\t')) ++p;
    };
    const char16_t* const start = p;
    blanks();
    if (p == start || p == e) return false;
    run.nameFrom = p;
    if (expected && static_cast<std::size_t>(e - p) > expected->length &&
        SameChars(p, expected->Chars(), expected->length) && !IsNameChar(p[expected->length])) {
        p += expected->length;
        run.name = expected;
    } else {
        if (!IsNameStart(*p)) return false;
        for (++p; p != e && IsNameChar(*p);) ++p;
        run.name = nullptr;
    }
    run.nameTo = p;
    blanks();
    if (p == e || *p != u'=') return false;
    ++p;
    blanks();
    if (p == e || !IsQuote(*p)) return false;
    const char16_t quote = *p++;
    run.valueFrom = p;
    run.references = false;
    for (;;) {
        p = FindStop<kStopAttr>(p, e);
        if (p == e) return false;
        if (*p == quote) break;
        if (*p == u'&') {
            p = PlainReference(p + 1, e);
            if (!p) return false;
            run.references = true;
        } else if (IsQuote(*p)) {
            ++p;  // the other quote is plain text here
        } else {
            return false;
        }
    }
    run.valueTo = p;
    return true;
}

void Reader::ReadAttributes(Element& element) {
    attributes_.clear();
    const NameRec* const elementName = Impl::ElementName(element);
    KnownAttributes& known = known_[(reinterpret_cast<std::uintptr_t>(elementName) >> 3) % known_.size()];
    if (known.element != elementName) {
        known.element = elementName;
        known.count = 0;
    }
    for (;;) {
        PlainRun run;
        const std::size_t i = attributes_.size();
        if (PlainAttribute(run, i < known.count ? known.names[i] : nullptr)) {
            PendingAttribute& pending = attributes_.emplace_back();
            pending.name = run.name ? run.name : Intern(run.nameFrom, run.nameTo);
            StoreValue(pending, run.valueFrom, run.valueTo, run.references);
            Advance(static_cast<std::size_t>(run.valueTo + 1 - Position()));  // the closing quote too
            continue;
        }
        if (!SkipSpace()) break;
        const char16_t* from = Position();
        if (!TryName()) break;
        const NameRec* name = Intern(from, Position());
        Eq(kErrNoEq);
        const char16_t quote = Get();
        if (!IsQuote(quote)) Fail(kErrValueNotQuoted);
        // Made and filled in place: copying in a record just written field by field stalls on the
        // stores.
        PendingAttribute& pending = attributes_.emplace_back();
        pending.name = name;
        AttributeValue(quote, &pending);
    }
    const std::size_t count = attributes_.size();
    known.count = static_cast<std::uint32_t>(std::min(count, known.names.size()));
    for (std::size_t i = 0; i < known.count; ++i) known.names[i] = attributes_[i].name;
    if (count == 0) return;

    char* storage = static_cast<char*>(arena_->AllocNode(sizeof(Attribute) * count));
    for (std::size_t i = 0; i < count; ++i) {
        const PendingAttribute& p = attributes_[i];
        Attribute* a = Impl::NewAttributeAt(storage + i * sizeof(Attribute), p.name, &element);
        Impl::SetInlineValue(*a, (p.flags & kInlineEmbedded) ? p.bytes : p.text, p.length, p.flags);
        if (p.name->View() == kXmlSpace) Impl::SetPreserve(element, a->GetText() == u"preserve");
    }
    Impl::SetAttributes(element, reinterpret_cast<Attribute*>(storage), count);
}

// With pending null the value is only checked (attribute defaults in the DTD). The value is kept
// as written, references included; the tree reads them when a caller asks for its children.
void Reader::AttributeValue(char16_t quote, PendingAttribute* pending) {
    const char16_t* from = Position();
    bool references = false;
    for (;;) {
        ScanRun<kStopAttr>();
        const char16_t c = Get();
        if (c == quote) break;
        if (c == u'&') {
            Reference();
            references = true;
        } else if (c == u'<') {
            Fail(kErrLtInValue);
        } else if (PastEnd()) {
            Fail(kErrEndOfText);
        } else if (IsControl(c)) {
            Fail(kErrControl);
        }
        // else the other quote character, which is plain text here
    }
    if (pending) StoreValue(*pending, from, Position() - 1, references);
}

void Reader::StoreValue(PendingAttribute& pending, const char16_t* from, const char16_t* to, bool references) {
    const std::uint32_t length = static_cast<std::uint32_t>(to - from);
    pending.length = length;
    if (length == 0) return;
    // Nearly every value is Latin-1: one byte a character halves what the tree keeps of it.
    std::uint16_t flags = references ? kInlineRefs : 0;
    if (length <= sizeof pending.bytes && CopyIfNarrow(from, length, pending.bytes, static_cast<std::size_t>(end_ - from))) {
        pending.flags = flags | kInlineNarrow | kInlineEmbedded;  // short ones take no storage of their own
        return;
    }
    const void* text = arena_->CopyNarrow(from, length);
    if (text)
        flags |= kInlineNarrow;
    else
        text = arena_->CopyChars(from, length);
    pending.text = text;
    pending.flags = flags;
}

// After '&'. A character reference keeps the low 16 bits of its number.
Reader::Ref Reader::Reference() {
    char16_t c = Get();
    if (c == u'#') {
        std::uint32_t value = 0;
        c = Get();
        if (c == u'x') {
            c = Get();
            if (!IsHexDigit(c)) Fail(kErrNoHexDigit);
            do {
                value = value * 16 + HexValue(c);
                c = Get();
            } while (IsHexDigit(c));
        } else {
            if (!IsDigit(c)) Fail(kErrNoDigit);
            do {
                value = value * 10 + (c - u'0');
                c = Get();
            } while (IsDigit(c));
        }
        if (c != u';') Fail(kErrReference);
        const char16_t character = static_cast<char16_t>(value & 0xFFFF);
        if (IsControl(character)) Fail(kErrControl);
        return {false, character};
    }
    if (!IsNameStart(c)) Fail(kErrReference);
    const char16_t* from = Position() - 1;
    ScanNameRest();
    const std::u16string_view name(from, static_cast<std::size_t>(Position() - from));
    if (Get() != u';') Fail(kErrReference);
    // Only the predefined entities exist, whatever the document type declaration declared.
    const Entity* e = FindEntity(name);
    if (!e) Fail(kErrUnknownEntity);
    return {true, e->character};
}

void Reader::AddText(const char16_t* from, const char16_t* to) {
    const std::size_t n = static_cast<std::size_t>(to - from);
    std::size_t i = 0;
    while (i < n && IsSpace(from[i])) ++i;
    AddTextNode(i == n ? SpaceRun(from, n) : arena_->CopyChars(from, n), n);
}

void Reader::AddTextNode(const char16_t* text, std::size_t n) {
    children_.push_back(Impl::NewTextual(*arena_, Impl::Kind::Text, text, static_cast<std::uint32_t>(n), Owner()));
}

const char16_t* Reader::SpaceRun(const char16_t* from, std::size_t n) {
    if (n >= spaceRuns_.size()) return arena_->CopyChars(from, n);
    const char16_t* known = spaceRuns_[n];
    if (known) {
        std::size_t i = 0;
        while (i < n && known[i] == from[i]) ++i;
        if (i == n) return known;
    }
    return spaceRuns_[n] = arena_->CopyChars(from, n);
}

// A line end and the indent of the next tag, the commonest text of all: read as ScanRun would.
// Siblings share their indent, so the last one is tried first.
bool Reader::IndentRun() {
    const char16_t* p = cur_;
    const char16_t* const e = end_;
    if (p == e || (*p != u'\n' && *p != u'\r')) return false;
    const std::size_t known = lastIndent_.length;
    if (known && static_cast<std::size_t>(e - p) > known && p[known] == u'<' && SameChars(p, lastIndent_.text, known)) {
        p += known;
    } else {
        const char16_t* const from = p;
        if (*p == u'\r' && p + 1 != e && p[1] == u'\n') ++p;
        const char16_t* const blanks = ++p;
        while (p != e && (*p == u' ' || *p == u'\t')) ++p;
        if (p == e || *p != u'<') return false;
        const std::size_t n = static_cast<std::size_t>(p - from);
        lastIndent_ = {SpaceRun(from, n), n, static_cast<std::uint32_t>(p - blanks)};
    }
    const std::uint32_t blanks = lastIndent_.blanks;
    ++line_;
    prevCol_ = blanks ? blanks - 1 : col_;
    col_ = blanks;
    cur_ = p;
    AddTextNode(lastIndent_.text, lastIndent_.length);
    return true;
}

void Reader::Content() {
    for (;;) {
        if (!IndentRun()) {
            const char16_t* run = Position();
            ScanRun<kStopText>();
            if (Position() != run) AddText(run, Position());
        }
        const char16_t c = Get();
        if (c == u'<') {
            if (Match(u"/")) {
                EndTag();
                if (open_.size() == 1) return;  // the root is closed
            } else if (Match(u"!--")) {
                CommentNode();
            } else if (Match(u"![CDATA[")) {
                CDataNode();
            } else if (Match(u"?")) {
                PiNode();
            } else {
                if (!IsNameStart(Get())) Fail(kErrBadLt);
                StartTag(false);
            }
        } else if (c == u'&') {
            const Ref r = Reference();
            children_.push_back(Impl::NewReference(*arena_, r.entity, r.character, Owner()));
        } else if (c == u']') {
            Match(u"]>");  // the run stopped here only because "]]>" begins
            Fail(kErrCDataEnd);
        } else if (PastEnd()) {
            Fail(kErrEndOfText);
        } else {
            Fail(kErrControl);
        }
    }
}

void Reader::EndTag() {
    if (!IsNameStart(Get())) Fail(kErrNoName);
    const char16_t* from = Position() - 1;
    ScanNameRest();
    const std::u16string_view name(from, static_cast<std::size_t>(Position() - from));
    if (name != open_.back().name->View()) Fail(kErrEndTagMismatch);
    SkipSpace();
    if (Get() != u'>') Fail(kErrTagNotClosed);
    CloseFrame();
}

void Reader::CloseFrame() {
    const Frame& f = open_.back();
    const std::size_t count = children_.size() - f.firstChild;
    if (count > 0) {
        Node** list = static_cast<Node**>(arena_->AllocNode(sizeof(Node*) * count));
        children_.CopyOut(f.firstChild, list);
        Impl::SetChildren(*f.node, list, count);
    }
    children_.resize(f.firstChild);
    open_.pop_back();
}

// After "<!--". End of text reads as the character 0, which the control check refuses.
void Reader::CommentNode() {
    const char16_t* from = Position();
    for (;;) {
        ScanRun<kStopComment>();
        const char16_t c = Get();
        if (c == u'-') {
            if (!Match(u"-")) continue;
            const char16_t* to = Position() - 2;
            if (Get() != u'>') Fail(kErrDoubleHyphen);
            const std::uint32_t n = static_cast<std::uint32_t>(to - from);
            children_.push_back(
                Impl::NewTextual(*arena_, Impl::Kind::Comment, arena_->CopyChars(from, n), n, Owner()));
            return;
        }
        Fail(kErrControl);
    }
}

void Reader::CDataNode() {
    const char16_t* from = Position();
    for (;;) {
        ScanRun<kStopCData>();
        const char16_t c = Get();
        if (c == u']') {
            if (!Match(u"]>")) continue;
            const std::uint32_t n = static_cast<std::uint32_t>(Position() - 3 - from);
            children_.push_back(
                Impl::NewTextual(*arena_, Impl::Kind::CData, arena_->CopyChars(from, n), n, Owner()));
            return;
        }
        Fail(kErrControl);
    }
}

void Reader::PiNode() {
    if (!IsNameStart(Get())) Fail(kErrPiTarget);
    const char16_t* targetFrom = Position() - 1;
    ScanNameRest();
    const std::u16string_view target(targetFrom, static_cast<std::size_t>(Position() - targetFrom));
    if (qrl::iequals(target, u"xml")) Fail(kErrPiXml);
    SkipSpace();
    const char16_t* from = Position();
    for (;;) {
        ScanRun<kStopPi>();
        const char16_t c = Get();
        if (c == u'?') {
            if (!Match(u">")) continue;
            const std::uint32_t n = static_cast<std::uint32_t>(Position() - 2 - from);
            children_.push_back(Impl::NewPi(*arena_, Intern(targetFrom, targetFrom + target.size()),
                                            arena_->CopyChars(from, n), n, Owner()));
            return;
        }
        Fail(kErrControl);
    }
}

std::u16string_view Reader::TakeName(int failNumber) {
    if (!IsNameStart(Get())) Fail(failNumber);
    const char16_t* from = Position() - 1;
    ScanNameRest();
    return {from, static_cast<std::size_t>(Position() - from)};
}

bool Reader::TryName() {
    if (!IsNameStart(LookAhead())) return false;
    ScanNameRest();
    return true;
}

bool Reader::TryNmtoken() {
    if (!IsNameChar(LookAhead())) return false;
    ScanNameRest();
    return true;
}

}  // namespace detail
}  // namespace AdvXMLParser
