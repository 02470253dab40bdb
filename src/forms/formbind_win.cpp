// The three value steps of a form: fill the lists, show the values, collect them at OK/Connect.
// Only items bound to an existing element take part.
#include "kit/basedialog.h"
#include "kit/listrows.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/formvalues.h"
#include "request/session.h"

namespace qrl {

namespace {

TElementDef* ElementOf(TFormRun& run, const TFormItem& item) {
    return item.element.empty() ? nullptr : run.session.FindElement(item.element);
}

std::u16string CollectText(HWND dialog, int id) {
    std::u16string text = GetControlText(dialog, id);
    if (text.size() > kCollectTextMax) text.resize(kCollectTextMax);
    return text;
}

}  // namespace

void FillLists(HWND dialog, TFormRun& run) {
    for (const TFormItem& item : run.form.items) {
        if (item.kind != ItemKind::ComboBox && item.kind != ItemKind::ListBox) continue;
        const TElementDef* element = ElementOf(run, item);
        if (!element) continue;
        HWND control = GetDlgItem(dialog, item.controlId);
        if (!control) continue;
        const bool combo = item.kind == ItemKind::ComboBox;
        TRedrawOff quiet(control);
        SendMessageW(control, combo ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
        const ListFill fill = ListEntries(*element, item.kind);
        const UINT add = fill.useComboMessage || combo ? CB_ADDSTRING : LB_ADDSTRING;
        for (const std::u16string& entry : fill.entries)
            SendMessageW(control, add, 0, reinterpret_cast<LPARAM>(W(entry)));
    }
}

void ShowValues(HWND dialog, TFormRun& run) {
    TBusyScope busy(run.busy);
    for (const TFormItem& item : run.form.items) {
        const TElementDef* element = ElementOf(run, item);
        if (!element) continue;
        const int id = item.controlId;
        switch (item.kind) {
        case ItemKind::RadioButton:
            if (RadioCompareText(*element) == item.value) CheckDlgButton(dialog, id, BST_CHECKED);
            break;
        case ItemKind::CheckBox:
            SetChecked(dialog, id, element->GetBool() != item.inverted);
            break;
        case ItemKind::ComboBox:
            if (item.listBound) {
                SendDlgItemMessageW(dialog, id, CB_SETCURSEL,
                                    static_cast<WPARAM>(element->GetChoiceIndex(element->value, -1)), 0);
            } else {
                SetControlText(dialog, id, element->value);
            }
            break;
        case ItemKind::Edit:
        case ItemKind::ReadOnlyEdit: SetControlText(dialog, id, element->value); break;
        case ItemKind::ListBox:
            SendDlgItemMessageW(dialog, id, LB_SETCURSEL, static_cast<WPARAM>(element->GetChoiceIndex(element->value, -1)),
                                0);
            break;
        default: break;
        }
    }
}

void CollectValues(HWND dialog, TFormRun& run) {
    for (const TFormItem& item : run.form.items) {
        TElementDef* element = ElementOf(run, item);
        if (!element) continue;
        const int id = item.controlId;
        switch (item.kind) {
        case ItemKind::RadioButton:
            if (IsChecked(dialog, id)) element->value = item.value;
            break;
        case ItemKind::CheckBox:
            SetBool(*element, (IsChecked(dialog, id)) != item.inverted);
            break;
        case ItemKind::ComboBox:
        case ItemKind::ListBox: {
            if (item.kind == ItemKind::ComboBox && !item.listBound) {
                element->value = CollectText(dialog, id);
                break;
            }
            const UINT get = item.kind == ItemKind::ComboBox ? CB_GETCURSEL : LB_GETCURSEL;
            const int position = static_cast<int>(SendDlgItemMessageW(dialog, id, get, 0, 0));
            element->value = position == -1 ? element->defaultValue : ChoiceValue(*element, position);
            break;
        }
        case ItemKind::Edit:
        case ItemKind::ReadOnlyEdit: element->value = CollectText(dialog, id); break;
        default: break;
        }
    }
}

}  // namespace qrl
