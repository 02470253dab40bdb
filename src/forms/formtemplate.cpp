#include "forms/formtemplate.h"

#include "forms/forms_rc.h"
#include "forms/formvalues.h"
#include "request/session.h"

namespace qrl {

KindClass ClassOfKind(ItemKind kind) {
    switch (kind) {
    case ItemKind::Button: return {u"BUTTON", 0x10010000};
    case ItemKind::RadioButton: return {u"BUTTON", 0x10000009};
    case ItemKind::CheckBox: return {u"BUTTON", 0x10010003};
    case ItemKind::ComboBox: return {u"COMBOBOX", 0x10210003};
    case ItemKind::Edit: return {u"EDIT", 0x10810080};
    case ItemKind::ReadOnlyEdit: return {u"EDIT", 0x10810880};
    case ItemKind::GroupBox: return {u"BUTTON", 0x10000007};
    case ItemKind::Label: return {u"STATIC", 0x10000000};
    case ItemKind::ListBox: return {u"LISTBOX", 0x10A10000};
    case ItemKind::TabControl: return {u"SysTabControl32", 0x10000000};
    case ItemKind::Tree: return {u"SysTreeView32", 0x10810007};
    case ItemKind::Sample: return {u"qrsample", 0x10000000};
    default: return {u"STATIC", 0x10000000};
    }
}

TemplateBytes BuildDialogTemplate(TConfigSession& session, TFormDef& form) {
    TemplateDialog dialog;
    dialog.style = form.isChild ? kChildFormStyle : kFormStyle;
    dialog.x = static_cast<std::int16_t>(form.left);
    dialog.y = static_cast<std::int16_t>(form.top);
    dialog.cx = static_cast<std::int16_t>(form.width);
    dialog.cy = static_cast<std::int16_t>(form.height);
    dialog.title = form.title;
    dialog.fontSize = static_cast<std::uint16_t>(form.fontSize);
    dialog.fontName = form.fontName;

    std::vector<TemplateItem> items;
    items.reserve(form.items.size());
    std::int32_t nextId = FORM_FIRST_ITEM_ID;
    ItemKind previousKind = ItemKind::Unknown;
    for (TFormItem& item : form.items) {
        const TElementDef* element = item.element.empty() ? nullptr : session.FindElement(item.element);
        TemplateItem out;
        out.x = static_cast<std::int16_t>(item.left);
        out.y = static_cast<std::int16_t>(item.top);
        out.cx = static_cast<std::int16_t>(item.width);
        out.cy = static_cast<std::int16_t>(item.height);
        // Buttons with an action share that action's id; every other item keeps the id it was
        // given on the first build.
        const std::int32_t actionId = ActionControlId(item.action);
        if (actionId >= 0) {
            item.controlId = actionId;
        } else if (item.controlId == -1) {
            item.controlId = nextId++;
        }
        out.id = static_cast<std::uint16_t>(item.controlId & 0xFFFF);

        const KindClass kc = ClassOfKind(item.kind);
        out.className = std::u16string(kc.className);
        out.style = kc.style;
        if (item.kind == ItemKind::Button && item.controlId == IDC_FORM_OK) out.style = kDefaultButtonStyle;
        if (item.kind == ItemKind::ComboBox || item.kind == ItemKind::ListBox)
            item.listBound = item.listBound || IsListBound(element, item.kind);
        // A run of items of one kind is one group: that is what makes radio buttons a set.
        if (item.kind != previousKind) {
            out.style |= kWsGroup;
            previousKind = item.kind;
        }
        out.caption = item.caption;
        items.push_back(std::move(out));
    }
    return WriteTemplate(dialog, items);
}

}  // namespace qrl
