// The character set editor behind a form's buttons: "Edit..." on a `charset` element opens the
// table of its map; "Add..." on the language element asks for a new language. Win32 only.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qrl {

class TConfigSession;
class TElementDef;

// The Edit command on a `charset` element: finds or fetches the map named by the element and the
// "LanguageName" element, then runs the table. Failures are told in a message box. The element's
// value never changes, so this returns false; the map's edits wait in the session for the save.
bool EditCharacterSet(HWND parent, TConfigSession& session, TElementDef& element);

// Add New language: true when the user gave an acceptable new name; baseName is empty for the
// default language.
bool RunAddLanguage(HWND parent, const TConfigSession& session, const std::vector<std::u16string>& languages,
                    std::u16string& newName, std::u16string& baseName);

}  // namespace qrl
