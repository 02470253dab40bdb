// The XML reader: one complete 16-bit text in memory becomes a Document, or a ParsingException
// with the error number, line and column at the moment of failure. The document type declaration
// is checked and thrown away; nothing of it reaches the tree.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "xml/node.h"

namespace AdvXMLParser {

class ParsingException : public Exception {
public:
    ParsingException(int errorNumber, int line, int column)
        : errorNumber_(errorNumber), line_(line), column_(column) {}
    const char* what() const noexcept override;
    int GetErrorNumber() const { return errorNumber_; }
    int GetLine() const { return line_; }
    int GetColumn() const { return column_; }

private:
    int errorNumber_;
    int line_;
    int column_;
};

// Where an element's start tag stands: the offset of its "<" in the text, in 16-bit characters.
struct ElementStart {
    const Element* element;
    std::size_t offset;
};

class Parser {
public:
    // The document belongs to the caller. On failure nothing of the tree survives.
    std::unique_ptr<Document> Parse(const char16_t* text, std::size_t length);
    // The same, noting where each element starts, in document order: for tools that point a writer
    // of requests at a place in the text. The tree itself keeps no positions.
    std::unique_ptr<Document> Parse(const char16_t* text, std::size_t length, std::vector<ElementStart>& starts);
};

}  // namespace AdvXMLParser
