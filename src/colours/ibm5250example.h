// The example of the IBM 5250 colour map editor as data: what the dialog shows for the row being
// edited, the text hidden while blinking, the swap of colours by Reverse.
#pragma once

#include <cstdint>

#include "colours/ibm5250colourmap.h"

namespace qrl {

struct T5250Example {
    bool blinkPhase = true;  // flipped by the dialog's timer
    bool highIntensity = false;
    bool invisible = false;
    bool underline = false;
    bool blink = false;
    bool columnSeparator = false;
    uint8_t foreground = 0;
    uint8_t background = 0;
};

// The example of an edit row: its features, and its colours with the two changing places when
// Reverse is set. The blink phase is kept from `shown`.
T5250Example ExampleOf(const T5250Edit& edit, const T5250Example& shown);

// Invisible text, and blinking text in its off phase, is drawn in the background colour.
bool ExampleHidden(const T5250Example& example);
// The example's text: the column separator form when that feature is set.
const char16_t* ExampleText(const T5250Example& example);

// The host's attribute word for the example's colours: 4 for high intensity, else 0.
inline uint32_t ExampleHostAttribute(const T5250Example& example) { return example.highIntensity ? 4u : 0u; }

}  // namespace qrl
