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

TEST(XmlCursor, ReadsLineEndsAsOneLfAndCountsColumns) {
    const std::u16string text = u"a\r\nb\rc\nd";
    TestCursor c(text);
    EXPECT_EQ(c.At(), (Pos{0, 1, 1, 1, false}));
    EXPECT_EQ(c.Get(), u'a');
    EXPECT_EQ(c.At(), (Pos{1, 1, 2, 1, false}));  // the first line counts from 1 before any read
    EXPECT_EQ(c.Get(), u'\n');                     // CR LF is one LF
    EXPECT_EQ(c.At(), (Pos{3, 2, 0, 2, false}));
    EXPECT_EQ(c.Get(), u'b');
    EXPECT_EQ(c.At(), (Pos{4, 2, 1, 0, false}));
    EXPECT_EQ(c.Get(), u'\n');  // a lone CR too
    EXPECT_EQ(c.At(), (Pos{5, 3, 0, 1, false}));
    EXPECT_EQ(c.Get(), u'c');
    EXPECT_EQ(c.Get(), u'\n');
    EXPECT_EQ(c.Get(), u'd');
    EXPECT_EQ(c.At(), (Pos{8, 4, 1, 0, false}));
    EXPECT_EQ(c.Get(), 0);
    EXPECT_EQ(c.At(), (Pos{8, 4, 1, 0, true}));
    c.Unget();  // a read past the end is never undone
    EXPECT_EQ(c.At(), (Pos{8, 4, 1, 0, true}));
    EXPECT_EQ(c.Get(), 0);
}

TEST(XmlCursor, UngetStepsBackOverLineEndsAsWritten) {
    const std::u16string text = u"ab\r\nc\rd";
    TestCursor c(text);
    c.Get();
    c.Get();
    c.Get();  // CR LF
    c.Unget();
    EXPECT_EQ(c.At(), (Pos{2, 1, 3, 3, false})) << "back before the CR, line taken back";
    c.Get();
    c.Get();  // c
    c.Get();  // lone CR, read as LF
    EXPECT_EQ(c.At(), (Pos{6, 3, 0, 1, false}));
    c.Unget();
    // The character stepped over is a CR, not an LF: the line stays counted.
    EXPECT_EQ(c.At(), (Pos{5, 3, 1, 1, false}));
    EXPECT_EQ(c.Get(), u'\n');
    EXPECT_EQ(c.At(), (Pos{6, 4, 0, 1, false}));
}

TEST(XmlCursor, UngetRemembersOnlyOneColumn) {
    const std::u16string text = u"abc";
    TestCursor c(text);
    c.Get();
    c.Get();
    c.Get();
    c.Unget();
    c.Unget();  // the column comes from the one remembered value
    EXPECT_EQ(c.At(), (Pos{1, 1, 3, 3, false}));
    c.Unget();
    c.Unget();  // before the beginning: back to the start state
    EXPECT_EQ(c.At(), (Pos{0, 1, 1, 1, false}));
}

// Reference versions of the bulk operations, built from Get and Unget only.
bool RefSkipSpace(Cursor& c) {
    bool any = false;
    for (;;) {
        const char16_t ch = c.Get();
        if (ch == u' ' || ch == u'\t' || ch == u'\n') {
            any = true;
        } else {
            c.Unget();
            return any;
        }
    }
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
        const int length = 1 + round % 12;
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
