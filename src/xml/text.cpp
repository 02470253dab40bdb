// The text of a container: the texts of its children, joined, then trimmed (attributes) or with
// white space collapsed (elements, documents). A child element contributes its own finished text,
// so the walk is post-order; it keeps its own stack so that deep trees cannot exhaust the C++ one.
#include <algorithm>
#include <vector>

#include "text/textutil.h"
#include "xml/impl.h"

namespace AdvXMLParser {

using detail::Impl;
using namespace detail;

namespace detail {

std::u16string CollapseSpace(std::u16string_view text) {
    text = qrl::trimXmlSpace(text);
    std::u16string out;
    out.reserve(text.size());
    bool inSpace = false;
    for (char16_t c : text) {
        if (qrl::isXmlSpace(c)) {
            if (!inSpace) out.push_back(u' ');
            inSpace = true;
        } else {
            out.push_back(c);
            inSpace = false;
        }
    }
    return out;
}

namespace {

std::u16string Finish(const NodeContainer& c, std::u16string&& joined) {
    switch (Impl::KindOf(c)) {
    case Impl::Kind::Attribute: return std::u16string(qrl::trimXmlSpace(joined));
    case Impl::Kind::Element:
        if (Impl::Flags(c) & kPreserve) return std::move(joined);
        return CollapseSpace(joined);
    default: return CollapseSpace(joined);
    }
}

void AppendLeafText(const Node& n, std::u16string& out) {
    switch (Impl::KindOf(n)) {
    case Impl::Kind::Text:
    case Impl::Kind::CData:
    case Impl::Kind::Comment: out.append(Impl::TextOf(static_cast<const TextualNode&>(n))); break;
    case Impl::Kind::Pi: out.append(Impl::TextOf(static_cast<const Pi&>(n))); break;
    case Impl::Kind::CharRef:
    case Impl::Kind::EntityRef: out.push_back(static_cast<const Reference&>(n).GetChar()); break;
    default: out.append(n.GetText()); break;
    }
}

}  // namespace

std::u16string Impl::ContainerText(const NodeContainer& top) {
    struct Frame {
        const NodeContainer* container;
        std::size_t next;
        std::u16string joined;
    };
    std::vector<Frame> stack;
    stack.push_back({&top, 0, {}});
    for (;;) {
        Frame& f = stack.back();
        const NodeContainer& c = *f.container;
        if (Flags(c) & kInlineValue) {
            f.joined.clear();
            AppendInlineText(static_cast<const Attribute&>(c), f.joined);
            f.next = 0;
        } else if (f.next < ChildCount(c)) {
            const Node& child = *ChildAt(c, f.next++);
            if (IsContainer(child))
                stack.push_back({static_cast<const NodeContainer*>(&child), 0, {}});
            else
                AppendLeafText(child, f.joined);
            continue;
        }
        std::u16string done = Finish(c, std::move(f.joined));
        stack.pop_back();
        if (stack.empty()) return done;
        stack.back().joined.append(done);
    }
}

}  // namespace detail

std::u16string Attribute::GetText() const {
    std::u16string text;
    AssignText(text);
    return text;
}

void Attribute::AssignText(std::u16string& out) const {
    if ((flags_ & kInlineValue) && !(flags_ & kInlineRefs)) {
        if (!(flags_ & kInlineNarrow)) {
            std::u16string none;
            out.assign(qrl::trimXmlSpace(Impl::InlineValue(*this, none)));
            return;
        }
        // Trimmed and widened in one go: request readers ask for every value.
        const unsigned char* from = Impl::InlineBytes(*this);
        const unsigned char* to = from + aux_;
        while (from != to && IsSpace(*from)) ++from;
        while (to != from && IsSpace(to[-1])) --to;
        // Widened in place: assign from a range of bytes would build a string of its own first.
        out.resize(static_cast<std::size_t>(to - from));
        std::copy(from, to, out.begin());
        return;
    }
    // An absent attribute is the shared empty one: readers ask for many of those.
    if (Impl::ChildCount(*this) == 0)
        out.clear();
    else
        out = Impl::ContainerText(*this);
}
std::u16string Attribute::GetValue() const { return GetText(); }

std::u16string Element::GetText() const { return Impl::ContainerText(*this); }
std::u16string Element::GetValue() const { return {}; }

std::u16string Document::GetText() const { return Impl::ContainerText(*this); }
std::u16string Document::GetValue() const { return {}; }

}  // namespace AdvXMLParser
