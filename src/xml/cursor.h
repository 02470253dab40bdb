// The reader's cursor over the text, with the line and column that errors report.
//
// Get() reads one character: CR and the pair CR LF read as one LF; at the end of the text it
// returns 0 and the cursor counts as past the end, which no Unget() undoes. A line end adds a line
// and sets the column to 0, any other character adds 1 to the column (so columns on the first line
// run one ahead of the others: the column starts at 1). Unget() steps back one character and takes
// back the column from before the last Get(); it takes back a line only when it steps over an LF in
// the text, so a lone CR that is read and put back stays counted.
//
// The bulk operations (SkipSpace, ScanRun, ScanNameRest, LookAhead, Match) leave exactly the state
// that the equivalent sequence of Get() and Unget() would; the tests compare them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace AdvXMLParser::detail {

// Character classes of ASCII; every character from 128 up is plain text and a further name
// character, except as IsNameChar says.
enum : std::uint8_t {
    kClsNameStart = 1u << 0,
    kClsNameChar = 1u << 1,
    kStopText = 1u << 2,     // element content: < & ] and controls
    kStopAttr = 1u << 3,     // attribute value: both quotes, & < and controls
    kStopComment = 1u << 4,  // - and controls
    kStopCData = 1u << 5,    // ] and controls
    kStopPi = 1u << 6,       // ? and controls
};
constexpr std::array<std::uint8_t, 128> MakeCharClass() {
    std::array<std::uint8_t, 128> t{};
    for (int c = 0; c < 32; ++c)
        if (c != '\t') t[c] |= kStopText | kStopAttr | kStopComment | kStopCData | kStopPi;
    for (int c = 'A'; c <= 'Z'; ++c) t[c] |= kClsNameStart | kClsNameChar;
    for (int c = 'a'; c <= 'z'; ++c) t[c] |= kClsNameStart | kClsNameChar;
    for (int c = '0'; c <= '9'; ++c) t[c] |= kClsNameChar;
    t['_'] |= kClsNameStart | kClsNameChar;
    t[':'] |= kClsNameStart | kClsNameChar;
    t['.'] |= kClsNameChar;
    t['-'] |= kClsNameChar | kStopComment;
    t['<'] |= kStopText | kStopAttr;
    t['&'] |= kStopText | kStopAttr;
    t[']'] |= kStopText | kStopCData;
    t['"'] |= kStopAttr;
    t['\''] |= kStopAttr;
    t['?'] |= kStopPi;
    return t;
}
inline constexpr std::array<std::uint8_t, 128> kCharClass = MakeCharClass();

inline bool IsNameStart(char16_t c) { return c < 128 && (kCharClass[c] & kClsNameStart); }
inline bool IsNameChar(char16_t c) {
    if (c < 128) return kCharClass[c] & kClsNameChar;
    return c == 183 || (c >= 192 && c != 215 && c != 247);
}
inline bool IsControl(char16_t c) { return c < 32 && c != u'\t' && c != u'\n' && c != u'\r'; }

// The printable ASCII characters of a stop class, repeated to fill four places.
template <std::uint8_t Stop>
constexpr std::array<char16_t, 4> StopMarks() {
    std::array<char16_t, 4> marks{};
    std::size_t n = 0;
    for (int c = 32; c < 128; ++c)
        if (kCharClass[c] & Stop) marks[n++] = static_cast<char16_t>(c);
    for (std::size_t i = n; i < marks.size(); ++i) marks[i] = marks[0];
    return marks;
}

// The first character from p on that belongs to the stop class, or e. Every class holds the
// controls but tab and at most four printable characters, so eight characters are tested at once.
template <std::uint8_t Stop>
inline const char16_t* FindStop(const char16_t* p, const char16_t* e) {
#if defined(__SSE2__)
    constexpr std::array<char16_t, 4> marks = StopMarks<Stop>();
    const __m128i m0 = _mm_set1_epi16(static_cast<short>(marks[0]));
    const __m128i m1 = _mm_set1_epi16(static_cast<short>(marks[1]));
    const __m128i m2 = _mm_set1_epi16(static_cast<short>(marks[2]));
    const __m128i m3 = _mm_set1_epi16(static_cast<short>(marks[3]));
    const __m128i tab = _mm_set1_epi16(u'\t');
    const __m128i below32 = _mm_set1_epi16(31);
    const __m128i zero = _mm_setzero_si128();
    while (e - p >= 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i control = _mm_cmpeq_epi16(_mm_subs_epu16(v, below32), zero);
        __m128i hit = _mm_andnot_si128(_mm_cmpeq_epi16(v, tab), control);
        hit = _mm_or_si128(hit, _mm_or_si128(_mm_cmpeq_epi16(v, m0), _mm_cmpeq_epi16(v, m1)));
        hit = _mm_or_si128(hit, _mm_or_si128(_mm_cmpeq_epi16(v, m2), _mm_cmpeq_epi16(v, m3)));
        const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(hit));
        if (mask) return p + std::countr_zero(mask) / 2;
        p += 8;
    }
#endif
    while (p != e && (*p >= 128 || !(kCharClass[*p] & Stop))) ++p;
    return p;
}

class Cursor {
public:
    struct State {
        const char16_t* current;
        std::uint32_t line;
        std::uint32_t column;
        std::uint32_t previousColumn;
        bool pastEnd;
    };

    void Reset(const char16_t* text, std::size_t length) {
        begin_ = cur_ = text;
        end_ = text + length;
        line_ = col_ = prevCol_ = 1;
        pastEnd_ = false;
    }

    char16_t Get() {
        if (cur_ == end_) {
            pastEnd_ = true;
            return 0;
        }
        prevCol_ = col_;
        char16_t c = *cur_++;
        if (c == u'\r') {
            if (cur_ != end_ && *cur_ == u'\n') ++cur_;
            c = u'\n';
        }
        if (c == u'\n') {
            ++line_;
            col_ = 0;
        } else {
            ++col_;
        }
        return c;
    }

    void Unget() {
        if (pastEnd_) return;
        if (cur_ == begin_) {
            line_ = col_ = prevCol_ = 1;
            return;
        }
        --cur_;
        if (*cur_ == u'\n') {
            if (cur_ != begin_ && cur_[-1] == u'\r') --cur_;
            --line_;
        }
        col_ = prevCol_;
    }

    // Get() and Unget(): the next character, left unread.
    char16_t LookAhead() {
        if (cur_ == end_) {
            pastEnd_ = true;
            return 0;
        }
        prevCol_ = col_;
        const char16_t c = *cur_;
        if (c == u'\r') {
            if (!(cur_ + 1 != end_ && cur_[1] == u'\n')) ++line_;  // a lone CR is not stepped back over as a line end
            return u'\n';
        }
        if (c == u'\n' && cur_ != begin_ && cur_[-1] == u'\r') --cur_;
        return c;
    }

    // A literal of characters other than CR, LF and 0: all of it, or nothing read.
    bool Match(std::u16string_view literal) {
        const std::size_t n = literal.size();
        if (n == 0) return true;
        if (static_cast<std::size_t>(end_ - cur_) < n) return false;
        for (std::size_t i = 0; i < n; ++i)
            if (cur_[i] != literal[i]) return false;
        Advance(n);
        return true;
    }

    // Blank, tab, CR, LF; true if at least one was skipped.
    bool SkipSpace() {
        bool any = false;
        for (;;) {
            if (cur_ == end_) {
                pastEnd_ = true;
                return any;
            }
            const char16_t c = *cur_;
            if (c == u' ' || c == u'\t') {
                prevCol_ = col_++;
                ++cur_;
            } else if (c == u'\n' || c == u'\r') {
                NewLine();
            } else {
                prevCol_ = col_;  // the character that ended the run, read and put back
                return any;
            }
            any = true;
        }
    }

    // Reads a run of characters up to the first one of the stop class (CR and LF are read as part
    // of the run); text of kStopText stops at ']' only where "]]>" begins. The stop character is
    // not read.
    template <std::uint8_t Stop>
    void ScanRun() {
        const char16_t* p = cur_;
        const char16_t* const e = end_;
        for (;;) {
            const char16_t* s = p;
            p = FindStop<Stop>(p, e);
            if (p != s) {
                const std::uint32_t n = static_cast<std::uint32_t>(p - s);
                prevCol_ = col_ + n - 1;
                col_ += n;
            }
            if (p == e) break;
            const char16_t c = *p;
            if (c == u'\n' || c == u'\r') {
                cur_ = p;
                NewLine();
                p = cur_;
                continue;
            }
            if (Stop == kStopText && c == u']' && !(e - p >= 3 && p[1] == u']' && p[2] == u'>')) {
                prevCol_ = col_++;
                ++p;
                continue;
            }
            break;
        }
        cur_ = p;
    }

    // The rest of a Name or Nmtoken: name characters, then the first other one read and put back.
    void ScanNameRest() {
        const char16_t* p = cur_;
        while (p != end_ && IsNameChar(*p)) ++p;
        Advance(static_cast<std::size_t>(p - cur_));
        LookAhead();
    }

    State Save() const { return {cur_, line_, col_, prevCol_, pastEnd_}; }
    void Restore(const State& s) {
        cur_ = s.current;
        line_ = s.line;
        col_ = s.column;
        prevCol_ = s.previousColumn;
        pastEnd_ = s.pastEnd;
    }

    const char16_t* Position() const { return cur_; }
    bool PastEnd() const { return pastEnd_; }
    std::uint32_t Line() const { return line_; }
    std::uint32_t Column() const { return col_; }
    std::uint32_t PreviousColumn() const { return prevCol_; }

protected:
    // n characters that are not line ends, each as one Get().
    void Advance(std::size_t n) {
        if (n == 0) return;
        cur_ += n;
        prevCol_ = col_ + static_cast<std::uint32_t>(n) - 1;
        col_ += static_cast<std::uint32_t>(n);
    }
    // Get() of a CR, LF or CR LF at the cursor.
    void NewLine() {
        prevCol_ = col_;
        ++line_;
        col_ = 0;
        if (*cur_++ == u'\r' && cur_ != end_ && *cur_ == u'\n') ++cur_;
    }

    const char16_t* begin_ = nullptr;
    const char16_t* cur_ = nullptr;
    const char16_t* end_ = nullptr;
    std::uint32_t line_ = 1;
    std::uint32_t col_ = 1;
    std::uint32_t prevCol_ = 1;
    bool pastEnd_ = false;
};

}  // namespace AdvXMLParser::detail
