// The nodes without children: text, CDATA, comments, processing instructions, references.
#include <cstring>

#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

namespace detail {

namespace {
char16_t* NewTextArray(std::size_t length) { return new char16_t[TextCapacity(length)]; }
}  // namespace

void Impl::SetHeapText(TextualNode& t, std::u16string_view text) {
    char16_t* p = nullptr;
    if (!text.empty()) {
        p = NewTextArray(text.size());
        std::memcpy(p, text.data(), text.size() * sizeof(char16_t));
    }
    if (t.flags_ & kOwnsText) delete[] t.text_;
    t.text_ = p;
    t.aux_ = static_cast<std::uint32_t>(text.size());
    t.flags_ = static_cast<std::uint16_t>(p ? (t.flags_ | kOwnsText) : (t.flags_ & ~kOwnsText));
}

void Impl::SetHeapText(Pi& pi, std::u16string_view text) {
    char16_t* p = nullptr;
    if (!text.empty()) {
        p = new char16_t[text.size()];
        std::memcpy(p, text.data(), text.size() * sizeof(char16_t));
        pi.flags_ |= kOwnsText;
    }
    pi.text_ = p;
    pi.aux_ = static_cast<std::uint32_t>(text.size());
}

// Texts that callers build up piece by piece grow in place within their power-of-two capacity.
void Impl::AppendText(TextualNode& t, std::u16string_view more) {
    if (more.empty()) return;
    const std::size_t length = t.aux_;
    const std::size_t total = length + more.size();
    if ((t.flags_ & kOwnsText) && total <= TextCapacity(length)) {
        std::memcpy(const_cast<char16_t*>(t.text_) + length, more.data(), more.size() * sizeof(char16_t));
    } else {
        char16_t* p = NewTextArray(total);
        if (length) std::memcpy(p, t.text_, length * sizeof(char16_t));
        std::memcpy(p + length, more.data(), more.size() * sizeof(char16_t));
        if (t.flags_ & kOwnsText) delete[] t.text_;
        t.text_ = p;
        t.flags_ |= kOwnsText;
    }
    t.aux_ = static_cast<std::uint32_t>(total);
}

}  // namespace detail

TextualNode::TextualNode(Kind kind, std::u16string_view text) : Node(kind, 0) { Impl::SetHeapText(*this, text); }

TextualNode::~TextualNode() {
    if (flags_ & kOwnsText) delete[] text_;
}

std::u16string TextualNode::GetValue() const { return std::u16string(text_, aux_); }
std::u16string TextualNode::GetText() const { return std::u16string(text_, aux_); }

Text::Text(std::u16string_view text) : TextualNode(Kind::Text, text) {}
CData::CData(std::u16string_view text) : TextualNode(Kind::CData, text) {}
Comment::Comment(std::u16string_view text) : TextualNode(Kind::Comment, text) {}

Pi::Pi(std::u16string_view target, std::u16string_view text) : Node(Kind::Pi, kOwnsName), name_(NewHeapName(target)) {
    try {
        Impl::SetHeapText(*this, text);
    } catch (...) {
        FreeHeapName(name_);
        throw;
    }
}

Pi::Pi(const NameRec* target, std::uint16_t flags) : Node(Kind::Pi, flags), name_(target) {}

Pi::~Pi() {
    if (flags_ & kOwnsText) delete[] text_;
    if (flags_ & kOwnsName) FreeHeapName(name_);
}

std::u16string Pi::GetValue() const { return std::u16string(text_, aux_); }
std::u16string Pi::GetText() const { return std::u16string(text_, aux_); }

std::u16string Reference::GetValue() const { return std::u16string(1, GetChar()); }
std::u16string Reference::GetText() const { return std::u16string(1, GetChar()); }

CharRef::CharRef(char16_t c) : Reference(Kind::CharRef, c, 0) {}

namespace {
char16_t EntityCharacter(std::u16string_view name) {
    const Entity* e = FindEntity(name);
    if (!e) throw InvalidRefException();
    return e->character;
}
}  // namespace

EntityRef::EntityRef(std::u16string_view name) : Reference(Kind::EntityRef, EntityCharacter(name), 0) {}

}  // namespace AdvXMLParser
