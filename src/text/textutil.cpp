#include "text/textutil.h"

#include <climits>

namespace qrl {

char16_t foldCase(char16_t c) { return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c; }

int icompare(std::u16string_view a, std::u16string_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const int ca = foldCase(a[i]);
        const int cb = foldCase(b[i]);
        if (ca != cb) return ca - cb;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool iequals(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (foldCase(a[i]) != foldCase(b[i])) return false;
    return true;
}

bool istartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.size() >= prefix.size() && iequals(text.substr(0, prefix.size()), prefix);
}

std::size_t IHash::operator()(std::u16string_view s) const {
    std::size_t h = 1469598103934665603ull;  // FNV-1a over folded characters
    for (char16_t c : s) {
        h ^= foldCase(c);
        h *= 1099511628211ull;
    }
    return h;
}

// The runtime's wide table marks the no-break space as white space too.
bool isRuntimeSpace(char16_t c) { return c == u' ' || (c >= 9 && c <= 13) || c == 0xA0; }
bool isXmlSpace(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

std::u16string_view trimXmlSpace(std::u16string_view text) {
    std::size_t b = 0, e = text.size();
    while (b < e && isXmlSpace(text[b])) ++b;
    while (e > b && isXmlSpace(text[e - 1])) --e;
    return text.substr(b, e - b);
}

namespace {

// The runtime's wide conversions take the decimal digits of other scripts as well: these are the
// zero of each block of ten that it knows.
constexpr char16_t kDigitZeros[] = {0x0030, 0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0C66,
                                    0x0CE6, 0x0D66, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x17E0, 0x1810, 0xFF10};

int digitValue(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= 0x0660)
        for (char16_t zero : kDigitZeros)
            if (c >= zero && c < zero + 10) return c - zero;
    if (c >= u'a' && c <= u'z') return c - u'a' + 10;
    if (c >= u'A' && c <= u'Z') return c - u'A' + 10;
    return 99;
}

struct Scan {
    bool negative = false;
    bool any = false;
    bool overflow = false;
    unsigned long long value = 0;
    std::size_t end = 0;
};

// The shared front end of wcstol/wcstoul: white space, sign, optional 0x for base 16, digits.
Scan scanNumber(std::u16string_view t, int base, unsigned long long limit) {
    Scan s;
    std::size_t i = 0;
    while (i < t.size() && isRuntimeSpace(t[i])) ++i;
    if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) s.negative = t[i++] == u'-';
    // A zero and an x always go as the prefix, even with no digit after them; then there is no
    // number at all.
    if (base == 16 && i + 1 < t.size() && digitValue(t[i]) == 0 && (t[i + 1] == u'x' || t[i + 1] == u'X'))
        i += 2;
    for (; i < t.size(); ++i) {
        const int d = digitValue(t[i]);
        if (d >= base) break;
        s.any = true;
        if (!s.overflow) {
            s.value = s.value * static_cast<unsigned>(base) + static_cast<unsigned>(d);
            if (s.value > limit) s.overflow = true;
        }
    }
    s.end = s.any ? i : 0;
    return s;
}

}  // namespace

int32_t wcstolBase10(std::u16string_view text, std::size_t* consumed) {
    const Scan s = scanNumber(text, 10, 1ull << 32);
    if (consumed) *consumed = s.end;
    if (!s.any) return 0;
    if (s.negative) {
        if (s.overflow || s.value > 2147483648ull) return INT32_MIN;
        return static_cast<int32_t>(-static_cast<long long>(s.value));
    }
    if (s.overflow || s.value > 2147483647ull) return INT32_MAX;
    return static_cast<int32_t>(s.value);
}

int wtoi(std::u16string_view text) { return wcstolBase10(text); }

namespace {
uint32_t wcstoulBase(std::u16string_view text, int base, std::size_t* consumed) {
    const Scan s = scanNumber(text, base, 0xFFFFFFFFull);
    if (consumed) *consumed = s.end;
    if (!s.any) return 0;
    if (s.overflow) return 0xFFFFFFFFu;
    const auto v = static_cast<uint32_t>(s.value);
    return s.negative ? static_cast<uint32_t>(0u - v) : v;
}
}  // namespace

uint32_t wcstoulBase16(std::u16string_view text, std::size_t* consumed) { return wcstoulBase(text, 16, consumed); }
uint32_t wcstoulBase10(std::u16string_view text, std::size_t* consumed) { return wcstoulBase(text, 10, consumed); }

std::u16string utf8ToUtf16(std::string_view in) {
    std::u16string out;
    out.reserve(in.size());
    std::size_t i = 0;
    const auto byteAt = [&](std::size_t k) { return static_cast<unsigned char>(in[k]); };
    while (i < in.size()) {
        const unsigned c = byteAt(i);
        unsigned cp = 0xFFFD;
        std::size_t len = 1;
        unsigned minimum = 0;
        if (c < 0x80) { cp = c; }
        else if ((c & 0xE0) == 0xC0) { len = 2; cp = c & 0x1F; minimum = 0x80; }
        else if ((c & 0xF0) == 0xE0) { len = 3; cp = c & 0x0F; minimum = 0x800; }
        else if ((c & 0xF8) == 0xF0) { len = 4; cp = c & 0x07; minimum = 0x10000; }
        else { len = 0; }
        bool ok = len != 0 && i + len <= in.size();
        for (std::size_t k = 1; ok && k < len; ++k) {
            const unsigned cc = byteAt(i + k);
            if ((cc & 0xC0) != 0x80) ok = false;
            else cp = (cp << 6) | (cc & 0x3F);
        }
        if (ok && len > 1 && (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))) ok = false;
        if (!ok) { out.push_back(u'\uFFFD'); ++i; continue; }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(cp));
        }
        i += len;
    }
    return out;
}

std::string utf16ToUtf8(std::u16string_view in) {
    std::string out;
    out.reserve(in.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        unsigned cp = in[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < in.size() && in[i + 1] >= 0xDC00 && in[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (in[i + 1] - 0xDC00u);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

std::u16string latin1ToUtf16(std::string_view bytes) {
    std::u16string out(bytes.size(), u'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) out[i] = static_cast<unsigned char>(bytes[i]);
    return out;
}

std::string utf16ToLatin1(std::u16string_view text) {
    std::string out(text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) out[i] = text[i] < 256 ? static_cast<char>(text[i]) : '?';
    return out;
}

std::u16string toU16(std::string_view ascii) { return latin1ToUtf16(ascii); }

std::u16string decimal(long long value) { return toU16(std::to_string(value)); }

namespace {
std::u16string hexDigits(uint32_t value, const char16_t* digits) {
    std::u16string out;
    do {
        out.insert(out.begin(), digits[value & 15]);
        value >>= 4;
    } while (value != 0);
    return out;
}
}  // namespace

std::u16string hexUpper(uint32_t value) { return hexDigits(value, u"0123456789ABCDEF"); }
std::u16string hexLower(uint32_t value) { return hexDigits(value, u"0123456789abcdef"); }

}  // namespace qrl
