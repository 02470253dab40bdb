#include "mouse/mousenames.h"

#include "locale/language.h"
#include "text/textutil.h"

namespace qrl {

namespace {

template <std::size_t N>
void fill(std::array<std::u16string, N>& table, const TMouseTranslateFn& translate, int firstKey,
          const char* const (&defaults)[N]) {
    for (std::size_t i = 0; i < N; ++i)
        table[i] = translate(u"mousecfg_cpp_" + decimal(firstKey + static_cast<int>(i)), toU16(defaults[i]));
}

}  // namespace

TMouseNames MakeMouseNames(const TMouseTranslateFn& translate) {
    static const char* const events[kMouseEventCount] = {
        "(none)",           "Left button click",          "Left button double click", "Left button up",
        "Middle button click", "Middle button double click", "Middle button up",      "Right button click",
        "Right button double click", "Right button up",      "Wheel scroll",            "Mouse move"};
    static const char* const actions[kMouseActionCount] = {
        "(not assigned)",
        "Rectangular highlight",
        "Continuous highlight",
        "Drag screen",
        "Select word",
        "Send word",
        "Popup menu",
        "Move cursor",
        "Copy word to clipboard",
        "Rectangular highlight & move cursor",
        "Continuous highlight & move cursor",
        "Send text/macro",
        "Run a script",
        "Rectangular highlight & send text/macro",
        "Continuous highlight & send text/macro"};
    TMouseNames names;
    fill(names.events, translate, 57, events);
    fill(names.actions, translate, 35, actions);
    return names;
}

const TMouseNames& MouseNames() {
    // Made on the first mouse request, when the request's language is in force.
    static const TMouseNames names = MakeMouseNames(
        [](std::u16string_view key, std::u16string_view defaultText) { return Translate(key, defaultText); });
    return names;
}

std::u16string MouseEventLabel(const TMouseEvent& event, const TMouseNames& names) {
    std::u16string prefix;
    if (event.ctrl) prefix += u"ctrl+";
    if (event.shift) prefix += u"shift+";
    if (event.alt) prefix += u"alt+";
    if (!prefix.empty()) prefix.pop_back();
    const std::u16string& name = event.event < kMouseEventCount ? names.events[event.event] : names.events[0];
    return prefix + u" " + name;
}

}  // namespace qrl
