#include "kit/dialogkeys.h"

namespace qrl {

namespace {

// The innermost filter of this thread; filters nest with their dialogs.
thread_local TDialogKeys* g_innermost = nullptr;

bool IsKeyMessage(UINT message) {
    return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_CHAR || message == WM_KEYUP;
}

}  // namespace

TDialogKeys::TDialogKeys(HWND dialog, Handler handler) : dialog_(dialog), handler_(std::move(handler)) {
    // The dialog manager offers every message of a modal loop to the thread's message filters
    // first (MSGF_DIALOGBOX), which is the only place where a dialog sees its controls' keys.
    hook_ = SetWindowsHookExW(WH_MSGFILTER, &Filter, nullptr, GetCurrentThreadId());
    outer_ = g_innermost;
    g_innermost = this;
}

TDialogKeys::~TDialogKeys() {
    if (g_innermost == this) g_innermost = outer_;
    if (hook_) UnhookWindowsHookEx(hook_);
}

bool TDialogKeys::Take(const MSG& message) const {
    if (!IsKeyMessage(message.message)) return false;
    if (message.hwnd != dialog_ && !IsChild(dialog_, message.hwnd)) return false;
    return handler_(message);
}

LRESULT CALLBACK TDialogKeys::Filter(int code, WPARAM wParam, LPARAM lParam) {
    try {
        if (code == MSGF_DIALOGBOX && lParam && g_innermost && g_innermost->Take(*reinterpret_cast<const MSG*>(lParam)))
            return 1;
    } catch (...) {
        // A key that fails is left to the dialog manager.
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool IsKeyHeld(int virtualKey) { return GetKeyState(virtualKey) < 0; }

}  // namespace qrl
