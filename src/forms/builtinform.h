// The built-in form "__Default__": generated from the session when a request names no start form.
// It is an ordinary TFormDef with `usesTree` set; the tree and the value editors come alive in the
// dialog procedure.
#pragma once

#include <string>

namespace qrl {

class TConfigSession;
struct TFormDef;

// Appends the built-in form to the session's forms unless a form of its name exists already.
void BuildDefaultForm(TConfigSession& session);
// The built-in form's name: the shared text, so a translation of it renames it everywhere.
const std::u16string& DefaultFormName();
// "Configure " and the current module's description (two blanks with the default text).
std::u16string DefaultFormTitle(const TConfigSession& session);

}  // namespace qrl
