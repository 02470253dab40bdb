// Bytes as a dialog template, in either layout: reading it and renaming its controls' classes stop
// at its end whatever it holds, and a renamed copy is a template that reads again.
#include <cstddef>
#include <cstdint>

#include "kit/dlgtemplate.h"

namespace {

std::u16string_view EveryClass(std::u16string_view, void*) { return u"6.0!X"; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    qrl::TemplateDialog dialog;
    std::vector<qrl::TemplateItem> items;
    (void)qrl::ReadTemplate(data, size, dialog, items);
    const qrl::TemplateBytes renamed = qrl::RenameControlClasses(data, size, EveryClass, nullptr);
    if (!renamed.empty() && qrl::RenameControlClasses(renamed.data(), renamed.size(), EveryClass, nullptr).empty())
        __builtin_trap();
    return 0;
}
