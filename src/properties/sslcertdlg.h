// SSL Certificate, opened by a form's "Edit..." button on an `sslcertificate` element. Win32 only.
#pragma once

#include <windows.h>

namespace qrl {

class TConfigSession;
class TElementDef;

// On OK the element's value becomes the chosen property's text and true is returned.
bool EditSslCertificate(HWND parent, TConfigSession& session, TElementDef& element);

}  // namespace qrl
