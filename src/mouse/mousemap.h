// The mouse map: for each mouse event with its Ctrl, Shift and Alt state, the action the terminal
// takes. An action of 0 means "not assigned": setting it removes the entry.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

inline constexpr uint32_t kMouseEventCount = 12;   // 0 "(none)" to 11 "Mouse move"
inline constexpr uint32_t kMouseActionCount = 15;  // 0 "(not assigned)" to 14

// Event codes the dialog can choose; the double click of each button is its click plus 1.
inline constexpr uint32_t kMouseNoEvent = 0;
inline constexpr uint32_t kMouseLeftClick = 1;
inline constexpr uint32_t kMouseLeftDoubleClick = 2;
inline constexpr uint32_t kMouseMiddleClick = 4;
inline constexpr uint32_t kMouseRightClick = 7;

inline constexpr uint32_t kMouseNotAssigned = 0;
inline constexpr uint32_t kMouseSelectWord = 4;
inline constexpr uint32_t kMouseSendWord = 5;
inline constexpr uint32_t kMousePopupMenu = 6;
inline constexpr uint32_t kMouseRectHighlightMoveCursor = 9;
inline constexpr uint32_t kMouseContHighlightMoveCursor = 10;
inline constexpr uint32_t kMouseSendText = 11;
inline constexpr uint32_t kMouseRunScript = 12;
inline constexpr uint32_t kMouseRectHighlightSendText = 13;
inline constexpr uint32_t kMouseContHighlightSendText = 14;

// Which parameter an action carries.
enum class TMouseParam { None, Text, Script };
TMouseParam MouseActionParam(uint32_t action);

struct TMouseEvent {
    uint32_t event = kMouseNoEvent;
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    bool operator==(const TMouseEvent&) const = default;
};

struct TMouseAction {
    uint32_t action = kMouseNotAssigned;
    std::u16string text;    // macro text of actions 11, 13, 14
    std::u16string script;  // script file of action 12
};

struct TMouseMapEntry {
    TMouseEvent event;
    TMouseAction action;
};

// In the order the entries were added.
using TMouseMap = std::vector<TMouseMapEntry>;

// The action of the first entry for exactly this event, or the shared not-assigned action.
const TMouseAction& Lookup(const TMouseMap& map, const TMouseEvent& event);
// Changes the entry of this event, removes it when action is 0, or appends a new one (even of action 0).
void SetMapping(TMouseMap& map, const TMouseEvent& event, const TMouseAction& action);
void RestoreDefaultMap(TMouseMap& map);

// The text forms of the request and reply: Event "1:0:1:0:", Action "11:hello".
TMouseEvent ParseMouseEvent(std::u16string_view text);
TMouseAction ParseMouseAction(std::u16string_view text);
std::u16string MouseEventText(const TMouseEvent& event);
std::u16string MouseActionText(const TMouseAction& action);

// The event the dialog's controls describe: button 0 none, 1 left, 2 middle, 3 right.
TMouseEvent MouseEventFromControls(int button, bool doubleClick, bool ctrl, bool shift, bool alt);

// What the dialog's parameter controls show for an action: the label (by key and default), the
// edit, and the Macro Assistant's button.
struct TMouseParamView {
    bool labelShown = false;
    const char16_t* labelKey = u"";
    const char16_t* labelDefault = u"";
    bool editShown = false;
    bool assistShown = false;
};
// `showingEntry`: the script label of an entry being shown has a key of its own.
TMouseParamView MouseParamView(uint32_t action, bool assistAvailable, bool showingEntry);
// The parameter the edit shows for an action: its text, its script, or nothing.
std::u16string MouseParamText(const TMouseAction& action);
// The action the controls describe: the combo's row (any row that is no action is 0) and the edit.
TMouseAction MouseActionFromControls(int row, std::u16string_view paramText);

}  // namespace qrl
