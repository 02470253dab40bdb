// The document type declaration: read in full, checked, and thrown away. Nothing declared here
// reaches the tree; entities declared here are still unknown to references.
#include <vector>

#include "xml/reader.h"

namespace AdvXMLParser::detail {

namespace {

bool IsQuoteChar(char16_t c) { return c == u'"' || c == u'\''; }

bool IsPublicChar(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')) return true;
    for (char16_t k : std::u16string_view(u" \r\n-'()+,./:=?;!*#@$_%"))
        if (c == k) return true;
    return false;
}

}  // namespace

// After "<!DOCTYPE".
void Reader::Doctype() {
    if (!SkipSpace()) Fail(kErrDoctype);
    TakeName(kErrDoctype);
    SkipSpace();
    ExternalId();
    SkipSpace();
    if (LookAhead() == u'[') {
        Get();
        InternalSubset();
        SkipSpace();
    }
    if (Get() != u'>') Fail(kErrDoctype);
}

// Comments and processing instructions are refused here on purpose.
void Reader::InternalSubset() {
    for (;;) {
        SkipSpace();
        if (Match(u"<!ELEMENT")) {
            ElementDecl();
        } else if (Match(u"<!ATTLIST")) {
            AttlistDecl();
        } else if (Match(u"<!ENTITY")) {
            EntityDecl();
        } else if (Match(u"<!NOTATION")) {
            NotationDecl();
        } else {
            const char16_t c = Get();
            if (c == u']') return;
            if (c != u'%') Fail(kErrDoctype);
            PeReference();
        }
    }
}

// After '%'.
void Reader::PeReference() {
    TakeName(kErrPeReference);
    if (Get() != u';') Fail(kErrPeReference);
}

void Reader::ElementDecl() {
    if (!SkipSpace()) Fail(kErrElementDecl);
    TakeName(kErrElementDecl);
    if (!SkipSpace()) Fail(kErrElementDecl);
    if (!Match(u"EMPTY") && !Match(u"ANY")) {
        if (LookAhead() != u'(') Fail(kErrElementDecl);
        const State group = Save();
        Get();
        SkipSpace();
        if (Match(u"#PCDATA")) {
            // Mixed: (#PCDATA), (#PCDATA)* or (#PCDATA|a|b)*.
            SkipSpace();
            if (!Match(u")*") && !Match(u")")) {
                do {
                    if (Get() != u'|') Fail(kErrMixed);
                    SkipSpace();
                    TakeName(kErrMixed);
                    SkipSpace();
                } while (!Match(u")*"));
            }
        } else {
            Restore(group);
            ChildrenModel();
        }
    }
    SkipSpace();
    if (Get() != u'>') Fail(kErrElementDecl);
}

void Reader::Occurrence() {
    const char16_t c = LookAhead();
    if (c == u'*' || c == u'+' || c == u'?') Get();
}

// A group of particles, nested to any depth: each open group keeps its separator, which the first
// character after its first particle decides, whatever that character is.
void Reader::ChildrenModel() {
    constexpr int kUndecided = -1;
    std::vector<int> separators;
    Get();  // '('
    separators.push_back(kUndecided);
    for (;;) {
        // A particle: a nested group or a Name.
        SkipSpace();
        if (LookAhead() == u'(') {
            Get();
            separators.push_back(kUndecided);
            continue;
        }
        TakeName(kErrParticle);
        Occurrence();
        // Then a separator, or the end of this group and possibly of the groups around it.
        for (;;) {
            SkipSpace();
            const char16_t c = Get();
            if (c == u')') {
                separators.pop_back();
                Occurrence();
                if (separators.empty()) return;
                continue;
            }
            int& separator = separators.back();
            if (separator == kUndecided)
                separator = c;
            else if (c != separator)
                Fail(separator == u'|' ? kErrMixed : kErrSeparator);
            break;
        }
    }
}

void Reader::AttlistDecl() {
    if (!SkipSpace()) Fail(kErrAttlist);
    TakeName(kErrAttlist);
    for (;;) {
        const State s = Save();
        if (!SkipSpace() || !TryName()) {
            Restore(s);
            break;
        }
        if (!SkipSpace()) Fail(kErrAttDef);
        AttType();
        if (!SkipSpace()) Fail(kErrAttDef);
        DefaultDecl();
    }
    SkipSpace();
    if (Get() != u'>') Fail(kErrAttlist);
}

void Reader::AttType() {
    // Longer words first, where one begins with another.
    static constexpr std::u16string_view kWords[] = {u"CDATA",    u"IDREFS", u"IDREF",    u"ID",
                                                     u"ENTITIES", u"ENTITY", u"NMTOKENS", u"NMTOKEN"};
    for (std::u16string_view w : kWords)
        if (Match(w)) return;
    if (Match(u"NOTATION")) {
        if (!SkipSpace() || Get() != u'(') Fail(kErrNotationType);
        SkipSpace();
        TakeName(kErrNotationType);
        for (;;) {
            SkipSpace();
            const char16_t c = Get();
            if (c == u')') return;
            if (c != u'|') Fail(kErrNotationType);
            SkipSpace();
            TakeName(kErrNotationType);
        }
    }
    if (Get() != u'(') Fail(kErrAttDef);
    SkipSpace();
    if (!TryNmtoken()) Fail(kErrEnumeration);
    for (;;) {
        SkipSpace();
        const char16_t c = Get();
        if (c == u')') return;
        if (c != u'|') Fail(kErrEnumeration);
        SkipSpace();
        if (!TryNmtoken()) Fail(kErrEnumeration);
    }
}

void Reader::DefaultDecl() {
    if (Match(u"#REQUIRED") || Match(u"#IMPLIED")) return;
    if (Match(u"#FIXED") && !SkipSpace()) Fail(kErrFixed);
    const char16_t quote = Get();
    if (!IsQuoteChar(quote)) Fail(kErrAttDef);
    AttributeValue(quote, nullptr);
}

void Reader::EntityDecl() {
    if (!SkipSpace()) Fail(kErrEntityDecl);
    bool parameter = false;
    if (LookAhead() == u'%') {
        Get();
        parameter = true;
        if (!SkipSpace()) Fail(kErrEntityDecl);
    }
    TakeName(kErrEntityDecl);
    if (!SkipSpace()) Fail(kErrEntityDecl);
    const char16_t c = LookAhead();
    if (IsQuoteChar(c)) {
        Get();
        EntityValue(c);
    } else if (ExternalId()) {
        const State s = Save();
        if (!parameter && SkipSpace() && Match(u"NDATA")) {
            if (!SkipSpace()) Fail(kErrNData);
            TakeName(kErrNData);
        } else {
            Restore(s);
        }
    } else {
        Fail(kErrEntityDecl);
    }
    SkipSpace();
    if (Get() != u'>') Fail(kErrEntityDecl);
}

void Reader::EntityValue(char16_t quote) {
    for (;;) {
        const char16_t c = Get();
        if (c == quote) return;
        if (c == u'%') {
            PeReference();
        } else if (c == u'&') {
            Reference();
        } else if (PastEnd()) {
            Fail(kErrEndOfText);
        } else if (IsControl(c)) {
            Fail(kErrControl);
        }
    }
}

void Reader::NotationDecl() {
    if (!SkipSpace()) Fail(kErrNotationDecl);
    TakeName(kErrNotationDecl);
    if (!SkipSpace()) Fail(kErrNotationDecl);
    if (Match(u"SYSTEM")) {
        if (!SkipSpace()) Fail(kErrExternalId);
        SystemLiteral();
    } else if (Match(u"PUBLIC")) {
        // A notation may name a public identifier alone.
        if (!SkipSpace()) Fail(kErrNotationPublic);
        PublicLiteral(kErrNotationPublic);
        const State s = Save();
        if (SkipSpace() && IsQuoteChar(LookAhead()))
            SystemLiteral();
        else
            Restore(s);
    } else {
        Fail(kErrNotationDecl);
    }
    SkipSpace();
    if (Get() != u'>') Fail(kErrNotationDecl);
}

bool Reader::ExternalId() {
    if (Match(u"SYSTEM")) {
        if (!SkipSpace()) Fail(kErrExternalId);
        SystemLiteral();
        return true;
    }
    if (Match(u"PUBLIC")) {
        if (!SkipSpace()) Fail(kErrExternalId);
        PublicLiteral(kErrExternalId);
        if (!SkipSpace()) Fail(kErrExternalId);
        SystemLiteral();
        return true;
    }
    return false;
}

void Reader::SystemLiteral() {
    const char16_t quote = Get();
    if (!IsQuoteChar(quote)) Fail(kErrExternalId);
    for (;;) {
        const char16_t c = Get();
        if (c == quote) return;
        if (PastEnd()) Fail(kErrEndOfText);
        if (IsControl(c)) Fail(kErrControl);
    }
}

void Reader::PublicLiteral(int notQuotedNumber) {
    const char16_t quote = Get();
    if (!IsQuoteChar(quote)) Fail(notQuotedNumber);
    for (;;) {
        const char16_t c = Get();
        if (c == quote) return;
        if (!IsPublicChar(c)) Fail(kErrPublicChar);
    }
}

}  // namespace AdvXMLParser::detail
