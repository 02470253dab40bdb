// Shared by the fuzz targets that read their input as a document.
#pragma once

#include <memory>
#include <string>

#include "xml/node.h"
#include "xml/parser.h"

namespace fuzzing {

// The first child element, passing over the white space the writer puts between elements.
inline const AdvXMLParser::Element* firstElement(const AdvXMLParser::Element& parent) {
    for (std::size_t i = 0; i < parent.GetChildCount(); ++i)
        if (const AdvXMLParser::Element* e = parent.GetChild(i).AsElement()) return e;
    return nullptr;
}

// The document, or null when the text is not one.
inline std::unique_ptr<AdvXMLParser::Document> parse(const std::u16string& text) {
    try {
        AdvXMLParser::Parser parser;
        return parser.Parse(text.data(), text.size());
    } catch (const AdvXMLParser::Exception&) {
        return nullptr;
    }
}

}  // namespace fuzzing
