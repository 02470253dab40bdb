#include "properties/font.h"

#include <array>

#include "properties/property.h"
#include "text/textutil.h"

namespace qrl {

namespace {

constexpr int kNumberFields = 13;
constexpr std::size_t kHexPerChar = 4;

bool IsBlankOrTab(char16_t c) { return c == u' ' || c == u'\t'; }

// The part of a face name the platform's field keeps: up to a zero character, at most 31.
std::u16string_view Keepable(std::u16string_view name) {
    name = name.substr(0, name.find(u'\0'));
    return name.substr(0, TFontDescription::kFaceNameMax);
}

std::u16string DecodeHexName(std::u16string_view digits) {
    std::u16string name;
    for (std::size_t at = 0; at + kHexPerChar <= digits.size() && name.size() < TFontDescription::kFaceNameMax;
         at += kHexPerChar) {
        std::size_t used = 0;
        const uint32_t c = wcstoulBase16(digits.substr(at, kHexPerChar), &used);
        if (used != kHexPerChar || static_cast<char16_t>(c) == 0) break;
        name += static_cast<char16_t>(c);
    }
    return name;
}

// Text between `quote` and the next one, or the end of the text if it is not closed.
std::u16string_view Quoted(std::u16string_view text) {
    const std::u16string_view inner = text.substr(1);
    return inner.substr(0, inner.find(text.front()));
}

}  // namespace

int ParseFont(std::u16string_view text, TFontDescription& font) {
    font = TFontDescription{};
    std::array<int32_t, kNumberFields> numbers{};
    std::size_t pos = 0;
    const auto skipBlanks = [&] {
        while (pos < text.size() && IsBlankOrTab(text[pos])) ++pos;
    };
    int read = 0;
    for (; read < kNumberFields; ++read) {
        skipBlanks();
        // The number reader would also pass over line ends; a field may not start with one.
        if (pos >= text.size() || isRuntimeSpace(text[pos])) break;
        std::size_t used = 0;
        numbers[static_cast<std::size_t>(read)] = wcstolBase10(text.substr(pos), &used);
        if (used == 0) break;
        pos += used;
    }
    int32_t* const signedFields[] = {&font.height, &font.width, &font.escapement, &font.orientation,
                                     &font.weight};
    uint8_t* const byteFields[] = {&font.italic,       &font.underline,     &font.strikeOut,
                                   &font.charSet,      &font.outPrecision,  &font.clipPrecision,
                                   &font.quality,      &font.pitchAndFamily};
    for (int i = 0; i < read; ++i) {
        const int32_t v = numbers[static_cast<std::size_t>(i)];
        if (i < 5)
            *signedFields[i] = v;
        else
            *byteFields[i - 5] = static_cast<uint8_t>(v);
    }
    if (read < kNumberFields) return read;

    skipBlanks();
    if (pos >= text.size()) return read;
    const std::u16string_view rest = text.substr(pos);
    if (rest.front() == u'\'') {
        font.faceName = DecodeHexName(Quoted(rest));
    } else if (rest.front() == u'"') {
        font.faceName = Keepable(Quoted(rest));
    } else {
        std::size_t end = 0;
        while (end < rest.size() && !IsBlankOrTab(rest[end])) ++end;
        font.faceName = Keepable(rest.substr(0, end));
    }
    return TFontDescription::kFieldCount;
}

std::u16string FontToText(const TFontDescription& font) {
    std::u16string out;
    for (int32_t v : {font.height, font.width, font.escapement, font.orientation, font.weight}) {
        out += decimal(v);
        out += u' ';
    }
    for (uint8_t v : {font.italic, font.underline, font.strikeOut, font.charSet, font.outPrecision,
                      font.clipPrecision, font.quality, font.pitchAndFamily}) {
        out += decimal(v);
        out += u' ';
    }
    out += u'\'';
    for (char16_t c : Keepable(font.faceName)) AppendHexFixed(out, c, static_cast<int>(kHexPerChar));
    out += u'\'';
    return out;
}

std::u16string FontShortText(const TFontDescription& font) { return std::u16string{Keepable(font.faceName)}; }

}  // namespace qrl
