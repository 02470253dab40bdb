// Small helpers shared by the XML tests.
#pragma once

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

inline std::u16string Written(const AdvXMLParser::Document& d) {
    std::u16string out;
    AdvXMLParser::WriteDocument(d, out);
    return out;
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
