// Keys that a dialog takes for itself before its controls and the dialog manager see them (a
// search's Ctrl+F, Enter in a field that must not press the default button). A thread message
// filter, installed for the life of the object; it sees the keys of the dialog's own windows only,
// not those of message boxes or dialogs opened over it. Win32 only.
#pragma once

#include <windows.h>

#include <functional>

namespace qrl {

class TDialogKeys {
public:
    // `handler` gets every key and character message of `dialog` and its controls before they are
    // dispatched; true swallows the message.
    using Handler = std::function<bool(const MSG&)>;
    TDialogKeys(HWND dialog, Handler handler);
    ~TDialogKeys();
    TDialogKeys(const TDialogKeys&) = delete;
    TDialogKeys& operator=(const TDialogKeys&) = delete;

private:
    static LRESULT CALLBACK Filter(int code, WPARAM wParam, LPARAM lParam);
    bool Take(const MSG& message) const;

    HWND dialog_;
    Handler handler_;
    HHOOK hook_ = nullptr;
    TDialogKeys* outer_ = nullptr;  // a filter of a dialog further out on this thread
};

// Whether a modifier key is held, in the state of the message being handled.
bool IsKeyHeld(int virtualKey);

}  // namespace qrl
