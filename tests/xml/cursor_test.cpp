#include "xml/cursor.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using AdvXMLParser::detail::Cursor;
namespace d = AdvXMLParser::detail;

namespace {

struct Pos {
    std::size_t offset;
    std::uint32_t line, column, previous;
    bool pastEnd;
    bool operator==(const Pos&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Pos& p) {
    return os << "{@" << p.offset << " " << p.line << ":" << p.column << " prev " << p.previous
              << (p.pastEnd ? " past end}" : "}");
}

class TestCursor : public Cursor {
public:
    explicit TestCursor(const std::u16string& text) : text_(text) { Reset(text_.data(), text_.size()); }
    Pos At() const {
        return {static_cast<std::size_t>(Position() - text_.data()), Line(), Column(), PreviousColumn(), PastEnd()};
    }
    const std::u16string& text_;
};

// Each row runs Get ('g') and Unget ('u') over a text and checks the last character read ('-' for
// none) and where the cursor stands.
TEST(XmlCursor, LineEndsColumnsAndUnget) {
    const struct Case { const char16_t* text; const char* steps; char16_t last; Pos at; } cases[] = {
        {u"a\r\nb\rc\nd", "", u'-', {0, 1, 1, 1, false}},
        {u"a\r\nb\rc\nd", "g", u'a', {1, 1, 2, 1, false}},  // the first line counts from 1 before any read
        {u"a\r\nb\rc\nd", "gg", u'\n', {3, 2, 0, 2, false}},  // CR LF is one LF
        {u"a\r\nb\rc\nd", "ggg", u'b', {4, 2, 1, 0, false}},
        {u"a\r\nb\rc\nd", "gggg", u'\n', {5, 3, 0, 1, false}},  // a lone CR too
        {u"a\r\nb\rc\nd", "ggggggg", u'd', {8, 4, 1, 0, false}},
        {u"a\r\nb\rc\nd", "gggggggg", 0, {8, 4, 1, 0, true}},
        {u"a\r\nb\rc\nd", "ggggggggu", 0, {8, 4, 1, 0, true}},  // a read past the end is never undone
        {u"ab\r\nc\rd", "gggu", u'\n', {2, 1, 3, 3, false}},  // back before the CR, line taken back
        {u"ab\r\nc\rd", "ggguggg", u'\n', {6, 3, 0, 1, false}},
        {u"ab\r\nc\rd", "gggugggu", u'\n', {5, 3, 1, 1, false}},  // stepped back over a CR: the line stays
        {u"ab\r\nc\rd", "gggugggug", u'\n', {6, 4, 0, 1, false}},
        {u"abc", "ggguu", u'c', {1, 1, 3, 3, false}},  // the column comes from the one remembered value
        {u"abc", "ggguuuu", u'c', {0, 1, 1, 1, false}},  // before the beginning: back to the start state
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.steps);
        const std::u16string text = c.text;
        TestCursor cursor(text);
        char16_t last = u'-';
        for (const char* s = c.steps; *s; ++s)
            if (*s == 'g') last = cursor.Get();
            else cursor.Unget();
        EXPECT_EQ(last, c.last);
        EXPECT_EQ(cursor.At(), c.at);
    }
}

// Reference versions of the bulk operations, built from Get and Unget only.
bool RefSkipSpace(Cursor& c) {
    bool any = false;
    for (char16_t ch = c.Get(); ch == u' ' || ch == u'\t' || ch == u'\n'; ch = c.Get()) any = true;
    c.Unget();
    return any;
}
char16_t RefLookAhead(Cursor& c) {
    const char16_t ch = c.Get();
    c.Unget();
    return ch;
}
bool RefMatch(Cursor& c, std::u16string_view literal) {
    const Cursor::State s = c.Save();
    for (char16_t ch : literal)
        if (c.Get() != ch) {
            c.Restore(s);
            return false;
        }
    return true;
}
void RefScanText(Cursor& c, const char16_t* end) {
    for (;;) {
        const char16_t* p = c.Position();
        if (p == end) return;
        const Cursor::State s = c.Save();
        const char16_t ch = c.Get();
        const bool lineEnd = ch == u'\n';
        const bool cdataEnd = ch == u']' && end - p >= 3 && p[1] == u']' && p[2] == u'>';
        const bool stop = ch < 128 && (d::kCharClass[ch] & d::kStopText) && ch != u']';
        if (!lineEnd && (stop || cdataEnd)) {
            c.Restore(s);
            return;
        }
    }
}
void RefScanName(Cursor& c) {
    while (d::IsNameChar(c.Get())) {
    }
    c.Unget();
}

TEST(XmlCursor, BulkOperationsEqualReadingOneByOne) {
    static const char16_t kAlphabet[] = u"ab< \t\r\n]]>-_:.\u00e9\u00b7\u00d7\x01?";
    std::mt19937 random(12345);
    std::uniform_int_distribution<int> pick(0, static_cast<int>(std::size(kAlphabet)) - 2);
    for (int round = 0; round < 20000; ++round) {
        std::u16string text;
        const int length = 1 + round % 20;  // the bulk scans test eight characters at a time
        for (int i = 0; i < length; ++i) text.push_back(kAlphabet[pick(random)]);
        TestCursor a(text), b(text);
        const int reads = static_cast<int>(random() % (text.size() + 2));
        for (int i = 0; i < reads; ++i) {
            a.Get();
            b.Get();
        }
        if (random() % 4 == 0) {
            a.Unget();
            b.Unget();
        }
        const Pos start = a.At();
        const char16_t* end = text.data() + text.size();
        switch (round % 5) {
        case 0: EXPECT_EQ(a.SkipSpace(), RefSkipSpace(b)); break;
        case 1: EXPECT_EQ(a.LookAhead(), RefLookAhead(b)); break;
        case 2: EXPECT_EQ(a.Match(u"]]>"), RefMatch(b, u"]]>")); break;
        case 3:
            a.ScanRun<d::kStopText>();
            RefScanText(b, end);
            break;
        case 4:
            a.ScanNameRest();
            RefScanName(b);
            break;
        }
        ASSERT_EQ(a.At(), b.At()) << "operation " << round % 5 << " from " << start;
    }
}

}  // namespace
