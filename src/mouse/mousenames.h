// Names of mouse events and actions, translated once per process on the first mouse request.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "mouse/mousemap.h"

namespace qrl {

using TMouseTranslateFn = std::function<std::u16string(std::u16string_view key, std::u16string_view defaultText)>;

struct TMouseNames {
    std::array<std::u16string, kMouseEventCount> events;
    std::array<std::u16string, kMouseActionCount> actions;
};

TMouseNames MakeMouseNames(const TMouseTranslateFn& translate);

// The process-wide tables, made through the language table on the first call.
const TMouseNames& MouseNames();

// The selection label of the dialog: "ctrl+", "shift+", "alt+" for the states set, without the last
// "+", then a blank and the event's name; with no state set the label begins with the blank.
std::u16string MouseEventLabel(const TMouseEvent& event, const TMouseNames& names);

}  // namespace qrl
