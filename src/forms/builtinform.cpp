#include "forms/builtinform.h"

#include "forms/formdef.h"
#include "forms/forms_rc.h"
#include "locale/language.h"
#include "request/session.h"
#include "text/textutil.h"

#include <filesystem>
#include <system_error>

namespace qrl {

namespace {

// The module entry that the first module list names as current, or null.
const TModuleEntry* CurrentModule(const TConfigSession& session) {
    if (session.moduleLists.empty()) return nullptr;
    const TModuleList& list = session.moduleLists.front();
    for (const TModuleEntry& entry : list.modules)
        if (iequals(entry.name, list.current)) return &entry;
    return nullptr;
}

bool FileExists(const std::u16string& path) {
    if (path.empty()) return false;
    std::error_code error;
    const std::filesystem::path p(path);
    return std::filesystem::exists(p, error) && !std::filesystem::is_directory(p, error);
}

class ItemAdder {
public:
    explicit ItemAdder(TFormDef& form) : form_(form) {}
    TFormItem& Add(ItemKind kind, std::int32_t id, std::u16string caption, std::int32_t x, std::int32_t y,
                   std::int32_t width, std::int32_t height, FormAction action = FormAction::None) {
        TFormItem& item = form_.items.emplace_back();
        item.kind = kind;
        item.controlId = id;
        item.caption = std::move(caption);
        item.left = x;
        item.top = y;
        item.width = width;
        item.height = height;
        item.action = action;
        return item;
    }
    // A push button whose caption comes through the language table.
    void Button(std::int32_t id, std::u16string_view key, std::u16string_view text, std::int32_t x, std::int32_t y,
                std::int32_t width, std::int32_t height, FormAction action = FormAction::None) {
        Add(ItemKind::Button, id, Translate(key, text), x, y, width, height, action);
    }

private:
    TFormDef& form_;
};

struct ChangeButton {
    std::u16string_view moduleType, key, text;
    std::int32_t defaultWidth, translatedWidth;
};
constexpr ChangeButton kChangeButtons[] = {
    {u"Comms", u"run_cpp_782", u"Change Comms", 65, 93},
    {u"Emul", u"run_cpp_787", u"Change Terminal", 68, 88},
    {u"FXfer", u"run_cpp_792", u"Change File Transfer", 80, 108},
};

}  // namespace

const std::u16string& DefaultFormName() { return sharedText(SharedText::DefaultFormName); }

std::u16string DefaultFormTitle(const TConfigSession& session) {
    const TModuleEntry* module = CurrentModule(session);
    return Translate(formtexts::kConfigure) + u" " + (module ? module->description : std::u16string());
}

void BuildDefaultForm(TConfigSession& session) {
    if (FindForm(session, DefaultFormName()) != nullptr) return;
    TFormDef& form = AddForm(session, DefaultFormName());
    form.usesTree = true;
    form.hasHelp = FileExists(session.helpBaseFile);
    form.title = DefaultFormTitle(session);
    form.fontName = u"Helv";
    form.fontSize = 8;
    form.left = 0;
    form.top = 0;
    form.width = 300;
    form.height = 170;

    // Editors start at 0, 0: the dialog lays them out when it knows its size.
    ItemAdder add(form);
    add.Add(ItemKind::Tree, IDC_TREE, u"", 8, 6, 100, 100);
    add.Add(ItemKind::GroupBox, IDC_VALUE_FRAME, u"", 8, 110, 284, 36);
    add.Add(ItemKind::Edit, IDC_VALUE_EDIT, u"", 0, 0, 200, 14);
    add.Add(ItemKind::Label, IDC_VALUE_LABEL, u"label", 0, 0, 200, 8);
    add.Button(IDC_FILE_BROWSE, u"run_cpp_540", u"Browse...", 0, 0, 40, 14);
    add.Button(IDC_MACRO_ASSIST, u"run_cpp_551", u"Assist...", 0, 0, 40, 14);
    add.Button(IDC_SSH_IMPORT, u"run_cpp_562", u"Import...", 0, 0, 40, 14);
    add.Button(IDC_DIR_BROWSE, u"run_cpp_573", u"Browse...", 0, 0, 40, 14);
    add.Add(ItemKind::CheckBox, IDC_VALUE_CHECK, u"", 0, 0, 200, 10);
    add.Add(ItemKind::ComboBox, IDC_VALUE_COMBO, u"", 0, 0, 200, 72);
    add.Add(ItemKind::Sample, IDC_COLOUR_SAMPLE, u"", 0, 0, 100, 14);
    add.Button(IDC_COLOUR_EDIT, u"run_cpp_614", u"Edit...", 0, 0, 40, 14);
    add.Add(ItemKind::ReadOnlyEdit, IDC_FONT_TEXT, u"", 0, 0, 200, 14);
    add.Button(IDC_FONT_EDIT, u"run_cpp_614", u"Edit...", 0, 0, 40, 14);
    add.Button(IDC_SPECIAL_EDIT, u"run_cpp_614", u"Edit...", 0, 0, 40, 14);
    add.Add(ItemKind::ReadOnlyEdit, IDC_PRINTER_TEXT, u"", 0, 0, 200, 14);
    add.Button(IDC_PRINTER_EDIT, u"run_cpp_614", u"Edit...", 0, 0, 40, 14);
    add.Button(IDC_PRINTER_DEFAULT, u"run_cpp_96", u"Default...", 0, 0, 50, 14);
    add.Button(IDC_LANG_ADD, u"run_cpp_703", u"Add...", 0, 0, 36, 14);
    add.Button(IDC_LANG_DELETE, u"run_cpp_714", u"Del", 0, 0, 36, 14);
    add.Button(IDC_FORM_OK, u"run_cpp_740", u"&Ok", 8, 150, 50, 16, FormAction::OK);
    add.Button(IDC_FORM_CANCEL, u"run_cpp_753", u"&Cancel", 64, 150, 50, 16, FormAction::Cancel);

    std::int32_t x = 120;
    if (session.moduleType == u"Comms") {
        add.Button(IDC_CONNECT, u"run_cpp_767", u"Co&nnect", x, 150, 50, 16, FormAction::Connect);
        x = 176;
    }
    for (const ChangeButton& change : kChangeButtons) {
        if (session.moduleType != change.moduleType) continue;
        const std::u16string caption = Translate(change.key, change.text);
        const std::int32_t width = caption == change.text ? change.defaultWidth : change.translatedWidth;
        if (!caption.empty()) {
            add.Add(ItemKind::Button, IDC_MODULE_SELECT, caption, x, 150, width, 16, FormAction::ModuleSelect);
            x += width + 6;
        }
    }
    if (form.hasHelp) add.Button(IDC_FORM_HELP, u"run_cpp_819", u"&Help", x, 150, 50, 16, FormAction::Help);
}

}  // namespace qrl
