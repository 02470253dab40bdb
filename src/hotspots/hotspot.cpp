#include "hotspots/hotspot.h"

#include <algorithm>
#include <array>

#include "text/textutil.h"

namespace qrl {

namespace {

constexpr int kFieldCount = 27;
// A field is read into a buffer of 2048 characters, a colour's number into one of 32.
constexpr std::size_t kMaxField = 2047;
constexpr std::size_t kMaxColourNumber = 32;

// Takes the text up to `stop` (or to the end) and moves past the stop character.
std::u16string_view takeUntil(std::u16string_view& rest, char16_t stop) {
    const std::size_t end = rest.find(stop);
    const std::u16string_view token = rest.substr(0, end);
    rest = end == std::u16string_view::npos ? std::u16string_view{} : rest.substr(end + 1);
    return token;
}

uint32_t colourByte(std::u16string_view number) {
    return static_cast<uint32_t>(wtoi(number.substr(0, kMaxColourNumber))) & 0xFFu;
}

std::u16string flag(bool on) { return on ? u"1" : u"0"; }

// A comma ends a field, so a text field holds none: a comma is written as U+0001 ';', and U+0001
// itself as U+0001 U+0001. Reading undoes exactly these pairs and keeps any other U+0001 as it
// stands. No one puts that control character into a description, match or macro by accident, and
// the last field, a colour text, holds only digits and bars: files of before read as they always
// did, a raw comma still ending its field.
constexpr char16_t kFieldEscape = u'\u0001';

std::u16string escapeField(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (char16_t c : text) {
        if (c == u',' || c == kFieldEscape) out += kFieldEscape;
        out += c == u',' ? u';' : c;
    }
    return out;
}

std::u16string unescapeField(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = text[i] == kFieldEscape && i + 1 < text.size() &&
                          (text[i + 1] == u';' || text[i + 1] == kFieldEscape);
        out += pair ? (text[++i] == u';' ? u',' : kFieldEscape) : text[i];
    }
    return out;
}

// The old form's character field: a decimal character code. A code of 0 gives no character, as a
// terminated text of that one character reads.
std::u16string charFromCode(std::u16string_view field) {
    const auto c = static_cast<char16_t>(wtoi(field));
    return c == 0 ? std::u16string{} : std::u16string(1, c);
}

}  // namespace

std::u16string FormatColourText(uint32_t colour, char16_t separator) {
    if (colour == kDefaultColour) return {};
    std::u16string text = decimal(colour & 0xFF);
    text += separator;
    text += decimal((colour >> 8) & 0xFF);
    text += separator;
    text += decimal((colour >> 16) & 0xFF);
    return text;
}

uint32_t ParseColourText(std::u16string_view text, char16_t separator) {
    if (text.empty()) return kDefaultColour;
    std::u16string_view rest = text;
    const uint32_t red = colourByte(takeUntil(rest, separator));
    const uint32_t green = colourByte(takeUntil(rest, u','));
    const uint32_t blue = colourByte(takeUntil(rest, u','));
    return red | (green << 8) | (blue << 16);
}

void ParseHotSpotRecord(std::u16string_view text, HotSpot& spot) {
    // Fields 1 to 27; a record with too few reads the rest as empty.
    std::array<std::u16string_view, kFieldCount + 1> field{};
    std::u16string_view rest = text;
    for (int i = 1; i <= kFieldCount; ++i) field[i] = takeUntil(rest, u',').substr(0, kMaxField);
    const auto number = [&](int i) { return wtoi(field[i]); };

    spot.description = field[1].empty() ? std::u16string{u"untitled"} : unescapeField(field[1]);
    spot.recordType = number(2) > kRecordTypeMax ? 0 : number(2);
    spot.needsConversion = spot.recordType == kRecordOldKey || spot.recordType == kRecordTypeMax;
    spot.buttonStyle = number(3);
    spot.permanent = number(4) != 0;
    spot.left = number(5);
    spot.top = number(6);
    spot.right = number(7);
    spot.bottom = number(8);
    spot.matchString = unescapeField(field[9]);
    spot.caseSensitive = number(10);
    spot.autoExecute = number(11);
    spot.keyCode = spot.recordType == kRecordOldKey ? number(14) : 0;
    spot.sendString = unescapeField(field[18]);
    spot.wildcards = number(21) != 0;
    // The old form kept one character before and after the match as a code in fields 12 and 13.
    spot.preChars = field[12].empty() ? unescapeField(field[22]) : charFromCode(field[12]);
    spot.postChars = field[13].empty() ? unescapeField(field[23]) : charFromCode(field[13]);
    spot.prePostMode = number(24);
    spot.overrideColour = number(25) != 0;
    spot.foreground = ParseColourText(field[26], u'|');
    spot.background = ParseColourText(field[27], u'|');

    spot.left = std::max(spot.left, 0);
    spot.top = std::max(spot.top, 0);
    spot.right = std::max(spot.right, spot.left);
}

std::u16string FormatHotSpotRecord(const HotSpot& spot) {
    const std::u16string fields[kFieldCount] = {
        escapeField(spot.description),
        decimal(spot.recordType),
        decimal(spot.buttonStyle),
        flag(spot.permanent),
        decimal(spot.left),
        decimal(spot.top),
        decimal(spot.right),
        decimal(spot.bottom),
        escapeField(spot.matchString),
        decimal(spot.caseSensitive),
        decimal(spot.autoExecute),
        u"",   // 12, 13: the old form's characters, now in 22 and 23
        u"",
        u"0",  // 14: the old form's key code is not written
        u"0",
        u"0",
        u"0",
        escapeField(spot.sendString),
        u"0",
        u"0",
        flag(spot.wildcards),
        escapeField(spot.preChars),
        escapeField(spot.postChars),
        decimal(spot.prePostMode),
        flag(spot.overrideColour),
        FormatColourText(spot.foreground, u'|'),
        FormatColourText(spot.background, u'|'),
    };
    std::u16string text;
    for (const std::u16string& f : fields) {
        text += f;
        text += u',';
    }
    return text;
}

}  // namespace qrl
