// A TFormDef becomes a dialog template: the control of each item, its id and its style.
#pragma once

#include "kit/dlgtemplate.h"
#include "forms/formdef.h"

#include <string_view>

namespace qrl {

class TConfigSession;

// Window class and base style of an item kind.
struct KindClass {
    std::u16string_view className;
    std::uint32_t style;
};
KindClass ClassOfKind(ItemKind kind);

inline constexpr std::uint32_t kFormStyle = 0x90C800C0;       // popup, caption, system menu, set font, modal frame
inline constexpr std::uint32_t kChildFormStyle = 0x40000440;  // child page
inline constexpr std::uint32_t kWsGroup = 0x20000;
inline constexpr std::uint32_t kDefaultButtonStyle = 0x10010001;

// Writes the template. Items without a control id get the next free one from 5000 on and keep it,
// so a form opened again has the same ids; `listBound` is set on the drop-downs and lists that
// carry their value by position.
TemplateBytes BuildDialogTemplate(TConfigSession& session, TFormDef& form);

}  // namespace qrl
