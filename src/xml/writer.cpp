// The writer: indented text from a tree. Containers are written by one loop with its own stack,
// leaves by their Write operations.
#include <vector>

#include "text/textutil.h"
#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

WriterState::WriterState(std::u16string& out, int flags, std::u16string_view indent)
    : out_(out), indent_(indent), flags_(flags) {}

void WriterState::PutEscaped(std::u16string_view text) {
    std::size_t run = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c != u'<' && c != u'>' && c != u'&' && c != u'\'' && c != u'"') continue;
        out_.append(text.substr(run, i - run));
        out_.push_back(u'&');
        out_.append(FindEntity(c)->name);
        out_.push_back(u';');
        run = i + 1;
    }
    out_.append(text.substr(run));
    if (!text.empty()) lineBreakWritten_ = false;
}

void WriterState::NewLine() {
    if ((flags_ & kCompact) || lineBreakWritten_) return;
    out_.push_back(u'\n');
    lineBreakWritten_ = true;
}

void WriterState::Indent() {
    lineBreakWritten_ = false;
    for (int i = 1; i < depth_; ++i) out_.append(indent_);
}

void WriterState::Open() {
    ++depth_;
    if (flags_ & kCompact) return;
    NewLine();
    Indent();
    closingLine_ = false;
}

void WriterState::Close() {
    // Compact writing leaves even the depth alone here, while Open and End still count it.
    if (flags_ & kCompact) return;
    if (closingLine_) {
        NewLine();
        Indent();
    }
    --depth_;
    closingLine_ = true;
}

void WriterState::End() {
    --depth_;
    closingLine_ = true;
}

namespace detail {

void Impl::WriteReference(Kind kind, char16_t c, WriterState& state) {
    if (kind == Kind::CharRef) {
        state.Put(u"&#x");
        if (c != 0) state.Put(qrl::hexUpper(c));  // code 0 has no digits at all
    } else {
        state.Put(u'&');
        const Entity* e = FindEntity(c);
        if (e) state.Put(e->name);
    }
    state.Put(u';');
}

void Impl::WriteLeaf(const Node& n, WriterState& state) {
    switch (n.kind_) {
    case Kind::Text: state.PutEscaped(TextOf(static_cast<const TextualNode&>(n))); break;
    case Kind::CharRef:
    case Kind::EntityRef: WriteReference(n.kind_, static_cast<const Reference&>(n).GetChar(), state); break;
    case Kind::Comment:
        state.Open();
        state.Put(u"<!--");
        state.Put(TextOf(static_cast<const TextualNode&>(n)));
        state.Put(u"-->");
        state.NewLine();
        state.End();
        break;
    case Kind::Pi: {
        const Pi& pi = static_cast<const Pi&>(n);
        state.Open();
        state.Put(u"<?");
        state.Put(Name(n));
        if (pi.aux_ != 0) {
            state.Put(u' ');
            state.Put(TextOf(pi));
        }
        state.Put(u"?>");
        state.NewLine();
        state.End();
        break;
    }
    case Kind::CData:
        state.Open();
        state.Put(u"<![CDATA[");
        state.Put(TextOf(static_cast<const TextualNode&>(n)));
        state.Put(u"]]>");
        state.NewLine();
        state.End();
        break;
    default: break;  // containers go through WriteTree
    }
}

void Impl::WriteTree(const Node& top, WriterState& state) {
    enum class Phase : std::uint8_t { Attributes, Children };
    struct Frame {
        const Node* node;
        std::size_t next;
        Phase phase;
    };
    std::vector<Frame> stack;

    // Writes what comes before a node's children; containers go onto the stack.
    auto enter = [&](const Node& n) {
        switch (n.kind_) {
        case Kind::Document: {
            const Document& d = static_cast<const Document&>(n);
            state.Put(u"<?xml version=\"");
            state.Put(d.version_);
            state.Put(u"\" encoding=\"");
            state.Put(d.encoding_);
            state.Put(u"\"?>");
            state.NewLine();
            stack.push_back({&n, 0, Phase::Children});
            break;
        }
        case Kind::Element:
            state.Open();
            state.Put(u'<');
            state.Put(Name(n));
            stack.push_back({&n, 0, Phase::Attributes});
            break;
        case Kind::Attribute:
            state.Put(Name(n));
            state.Put(u"=\"");
            if (n.flags_ & kInlineValue) {
                ForEachInlinePiece(static_cast<const Attribute&>(n), [&state](const InlinePiece& p) {
                    if (p.kind == Kind::Text)
                        state.PutEscaped(p.text);
                    else
                        WriteReference(p.kind, p.character, state);
                });
                state.Put(u'"');
            } else {
                stack.push_back({&n, 0, Phase::Children});
            }
            break;
        default: WriteLeaf(n, state); break;
        }
    };

    enter(top);
    while (!stack.empty()) {
        Frame& f = stack.back();
        if (f.phase == Phase::Attributes) {
            const Element& e = static_cast<const Element&>(*f.node);
            if (f.next < e.attrCount_) {
                const Attribute& a = AttrAt(e, f.next++);
                state.Put(u' ');
                enter(a);  // may grow the stack: f is not used again this round
                continue;
            }
            if (e.aux_ > 0) {
                state.Put(u'>');
                f.phase = Phase::Children;
                f.next = 0;
            } else {
                state.Put(u"/>");
                state.End();
                stack.pop_back();
            }
            continue;
        }
        const NodeContainer& c = static_cast<const NodeContainer&>(*f.node);
        if (f.next < c.aux_) {
            enter(*c.children_[f.next++]);
            continue;
        }
        switch (c.kind_) {
        case Kind::Element:
            state.Close();
            state.Put(u"</");
            state.Put(Name(c));
            state.Put(u'>');
            break;
        case Kind::Attribute: state.Put(u'"'); break;
        default: break;
        }
        stack.pop_back();
    }
}

// About what WriteTree puts out for a tree: names twice, attribute values, texts, and a line with
// its indentation per element. Escapes are not counted; the figure only sizes the output once.
std::size_t Impl::WrittenSizeHint(const Node& top) {
    std::size_t size = 64;
    std::vector<std::pair<const Node*, std::size_t>> stack{{&top, 0}};
    while (!stack.empty()) {
        const auto [node, depth] = stack.back();
        stack.pop_back();
        const Node& n = *node;
        switch (n.kind_) {
        case Kind::Element: {
            const Element& e = static_cast<const Element&>(n);
            size += 2 * Name(n).size() + 2 * depth + 8;
            for (std::size_t i = 0; i < e.attrCount_; ++i) {
                const Attribute& a = AttrAt(e, i);
                size += Name(a).size() + 4;
                if (a.flags_ & kInlineValue)
                    size += a.aux_;
                else
                    stack.push_back({&a, depth});
            }
            [[fallthrough]];
        }
        case Kind::Document:
        case Kind::Attribute: {
            const NodeContainer& c = static_cast<const NodeContainer&>(n);
            for (std::size_t i = 0; i < c.aux_; ++i) stack.push_back({c.children_[i], depth + 1});
            break;
        }
        case Kind::Text:
        case Kind::Comment: size += TextOf(static_cast<const TextualNode&>(n)).size() + 8; break;
        default: size += 8; break;
        }
    }
    return size;
}

}  // namespace detail

void Element::Write(WriterState& state) const { Impl::WriteTree(*this, state); }
void Attribute::Write(WriterState& state) const { Impl::WriteTree(*this, state); }
void Document::Write(WriterState& state) const { Impl::WriteTree(*this, state); }
void Text::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }
void CData::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }
void Comment::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }
void Pi::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }
void CharRef::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }
void EntityRef::Write(WriterState& state) const { Impl::WriteLeaf(*this, state); }

void WriteDocument(const Document& document, std::u16string& out) {
    out.clear();
    // One allocation for the whole text: growing a reply of many thousand entries by doubling
    // copies it again and again.
    out.reserve(Impl::WrittenSizeHint(document));
    WriterState state(out);
    document.Write(state);
}

}  // namespace AdvXMLParser
