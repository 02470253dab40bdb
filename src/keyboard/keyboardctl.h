// KeyboardCtl, the keyboard picture (class "qrkeyb4"): draws a layout to scale, tells its dialog
// which key was pressed (2526 left, 2527 right, the key in lParam), and shows selected and mapped
// keys. KeyList: a list box of key names. Win32 only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "keyboard/kdf.h"
#include "keyboard/keymapdata.h"

namespace qrl {

inline constexpr wchar_t kKeyboardClass[] = L"qrkeyb4";
inline constexpr UINT kKeyPressedLeft = 2526;
inline constexpr UINT kKeyPressedRight = 2527;

bool RegisterKeyboardClass(HINSTANCE instance);
void UnregisterKeyboardClass(HINSTANCE instance);

// The picture's operations; the layout is the dialog's and outlives the control's paints.
class KeyboardCtl;
KeyboardCtl* KeyboardOf(HWND window);  // null for a window of another class

class KeyboardCtl {
public:
    virtual ~KeyboardCtl() = default;
    // Shows a layout (or none) and repaints everything, erasing.
    virtual void setLayout(GKbLayout* layout) = 0;
    virtual GKbLayout* layout() const = 0;
    // Selects the key of a code word; with applyState the layout takes the code's state. Null when
    // no key has that code.
    virtual GKbKey* selectKey(std::int32_t code, bool applyState) = 0;
    virtual void deselectCode(std::int32_t code) = 0;
    // All keys lose their selection, or all but latched modifiers not mapped in the current state.
    virtual void clearSelection(bool all) = 0;
    virtual void markMapped(std::int32_t code, bool value) = 0;
    virtual void clearMarks() = 0;
    // All marks at once, as clearMarks and a markMapped for each code would leave them, with one
    // repaint: the codes may come many times over.
    virtual void setMarks(const std::vector<std::uint32_t>& codes) = 0;
    virtual void toggleModifier(const GKbKey& key) = 0;
    virtual std::int32_t getState() const = 0;
    // The state of a code word's modifier bits.
    virtual void setShift(std::int32_t codeBits) = 0;
};

// A list box of key names, by their ids.
class KeyList {
public:
    explicit KeyList(HWND listBox) : list_(listBox) {}
    void setKeys(const std::vector<KeyName>* keys);
    // The first entry of that id, or no selection when there is none.
    void selectCode(std::int32_t id);
    void clear();
    // The id of the selected entry; -1 without a list or a selection.
    std::int32_t selectedId() const;

private:
    HWND list_;
    const std::vector<KeyName>* keys_ = nullptr;
};

}  // namespace qrl
