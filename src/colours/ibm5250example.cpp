#include "colours/ibm5250example.h"

#include <utility>

namespace qrl {

T5250Example ExampleOf(const T5250Edit& edit, const T5250Example& shown) {
    T5250Example example;
    example.blinkPhase = shown.blinkPhase;
    example.highIntensity = (edit.features & f5250::HighIntensity) != 0;
    example.invisible = (edit.features & f5250::Invisible) != 0;
    example.underline = (edit.features & f5250::Underscore) != 0;
    example.blink = (edit.features & f5250::Blink) != 0;
    example.columnSeparator = (edit.features & f5250::ColumnSeparator) != 0;
    example.foreground = edit.foreground;
    example.background = edit.background;
    if ((edit.features & f5250::Reverse) != 0) std::swap(example.foreground, example.background);
    return example;
}

bool ExampleHidden(const T5250Example& example) { return example.invisible || (example.blink && !example.blinkPhase); }

const char16_t* ExampleText(const T5250Example& example) {
    return example.columnSeparator ? u"..Aa..Bb..Cc.." : u"  Aa  Bb  Cc  ";
}

}  // namespace qrl
