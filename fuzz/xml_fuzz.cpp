// Fuzz target of the XML reader and writer. Input bytes become 16-bit characters one for one, so
// that the markup stays easy to mutate; a byte 0xFF takes the next two bytes as one character
// (high byte first), for everything beyond Latin-1.
//
// Properties: the reader either builds a tree or throws ParsingException with a defined number;
// a compact write of a tree reads back and writes the same text again; the indented write reads
// back; a clone writes as its original.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "xml/node.h"
#include "xml/parser.h"

using namespace AdvXMLParser;

namespace {

std::u16string Decode(const std::uint8_t* data, std::size_t size) {
    std::u16string text;
    text.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0xFF && i + 2 < size) {
            text.push_back(static_cast<char16_t>((data[i + 1] << 8) | data[i + 2]));
            i += 2;
        } else {
            text.push_back(data[i]);
        }
    }
    return text;
}

std::u16string Compact(const Node& n) {
    std::u16string out;
    WriterState state(out, WriterState::kCompact);
    n.Write(state);
    return out;
}

std::unique_ptr<Document> MustParse(const std::u16string& text) {
    try {
        Parser parser;
        return parser.Parse(text.data(), text.size());
    } catch (const ParsingException&) {
        std::abort();  // our own output must always read back
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = Decode(data, size);
    std::unique_ptr<Document> doc;
    try {
        Parser parser;
        doc = parser.Parse(text.data(), text.size());
    } catch (const ParsingException& e) {
        if (e.GetErrorNumber() < 1 || e.GetErrorNumber() > 43 || e.GetLine() < 1 || e.GetColumn() < 0) std::abort();
        return 0;
    }
    if (!doc->Root()) std::abort();

    const std::u16string first = Compact(*doc);
    const std::u16string second = Compact(*MustParse(first));
    if (first != second) std::abort();

    std::u16string indented;
    WriteDocument(*doc, indented);
    MustParse(indented);

    std::unique_ptr<Node> copy = doc->Clone(nullptr);
    if (Compact(*copy) != first) std::abort();
    (void)doc->GetText();
    (void)doc->Root()->GetText();
    return 0;
}
