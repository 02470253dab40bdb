// Small helpers shared by the XML tests.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "xml/node.h"
#include "xml/parser.h"

namespace xmltest {

inline std::unique_ptr<AdvXMLParser::Document> Parse(std::u16string_view text) {
    AdvXMLParser::Parser parser;
    return parser.Parse(text.data(), text.size());
}

struct Failure {
    int number = 0;
    int line = 0;
    int column = 0;
    bool operator==(const Failure&) const = default;
};
inline std::ostream& operator<<(std::ostream& os, const Failure& f) {
    return os << "{error " << f.number << " at " << f.line << ":" << f.column << "}";
}

// The failure of a text that must not parse; {0,0,0} if it parsed.
inline Failure FailureOf(std::u16string_view text) {
    try {
        Parse(text);
    } catch (const AdvXMLParser::ParsingException& e) {
        return {e.GetErrorNumber(), e.GetLine(), e.GetColumn()};
    }
    return {};
}

// The children of a node as "<type number><name>=<value>" joined by "|", so that one comparison
// covers a whole child list. Each child must be of exactly one type, be an Element only if it says
// so, and name its container as owner.
inline std::u16string Children(const AdvXMLParser::NodeContainer& n) {
    std::u16string out;
    for (std::size_t i = 0; i < n.GetChildCount(); ++i) {
        const AdvXMLParser::Node& c = n.GetChild(i);
        int type = 0, types = 0;
        for (int t = 0; t <= 10; ++t)
            if (c.IsOfType(t)) type = t, ++types;
        EXPECT_EQ(types, 1) << "child " << i;
        EXPECT_EQ(c.AsElement() != nullptr, type == AdvXMLParser::kElement) << "child " << i;
        EXPECT_EQ(c.GetOwner(), &n) << "child " << i;
        out += (i ? u"|" : u"") + std::u16string(1, char16_t(u'0' + type));
        out += std::u16string(c.GetName()) + u"=" + c.GetValue();
    }
    return out;
}

// The attributes of an element as "name=text" joined by "|"; each must name the element as owner.
inline std::u16string Attributes(const AdvXMLParser::Element& e) {
    std::u16string out;
    for (std::size_t i = 0; i < e.GetAttributeCount(); ++i) {
        const AdvXMLParser::Attribute& a = e.GetAttributeAt(i);
        EXPECT_EQ(a.GetOwner(), &e) << "attribute " << i;
        out += (i ? u"|" : u"") + std::u16string(a.GetName()) + u"=" + a.GetText();
    }
    return out;
}

inline std::u16string Written(const AdvXMLParser::Document& d) {
    std::u16string out;
    AdvXMLParser::WriteDocument(d, out);
    return out;
}

// The head of every reply the module writes.
constexpr std::u16string_view kReplyHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n";

// A reply of these Data items, each an indented line of its own; "<Data/>" when there are none.
inline std::u16string DataReply(std::u16string_view items) {
    const std::u16string data = items.empty() ? u"  <Data/>\n" : u"  <Data>\n" + std::u16string(items) + u"  </Data>\n";
    return std::u16string(kReplyHead) + data + u"</Config>";
}

// The reply a block writer makes under <Config><Data>, written as the reply writers write it.
template <class WriteBlock>
std::u16string DataReplyOf(WriteBlock writeBlock) {
    AdvXMLParser::Document doc(u"Config");
    writeBlock(doc.Root()->AddElement(u"Data"));
    return Written(doc);
}

inline std::u16string WrittenCompact(const AdvXMLParser::Node& n) {
    std::u16string out;
    AdvXMLParser::WriterState state(out, AdvXMLParser::WriterState::kCompact);
    n.Write(state);
    return out;
}

}  // namespace xmltest
