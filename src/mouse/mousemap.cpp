#include "mouse/mousemap.h"

#include <algorithm>

#include "text/textutil.h"

namespace qrl {

TMouseParam MouseActionParam(uint32_t action) {
    switch (action) {
    case kMouseSendText:
    case kMouseRectHighlightSendText:
    case kMouseContHighlightSendText: return TMouseParam::Text;
    case kMouseRunScript: return TMouseParam::Script;
    default: return TMouseParam::None;
    }
}

const TMouseAction& Lookup(const TMouseMap& map, const TMouseEvent& event) {
    static const TMouseAction notAssigned;
    for (const TMouseMapEntry& entry : map)
        if (entry.event == event) return entry.action;
    return notAssigned;
}

void SetMapping(TMouseMap& map, const TMouseEvent& event, const TMouseAction& action) {
    const auto found = std::find_if(map.begin(), map.end(), [&](const TMouseMapEntry& e) { return e.event == event; });
    if (found == map.end()) {
        // Even "not assigned" is added; the reply leaves such an entry out.
        map.push_back({event, action});
    } else if (action.action != kMouseNotAssigned) {
        found->action = action;
    } else {
        map.erase(found);
    }
}

void RestoreDefaultMap(TMouseMap& map) {
    map.clear();
    const auto set = [&](uint32_t event, bool shift, uint32_t action) {
        SetMapping(map, TMouseEvent{event, false, shift, false}, TMouseAction{action, {}, {}});
    };
    set(kMouseLeftClick, false, kMouseRectHighlightMoveCursor);
    set(kMouseLeftClick, true, kMouseContHighlightMoveCursor);
    set(kMouseRightClick, false, kMousePopupMenu);
    set(kMouseLeftDoubleClick, false, kMouseSelectWord);
    set(kMouseLeftDoubleClick, true, kMouseSendWord);
}

TMouseEvent ParseMouseEvent(std::u16string_view text) {
    // Four numbers, each ended by ":"; a number without its ":" reads 0, and so do all after it.
    int numbers[4] = {0, 0, 0, 0};
    for (int& number : numbers) {
        const std::size_t colon = text.find(u':');
        if (colon == std::u16string_view::npos) break;
        number = wtoi(text.substr(0, colon));
        text.remove_prefix(colon + 1);
    }
    TMouseEvent event;
    event.event = numbers[0] >= 0 && numbers[0] < static_cast<int>(kMouseEventCount) ? static_cast<uint32_t>(numbers[0]) : 0;
    event.ctrl = numbers[1] != 0;
    event.shift = numbers[2] != 0;
    event.alt = numbers[3] != 0;
    return event;
}

TMouseAction ParseMouseAction(std::u16string_view text) {
    TMouseAction action;
    const std::size_t colon = text.find(u':');
    if (colon == std::u16string_view::npos) return action;
    const int code = wtoi(text.substr(0, colon));
    action.action = code >= 0 && code < static_cast<int>(kMouseActionCount) ? static_cast<uint32_t>(code) : 0;
    // Only the first ":" separates: the parameter may hold more of them.
    const std::u16string_view rest = text.substr(colon + 1);
    switch (MouseActionParam(action.action)) {
    case TMouseParam::Text: action.text = rest; break;
    case TMouseParam::Script: action.script = rest; break;
    case TMouseParam::None: break;
    }
    return action;
}

std::u16string MouseEventText(const TMouseEvent& event) {
    std::u16string text = decimal(event.event);
    for (bool flag : {event.ctrl, event.shift, event.alt}) {
        text += u':';
        text += flag ? u'1' : u'0';
    }
    text += u':';
    return text;
}

std::u16string MouseActionText(const TMouseAction& action) {
    std::u16string text = decimal(action.action) + u":";
    switch (MouseActionParam(action.action)) {
    case TMouseParam::Text: text += action.text; break;
    case TMouseParam::Script: text += action.script; break;
    case TMouseParam::None: break;
    }
    return text;
}

TMouseEvent MouseEventFromControls(int button, bool doubleClick, bool ctrl, bool shift, bool alt) {
    uint32_t event = kMouseNoEvent;
    switch (button) {
    case 1: event = kMouseLeftClick; break;
    case 2: event = kMouseMiddleClick; break;
    case 3: event = kMouseRightClick; break;
    default: break;
    }
    if (event != kMouseNoEvent && doubleClick) ++event;
    return TMouseEvent{event, ctrl, shift, alt};
}

TMouseParamView MouseParamView(uint32_t action, bool assistAvailable, bool showingEntry) {
    TMouseParamView view;
    switch (MouseActionParam(action)) {
    case TMouseParam::Text:
        view = {true, u"mousecfg_cpp_304", u"Text/macro:", true, assistAvailable};
        break;
    case TMouseParam::Script:
        view = {true, showingEntry ? u"mousecfg_cpp_256" : u"mousecfg_cpp_310", u"Script file name:", true, false};
        break;
    case TMouseParam::None: break;
    }
    return view;
}

std::u16string MouseParamText(const TMouseAction& action) {
    switch (MouseActionParam(action.action)) {
    case TMouseParam::Text: return action.text;
    case TMouseParam::Script: return action.script;
    case TMouseParam::None: break;
    }
    return {};
}

TMouseAction MouseActionFromControls(int row, std::u16string_view paramText) {
    TMouseAction action;
    action.action = row >= 0 && static_cast<uint32_t>(row) < kMouseActionCount ? static_cast<uint32_t>(row) : 0;
    if (MouseActionParam(action.action) == TMouseParam::Text) action.text = paramText;
    if (MouseActionParam(action.action) == TMouseParam::Script) action.script = paramText;
    return action;
}

}  // namespace qrl
