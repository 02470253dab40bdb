// Showing a form: the request's start form, a nested form, or the built-in form with its tree.
#pragma once

#include <windows.h>

namespace qrl {

class TConfigSession;
struct TFormDef;
struct TFormEditors;

// Shows `form` modally over `parent` and returns the dialog result (1 OK, 2 Cancel, 4900 another
// module, 4901 connect). With a null form the built-in form is generated and shown; 0 when it
// can't be. A template the dialog manager refuses gives its result (-1 or 0). The form's buttons
// open the editors of `editors`.
int RunForm(TConfigSession& session, TFormDef* form, HWND parent, const TFormEditors& editors);

}  // namespace qrl
