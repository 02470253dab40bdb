// A font description kept as one line of text: the value of a `font` element. The fields are
// those of the platform's logical font (LOGFONTW), which the font dialog fills.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

struct TFontDescription {
    // The platform's face name field has 32 characters, the last for the terminator.
    static constexpr std::size_t kFaceNameMax = 31;
    static constexpr int kFieldCount = 14;

    int32_t height = 0;
    int32_t width = 0;
    int32_t escapement = 0;
    int32_t orientation = 0;
    int32_t weight = 0;
    uint8_t italic = 0;
    uint8_t underline = 0;
    uint8_t strikeOut = 0;
    uint8_t charSet = 0;
    uint8_t outPrecision = 0;
    uint8_t clipPrecision = 0;
    uint8_t quality = 0;
    uint8_t pitchAndFamily = 0;
    std::u16string faceName;  // at most kFaceNameMax characters, no zero character
};

// Reads a font stream: thirteen decimal numbers, then the face name, blanks and tabs before each
// field. The face name is hexadecimal between single quotes (four digits per character), plain
// text between double quotes, or a bare word. The description first returns to its initial
// state; reading stops at the first field that is missing or not a number, and the fields from
// there on keep that state. Returns the number of fields read (14 for a whole stream).
int ParseFont(std::u16string_view text, TFontDescription& font);
// The canonical stream: numbers separated by single blanks and the face name in hexadecimal.
std::u16string FontToText(const TFontDescription& font);
// What the element's tree label shows: the face name.
std::u16string FontShortText(const TFontDescription& font);

}  // namespace qrl
