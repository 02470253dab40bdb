// A request from the fuzzer (UTF-8) goes through everything the form engine builds without a
// window: its forms and groups as read (also when the loader gave up half-way), the built-in form,
// every template read back, the tree, and each element's editor and list values.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "forms/builtinform.h"
#include "kit/dlgtemplate.h"
#include "kit/fieldrules.h"
#include "forms/formdef.h"
#include "forms/formeditor.h"
#include "forms/formtemplate.h"
#include "forms/formtree.h"
#include "forms/formvalues.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(data), size));
    qrl::TConfigSession session;
    try {
        session.LoadRequestText(text);
        session.ApplyDataValues();
    } catch (const qrl::ECfgError&) {
        // What was read stays in the session: build from that too.
    } catch (const AdvXMLParser::Exception&) {
        return 0;
    }
    (void)qrl::FindForm(session, session.startForm);
    qrl::BuildDefaultForm(session);
    if (qrl::TFormStore* store = session.FindPart<qrl::TFormStore>()) {
        for (qrl::TFormDef& form : store->forms) {
            const qrl::TemplateBytes bytes = qrl::BuildDialogTemplate(session, form);
            qrl::TemplateDialog dialog;
            std::vector<qrl::TemplateItem> items;
            if (!qrl::ReadTemplate(bytes.data(), bytes.size(), dialog, items) || items.size() != form.items.size() % 65536)
                __builtin_trap();
            if (form.usesTree) (void)qrl::BuildTreeIndex(form, session);
        }
    }
    std::u16string message;
    for (qrl::TElementDef& element : session.elements) {
        (void)qrl::DescribeEditor(element, true);
        for (qrl::ItemKind kind : {qrl::ItemKind::ComboBox, qrl::ItemKind::ListBox}) (void)qrl::ListEntries(element, kind);
        for (int i = -1; i < 3; ++i) (void)qrl::ChoiceValue(element, i);
        (void)qrl::CheckIntegerText(element.value, element.min, element.max, message);
        qrl::TElementDef copy = element;
        qrl::SetBool(copy, true);
        qrl::SetBool(copy, false);
    }
    return 0;
}
