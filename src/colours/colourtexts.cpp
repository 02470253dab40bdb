#include "colours/colourtexts.h"

#include "locale/language.h"
#include "text/textutil.h"

namespace qrl {

namespace {

// Texts are keyed by the dialog's source stem and a running number.
template <std::size_t N>
void fill(std::array<std::u16string, N>& table, const TTranslateFn& translate, int firstKey,
          const char* const (&defaults)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
        const std::u16string key = u"attrmapdlg_cpp_" + decimal(firstKey + static_cast<int>(i));
        table[i] = translate(key, toU16(defaults[i]));
    }
}

}  // namespace

TColourTexts MakeColourTexts(const TTranslateFn& translate) {
    static const char* const longNames[kFeatureNameCount] = {
        "Normal", "Blink", "Underline", "Bold", "Dim", "Reverse", "Overline", "StrikeOut", "Invisible"};
    static const char* const shortNames[kFeatureNameCount] = {
        "Nml", "Bln", "Und", "Bld", "Dim", "Rev", "Ovr", "Stk", "Inv"};
    static const char* const colourNames[16] = {
        "Black", "Blue",       "Green",       "Cyan",       "Red",       "Magenta",
        "Brown", "Light grey", "Grey",        "Light blue", "Light green", "Light cyan",
        "Light red", "Light magenta", "Yellow", "White"};
    static const char* const actions[5] = {"Next Colour", "Previous Colour", "Next Group", "Previous Group",
                                           "Toggle Group"};
    static const char* const boxStyles[5] = {"Lines", "Raised", "Lowered", "Raised (shallow)",
                                             "Lowered (shallow)"};
    static const char* const modes[4] = {"(none)", "Centre", "Tile", "Stretch"};

    TColourTexts texts;
    std::array<std::u16string, kFeatureNameCount> longs;
    fill(longs, translate, 49, longNames);
    for (std::size_t i = 0; i < kFeatureNameCount; ++i) {
        texts.longFeatureNames[i] = longs[i];
        texts.shortFeatureNames[i] = toU16(shortNames[i]);
    }
    fill(texts.colourNames, translate, 88, colourNames);
    fill(texts.colourActions, translate, 109, actions);
    fill(texts.boxStyles, translate, 119, boxStyles);
    fill(texts.backgroundModes, translate, 129, modes);
    return texts;
}

const TColourTexts& ColourTexts() {
    // Made on the first colour request, when the request's language is in force.
    static const TColourTexts texts = MakeColourTexts(
        [](std::u16string_view key, std::u16string_view defaultText) { return Translate(key, defaultText); });
    return texts;
}

}  // namespace qrl
