// What the readers of a request can tell a checker of requests: where each record came from, what
// they accept but pass over or read leniently, and where they refuse the request. The module itself
// never listens (the session's notes are null), so the readers only pay a null test for it.
#pragma once

#include <string>

#include "request/cfgerror.h"

namespace AdvXMLParser {
class Element;
}

namespace qrl {

class TReadNotes {
public:
    virtual ~TReadNotes() = default;
    // `record` (an element definition, a data value, a form, a form item, ...) was read from `node`.
    virtual void Placed(const void* record, const AdvXMLParser::Element& node) = 0;
    // Read, but passed over or read leniently: accepted, probably not what the writer meant.
    virtual void Doubtful(const AdvXMLParser::Element& node, std::u16string text) = 0;
    // The request is refused at `node`; the reader throws `text` as ECfgError right after.
    virtual void Refused(const AdvXMLParser::Element& node, const std::u16string& text) = 0;
};

inline void NotePlaced(TReadNotes* notes, const void* record, const AdvXMLParser::Element& node) {
    if (notes) notes->Placed(record, node);
}
inline void NoteDoubtful(TReadNotes* notes, const AdvXMLParser::Element& node, std::u16string text) {
    if (notes) notes->Doubtful(node, std::move(text));
}
// Tells the notes where the request fails and throws `error`.
[[noreturn]] inline void Refuse(TReadNotes* notes, const AdvXMLParser::Element& node, ECfgError error) {
    if (notes) notes->Refused(node, error.Text());
    throw std::move(error);
}

}  // namespace qrl
