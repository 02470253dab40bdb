// One hotspot: a screen area or a piece of screen text that the terminal turns into a button which
// sends a string. In a .hsp file a hotspot is one record text of 27 comma-ended fields.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

// A colour of all ones means the emulation's colour (in a set) or the set's (in a hotspot).
inline constexpr uint32_t kDefaultColour = 0xFFFFFFFFu;

// Record types: 2 is the current form, with a send string of macro text. 1 (and 3) are the old form,
// which holds a physical key number instead and needs converting.
inline constexpr int32_t kRecordOldKey = 1;
inline constexpr int32_t kRecordText = 2;
inline constexpr int32_t kRecordTypeMax = 3;

// Button styles 0 to 8; 3 is the default, 8 invisible.
inline constexpr int32_t kButtonStyleDefault = 3;
inline constexpr int32_t kButtonStyleCount = 9;

// prePostMode
inline constexpr int32_t kPrePostExclude = 0;
inline constexpr int32_t kPrePostInclude = 1;
inline constexpr int32_t kPrePostAsBlanks = 2;

struct HotSpot {
    uint32_t foreground = kDefaultColour;
    uint32_t background = kDefaultColour;
    bool overrideColour = false;   // the hotspot's own colours are used
    bool needsConversion = false;  // read as record type 1 or 3
    int32_t id = 0;                // handed out by HotSpots; not stored
    std::u16string description;
    int32_t recordType = 0;
    int32_t buttonStyle = kButtonStyleDefault;
    bool permanent = false;        // the area is absolute, not relative to the match
    int32_t top = 0;
    int32_t left = 0;
    int32_t bottom = 0;
    int32_t right = 0;
    std::u16string matchString;
    int32_t caseSensitive = 0;
    int32_t autoExecute = 0;
    std::u16string sendString;     // macro text
    int32_t keyCode = 0;           // old form only: a physical key number
    bool fromFile = true;          // belongs to the file: Read removes it, Write stores it
    bool secondFlag = true;        // set at construction and copied; neither stored nor read here
    bool wildcards = false;
    std::u16string preChars;
    std::u16string postChars;
    int32_t prePostMode = kPrePostExclude;
};

// A colour as text: red, separator, green, separator, blue in decimal; all ones gives "".
std::u16string FormatColourText(uint32_t colour, char16_t separator);
// The reading of a colour text, which is not the mirror of writing: "" gives all ones; otherwise
// the first number runs to `separator`, the second and third each to a comma. With "|" the second
// takes the rest of the text and the third is 0, as files in use were written with it.
uint32_t ParseColourText(std::u16string_view text, char16_t separator);

// Parses a record text into `spot`, every field of the record written, with the fix-ups of
// reading (description "untitled" when empty, record type above 3 gives 0, area clamped).
// id, fromFile and secondFlag are left as they are.
void ParseHotSpotRecord(std::u16string_view text, HotSpot& spot);
// The record text of a hotspot: 27 fields, each ended by a comma; a comma in a text field is
// escaped (see hotspot.cpp), and ParseHotSpotRecord reads it back.
std::u16string FormatHotSpotRecord(const HotSpot& spot);

}  // namespace qrl
