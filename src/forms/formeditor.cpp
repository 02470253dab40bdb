#include "forms/formeditor.h"

#include "forms/forms_rc.h"
#include "forms/formvalues.h"
#include "locale/language.h"
#include "request/elementdef.h"
#include "text/textutil.h"

#include <algorithm>

namespace qrl {

const std::vector<int> kValueControls{
    IDC_VALUE_LABEL,   IDC_VALUE_EDIT,    IDC_VALUE_CHECK,  IDC_VALUE_COMBO,  IDC_COLOUR_SAMPLE,
    IDC_COLOUR_EDIT,   IDC_FONT_TEXT,     IDC_FONT_EDIT,    IDC_PRINTER_TEXT, IDC_PRINTER_EDIT,
    IDC_FILE_BROWSE,   IDC_DIR_BROWSE,    IDC_PRINTER_DEFAULT, IDC_SPECIAL_EDIT, IDC_LANG_ADD,
    IDC_LANG_DELETE,   IDC_MACRO_ASSIST,  IDC_SSH_IMPORT};

namespace {

void ShowEdit(EditorView& v, const TElementDef& e) {
    v.shown.push_back(IDC_VALUE_EDIT);
    v.guarded.push_back(IDC_VALUE_EDIT);
    v.editText = e.value;
    v.focus = IDC_VALUE_EDIT;
}

void ShowCombo(EditorView& v) {
    v.shown.push_back(IDC_VALUE_COMBO);
    v.focus = IDC_VALUE_COMBO;
}

}  // namespace

EditorView DescribeEditor(const TElementDef& e, bool macroAssistOn) {
    EditorView v;
    v.label = ElementLabel(e);
    v.shown.push_back(IDC_VALUE_LABEL);
    switch (e.type) {
    case ElementType::Text:
        ShowEdit(v, e);
        v.editLimit = e.maxLength;
        v.passwordChar = e.password;
        if (e.macroAssist && macroAssistOn) {
            v.shown.push_back(IDC_MACRO_ASSIST);
            v.guarded.push_back(IDC_MACRO_ASSIST);
        }
        break;
    case ElementType::FilePath:
        ShowEdit(v, e);
        v.editLimit = e.maxLength;
        v.shown.push_back(IDC_FILE_BROWSE);
        v.guarded.push_back(IDC_FILE_BROWSE);
        break;
    case ElementType::Directory:
        ShowEdit(v, e);  // its browse button (3011) stays hidden: nothing handles it
        v.editLimit = e.maxLength;
        break;
    case ElementType::Int:
        ShowEdit(v, e);
        v.numbersOnly = true;
        break;
    case ElementType::Bool:
        v.shown.clear();  // the check box shows the label itself
        v.shown.push_back(IDC_VALUE_CHECK);
        v.guarded.push_back(IDC_VALUE_CHECK);
        v.checkText = v.label;
        v.checked = e.GetBool();
        v.focus = IDC_VALUE_CHECK;
        break;
    case ElementType::StringSet:
    case ElementType::Set:
        ShowCombo(v);
        v.guarded.push_back(IDC_VALUE_COMBO);
        v.comboEntries = e.strings;
        v.comboSelection = std::max(e.GetChoiceIndex(e.value, -1), -1);
        if (e.name == u"LanguageName") {  // case counting, as the host names it
            v.shown.push_back(IDC_LANG_ADD);
            v.shown.push_back(IDC_LANG_DELETE);
        }
        break;
    case ElementType::Rgb:
        v.shown.push_back(IDC_COLOUR_SAMPLE);
        v.shown.push_back(IDC_COLOUR_EDIT);
        v.guarded.push_back(IDC_COLOUR_EDIT);
        v.colour = wcstoulBase16(e.value);
        break;
    case ElementType::Font:
        v.shown.push_back(IDC_FONT_TEXT);
        v.shown.push_back(IDC_FONT_EDIT);
        v.guarded.push_back(IDC_FONT_EDIT);
        v.fontText = ShortTextBare(e);
        break;
    case ElementType::Printer:
        v.shown.push_back(IDC_PRINTER_TEXT);
        v.shown.push_back(IDC_PRINTER_EDIT);
        v.shown.push_back(IDC_PRINTER_DEFAULT);
        v.guarded.push_back(IDC_PRINTER_EDIT);
        v.guarded.push_back(IDC_PRINTER_DEFAULT);
        v.printerText = ShortTextBare(e);
        break;
    case ElementType::Char8: {
        ShowCombo(v);  // never disabled, even when read-only
        std::int32_t last = e.max == 0 ? 255 : e.max;
        last = std::min(last, 255);
        // Only the top is cut; a negative code shows as its byte. A min far below gives at most
        // as many rows as an int range does.
        const long long first =
            std::max<long long>(std::min(e.min, 255), static_cast<long long>(last) - kMaxRangeRows + 1);
        for (long long code = first; code <= last; ++code) v.comboEntries.push_back(CharacterText(decimal(code)));
        // The position is the code itself, not the code less min.
        v.comboSelection = wtoi(e.value);
        break;
    }
    case ElementType::Charset:
        v.label += Translate(formtexts::kCharacterSet);
        v.shown.push_back(IDC_SPECIAL_EDIT);
        v.focus = IDC_SPECIAL_EDIT;
        break;
    case ElementType::TandemColours:
        v.label = Translate(formtexts::kTandemColourMap);
        v.shown.push_back(IDC_SPECIAL_EDIT);
        v.focus = IDC_SPECIAL_EDIT;
        break;
    case ElementType::Ibm5250Colours:
        v.label = Translate(formtexts::kIbm5250ColourMap);
        v.shown.push_back(IDC_SPECIAL_EDIT);
        v.focus = IDC_SPECIAL_EDIT;
        break;
    case ElementType::SshAuthFile:
        ShowCombo(v);
        v.guarded.push_back(IDC_VALUE_COMBO);
        v.shown.push_back(IDC_SSH_IMPORT);
        v.comboAuthFiles = true;
        v.comboSelectText = e.value;
        break;
    case ElementType::SslCertificate:
        v.shown.push_back(IDC_SPECIAL_EDIT);
        v.focus = IDC_SPECIAL_EDIT;
        v.printerText = ShortTextBare(e);  // set on 3008, which stays hidden
        break;
    default:
        v.label = sharedText(SharedText::UnimplementedType);
        break;
    }
    return v;
}

}  // namespace qrl
