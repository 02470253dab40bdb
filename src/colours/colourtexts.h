// Name tables of the colour model: the ones the host sends (attrnames) and the fixed texts that are
// translated once per process, on the first colour request that needs them.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace qrl {

inline constexpr std::size_t kNameTableSize = 16;
using TNameTable = std::array<std::u16string, kNameTableSize>;

// The four tables of the session, filled from a Data item of type attrnames. Index 0 of the feature
// tables is Normal, index k (1 to 8) the attribute bit of value 2^(k-1).
struct TAttrNameTables {
    TNameTable shortFeatureNames;
    TNameTable longFeatureNames;
    TNameTable colourDescriptions;
    TNameTable fieldDescriptions;
};

inline constexpr std::size_t kFeatureNameCount = 9;  // Normal and the eight attribute bits

// Translation as the language table gives it: the text for a key, or the default.
using TTranslateFn = std::function<std::u16string(std::u16string_view key, std::u16string_view defaultText)>;

struct TColourTexts {
    TNameTable longFeatureNames;   // translated; entries 9 to 15 empty
    TNameTable shortFeatureNames;  // never translated; entries 9 to 15 empty
    std::array<std::u16string, 16> colourNames;
    std::array<std::u16string, 5> colourActions;
    std::array<std::u16string, 5> boxStyles;
    std::array<std::u16string, 4> backgroundModes;  // "(none)", then the graphic modes
};

TColourTexts MakeColourTexts(const TTranslateFn& translate);

// The process-wide copy, made through the language table on the first call.
const TColourTexts& ColourTexts();

}  // namespace qrl
