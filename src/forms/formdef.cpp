#include "forms/formdef.h"

#include "forms/forms_rc.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"

namespace qrl {

using AdvXMLParser::Element;

namespace {

std::u16string Attr(const Element& node, std::u16string_view name) { return node.GetAttribute(name).GetText(); }
std::int32_t IntAttr(const Element& node, std::u16string_view name) { return wtoi(Attr(node, name)); }

struct KindTag {
    std::u16string_view tag;
    ItemKind kind;
};
constexpr KindTag kKindTags[] = {
    {u"Button", ItemKind::Button},     {u"RadioButton", ItemKind::RadioButton}, {u"CheckBox", ItemKind::CheckBox},
    {u"ComboBox", ItemKind::ComboBox}, {u"Edit", ItemKind::Edit},               {u"GroupBox", ItemKind::GroupBox},
    {u"Label", ItemKind::Label},       {u"ListBox", ItemKind::ListBox},
};

struct ActionName {
    std::u16string_view name;
    FormAction action;
};
constexpr ActionName kActionNames[] = {
    {u"Form", FormAction::Form}, {u"ModuleSelect", FormAction::ModuleSelect}, {u"Connect", FormAction::Connect},
    {u"OK", FormAction::OK},     {u"Cancel", FormAction::Cancel},             {u"Help", FormAction::Help},
};

}  // namespace

ItemKind ItemKindFromTag(std::u16string_view tag) {
    for (const KindTag& k : kKindTags)
        if (iequals(tag, k.tag)) return k.kind;
    return ItemKind::Unknown;
}

FormAction ActionFromName(std::u16string_view name) {
    for (const ActionName& a : kActionNames)
        if (iequals(name, a.name)) return a.action;
    return FormAction::None;
}

std::int32_t ActionControlId(FormAction action) {
    switch (action) {
    case FormAction::ModuleSelect: return IDC_MODULE_SELECT;
    case FormAction::Connect: return IDC_CONNECT;
    case FormAction::OK: return IDC_FORM_OK;
    case FormAction::Cancel: return IDC_FORM_CANCEL;
    case FormAction::Help: return IDC_FORM_HELP;
    default: return -1;
    }
}

TFormDef& AddForm(TConfigSession& session, std::u16string_view name) {
    TFormStore& store = session.Part<TFormStore>();
    TFormDef& form = store.forms.emplace_back();
    form.session = &session;
    form.name = std::u16string(name);
    store.formIndex.Add(form.name, &form);
    return form;
}

void ReadInterface(TConfigSession& session, const Element& node) {
    session.startForm = Attr(node, u"StartForm");
    NotePlaced(session.notes, &session.startForm, node);
    TFormStore& store = session.Part<TFormStore>();
    for (std::size_t i = 0; i < node.GetChildCount(); ++i) {
        const Element* child = node.GetChild(i).AsElement();
        if (child == nullptr) continue;
        if (!iequals(child->GetName(), u"Form"))
            Refuse(session.notes, *child, ECfgError::WrongChild(u"Form", child->GetName()));
        TFormDef& form = store.forms.emplace_back();
        form.session = &session;
        NotePlaced(session.notes, &form, *child);
        ReadForm(form, *child);
    }
}

void ReadForm(TFormDef& form, const Element& node) {
    form.name = Attr(node, u"Name");
    if (form.session != nullptr) form.session->Part<TFormStore>().formIndex.Add(form.name, &form);
    form.title = Attr(node, u"Title");
    form.left = IntAttr(node, u"Left");
    form.top = IntAttr(node, u"Top");
    form.height = IntAttr(node, u"Height");
    form.width = IntAttr(node, u"Width");
    form.fontName = Attr(node, u"Font");
    form.fontSize = IntAttr(node, u"FontSize");
    for (std::size_t i = 0; i < node.GetChildCount(); ++i)
        if (const Element* child = node.GetChild(i).AsElement()) ReadItem(form, *child);
}

void ReadItem(TFormDef& form, const Element& node) {
    TReadNotes* notes = form.session ? form.session->notes : nullptr;
    TFormItem& item = form.items.emplace_back();
    NotePlaced(notes, &item, node);
    item.kind = ItemKindFromTag(node.GetName());
    if (item.kind == ItemKind::Unknown)
        Refuse(notes, node, ECfgError(u"Unknown item type \"" + std::u16string(node.GetName()) + u"\""));
    item.name = Attr(node, u"Name");
    item.caption = Attr(node, u"Caption");
    item.idText = Attr(node, u"Id");
    item.element = Attr(node, u"Element");
    item.inverted = Attr(node, u"Inverted") == u"1";
    item.left = IntAttr(node, u"Left");
    item.top = IntAttr(node, u"Top");
    item.height = IntAttr(node, u"Height");
    item.width = IntAttr(node, u"Width");
    item.fontName = Attr(node, u"Font");
    item.fontSize = IntAttr(node, u"FontSize");
    item.action = ActionFromName(Attr(node, u"Action"));
    item.actionParam = Attr(node, u"ActionParam");
    item.value = Attr(node, u"Value");
}

void ReadGroups(TConfigSession& session, const Element& node) {
    TFormStore& store = session.Part<TFormStore>();
    for (std::size_t i = 0; i < node.GetChildCount(); ++i) {
        const Element* child = node.GetChild(i).AsElement();
        if (child == nullptr) continue;
        if (!iequals(child->GetName(), u"Group"))
            Refuse(session.notes, *child, ECfgError::WrongChild(u"Group", child->GetName()));
        TGroupDef& group = store.groups.emplace_back();
        group.name = Attr(*child, u"Name");
        group.expanded = IntAttr(*child, u"expanded") != 0;
        group.hidden = IntAttr(*child, u"hidden") != 0;
        group.helpFile = Attr(*child, u"help_file");
        group.helpId = Attr(*child, u"help_id");
        group.defaultHelpFile = session.helpFile;
        store.groupIndex.Add(group.name, &group);
    }
}

TFormDef* FindForm(const TConfigSession& session, std::u16string_view name) {
    // An empty name (no StartForm, no ActionParam) names no form, even a form sent without a Name.
    if (name.empty()) return nullptr;
    const TFormStore* store = session.FindPart<TFormStore>();
    return store ? store->formIndex.Find(name) : nullptr;
}

TGroupDef* FindGroup(const TConfigSession& session, std::u16string_view name) {
    const TFormStore* store = session.FindPart<TFormStore>();
    return store ? store->groupIndex.Find(name) : nullptr;
}

}  // namespace qrl
