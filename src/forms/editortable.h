// What the settings dialog needs of the editors above it. The DLL's root fills the table and hands
// it to RunForm, so that the form engine knows none of the editors; an entry left null makes its
// button do nothing.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "request/elementdef.h"

namespace qrl {

class TConfigSession;

// The editor behind a form's "Edit..." button for a special value type; it edits the element's
// value in place and returns true on OK.
using TSpecialValueEditor = bool (*)(HWND parent, TConfigSession& session, TElementDef& element);

struct TFormEditors {
    // The Macro Assistant on `text` with the session's emulation keys at macro level `mode`; the
    // dialog's result (1 OK, which replaces `text`).
    int (*macroAssist)(HWND parent, const TConfigSession& session, std::u16string& text, uint32_t mode) = nullptr;
    // A printer value through the platform's printer setup; false when the user cancelled. On
    // true `value` holds the new setup and `shown` its short text.
    bool (*choosePrinter)(HWND parent, std::u16string& value, std::u16string& shown) = nullptr;
    // A printer value turned back to the system's default printer, the rest of its setup kept.
    void (*useDefaultPrinter)(std::u16string& value, std::u16string& shown) = nullptr;
    // A font value of the element named `name` through the platform's font choice, as above.
    bool (*chooseFont)(HWND parent, const std::u16string& name, std::u16string& value, std::u16string& shown) =
        nullptr;
    // The special editor of a type; null for a type that has none.
    TSpecialValueEditor (*specialEditor)(ElementType type) = nullptr;
    // The kernel's character maps of this run: whether any was changed, and sending the changes.
    bool (*charMapsModified)(const TConfigSession& session) = nullptr;
    void (*saveCharMaps)(TConfigSession& session) = nullptr;
    // The "Add New language" dialog: a new name not among `languages` and the language it copies.
    bool (*addLanguage)(HWND parent, const TConfigSession& session, const std::vector<std::u16string>& languages,
                        std::u16string& newName, std::u16string& baseName) = nullptr;
};

}  // namespace qrl
