// The built-in form's lower half: the value editor that suits the selected element, and the
// handlers that write each change into the element at once.
#include "kit/addedcontrol.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "kit/listrows.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/formeditor.h"
#include "forms/forms_rc.h"
#include "forms/formvalues.h"
#include "kit/samplemodel.h"
#include "locale/language.h"
#include "platform/platform.h"
#include "request/run.h"
#include "request/session.h"
#include "text/textutil.h"

#include <commdlg.h>
#include <shlobj.h>

#include <algorithm>
#include <cstdio>

namespace qrl {

namespace {

void FillCombo(HWND dialog, const std::vector<std::u16string>& entries) {
    HWND combo = GetDlgItem(dialog, IDC_VALUE_COMBO);
    if (!combo) return;
    TRedrawOff quiet(combo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    for (const std::u16string& entry : entries)
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(entry)));
}

std::u16string ColourText(std::uint32_t colour) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%6.6x", static_cast<unsigned>(colour));
    return toU16(buffer);
}

TLateEditor* FindLateEditor(TFormRun& run, int id) {
    for (TLateEditor& late : run.lateEditors)
        if (late.item.id == id) return &late;
    return nullptr;
}

const TLateEditor* FindLateEditor(const TFormRun& run, int id) { return FindLateEditor(const_cast<TFormRun&>(run), id); }

// A made value control goes into the tab order where the template had it: before the next one
// that exists, or before Reset, which follows them all.
HWND TabPredecessor(const TFormRun& run, const TLateEditor& late) {
    HWND next = nullptr;
    for (auto it = run.lateEditors.begin() + (&late - run.lateEditors.data()) + 1; !next && it != run.lateEditors.end(); ++it)
        next = it->window;
    if (!next) next = run.Control(IDC_RESET_VALUE);
    return next ? GetWindow(next, GW_HWNDPREV) : nullptr;
}

// Makes the value controls of `ids` that don't exist yet, hidden, where the last layout put them.
void MakeEditors(HWND dialog, TFormRun& run, const std::vector<int>& ids) {
    for (int id : ids) {
        TLateEditor* late = FindLateEditor(run, id);
        if (!late || late->window) continue;
        RECT place{};
        if (auto it = run.laidOut.find(id); it != run.laidOut.end()) {
            place = RECT{it->second.left, it->second.top, it->second.right, it->second.bottom};
        } else if (!LateEditorRect(dialog, run, id, place)) {
            continue;
        }
        // The frame's font is the dialog's, or the one the kit put in its place at a new resolution.
        HWND frame = run.Control(IDC_VALUE_FRAME);
        const auto font = reinterpret_cast<HFONT>(SendMessageW(frame ? frame : dialog, WM_GETFONT, 0, 0));
        const TemplateItem& item = late->item;
        late->window = AddDialogControl(dialog,
                                        {item.id, W(item.className), item.caption, item.style & ~WS_VISIBLE,
                                         item.exStyle | WS_EX_NOPARENTNOTIFY, 0, 0},
                                        TabPredecessor(run, *late), place, font);
    }
}

void ApplyEditor(HWND dialog, TFormRun& run, const EditorView& view) {
    const TElementDef& element = *run.form.currentElement;
    MakeEditors(dialog, run, view.shown);
    SetControlText(dialog, IDC_VALUE_LABEL, view.label);
    if (view.editText) {
        HWND edit = GetDlgItem(dialog, IDC_VALUE_EDIT);
        SetControlText(dialog, IDC_VALUE_EDIT, *view.editText);
        SendMessageW(edit, EM_LIMITTEXT, static_cast<WPARAM>(std::max(view.editLimit, 0)), 0);
        SendMessageW(edit, EM_SETPASSWORDCHAR, view.passwordChar ? L'*' : 0, 0);
        SetStyleBits(edit, ES_NUMBER, view.numbersOnly ? ES_NUMBER : 0);
        InvalidateRect(edit, nullptr, TRUE);
    }
    if (std::find(view.shown.begin(), view.shown.end(), IDC_VALUE_CHECK) != view.shown.end()) {
        SetControlText(dialog, IDC_VALUE_CHECK, view.checkText);
        SetChecked(dialog, IDC_VALUE_CHECK, view.checked);
    }
    if (std::find(view.shown.begin(), view.shown.end(), IDC_VALUE_COMBO) != view.shown.end()) {
        if (view.comboAuthFiles) {
            FillCombo(dialog, run.session.authFiles);
            SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                reinterpret_cast<LPARAM>(W(view.comboSelectText)));
        } else {
            FillCombo(dialog, view.comboEntries);
            SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_SETCURSEL, static_cast<WPARAM>(view.comboSelection), 0);
        }
    }
    if (view.colour) {
        SetControlText(dialog, IDC_COLOUR_SAMPLE, u"");
        SendDlgItemMessageW(dialog, IDC_COLOUR_SAMPLE, kSampleSetBackground, 0, static_cast<LPARAM>(*view.colour));
    }
    if (view.fontText) SetControlText(dialog, IDC_FONT_TEXT, *view.fontText);
    if (view.printerText) SetControlText(dialog, IDC_PRINTER_TEXT, *view.printerText);

    // Every control is shown or hidden, so what an earlier element showed goes away again.
    for (int id : kValueControls) {
        HWND control = FormControl(run, id);
        if (!control) continue;
        const bool shown = id != IDC_DIR_BROWSE && std::find(view.shown.begin(), view.shown.end(), id) != view.shown.end();
        ShowWindow(control, shown ? SW_SHOW : SW_HIDE);
        if (!shown) continue;
        const bool guarded = std::find(view.guarded.begin(), view.guarded.end(), id) != view.guarded.end();
        EnableWindow(control, !(guarded && element.readOnly));
    }
}

// ---- change handlers: each writes the value at once and renews the tree label

void OnEditChanged(HWND dialog, TFormRun& run) {
    TBusyScope typing(run.typing);
    run.form.currentElement->value = GetControlText(dialog, IDC_VALUE_EDIT);
    RefreshTreeItem(dialog, run);
}

void OnCheckClicked(HWND dialog, TFormRun& run) {
    SetBool(*run.form.currentElement, IsChecked(dialog, IDC_VALUE_CHECK));
    RefreshTreeItem(dialog, run);
}

void OnComboChanged(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    if (element.type == ElementType::SshAuthFile) {
        element.value = GetControlText(dialog, IDC_VALUE_COMBO);
    } else {
        const int position = static_cast<int>(SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0));
        if (position == CB_ERR) return;
        element.value = ChoiceValue(element, position);
    }
    RefreshTreeItem(dialog, run);
}

void OnChooseColour(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    COLORREF custom[16];
    std::copy(run.form.customColours.begin(), run.form.customColours.end(), custom);
    CHOOSECOLORW choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = dialog;
    choose.rgbResult = wcstoulBase16(element.value);
    choose.lpCustColors = custom;
    choose.Flags = CC_RGBINIT | CC_FULLOPEN | CC_SOLIDCOLOR | CC_ANYCOLOR;
    const BOOL chosen = ChooseColorW(&choose);
    std::copy(std::begin(custom), std::end(custom), run.form.customColours.begin());
    if (!chosen) return;
    element.value = ColourText(choose.rgbResult);
    SendDlgItemMessageW(dialog, IDC_COLOUR_SAMPLE, kSampleSetBackground, 0, static_cast<LPARAM>(choose.rgbResult));
    RefreshTreeItem(dialog, run);
}

// The Macro Assistant on the value, at the element's macro level; OK takes its text into both.
void OnMacroAssist(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    std::u16string text = element.value;
    if (!run.editors.macroAssist ||
        run.editors.macroAssist(dialog, run.session, text, static_cast<uint32_t>(element.MacroMode())) != IDOK)
        return;
    element.value = text;
    {
        TBusyScope busy(run.busy);
        SetControlText(dialog, IDC_VALUE_EDIT, text);
    }
    RefreshTreeItem(dialog, run);
}

// The printer setup of the element: 3009 picks one with the platform's dialog, 3012 goes back to the
// system's default printer and keeps the rest of the setup in the text.
void ShowValue(HWND dialog, TFormRun& run, int id, std::u16string value, const std::u16string& shown) {
    run.form.currentElement->value = std::move(value);
    SetControlText(dialog, id, shown);
    RefreshTreeItem(dialog, run);
}

void OnEditPrinter(HWND dialog, TFormRun& run) {
    std::u16string value = run.form.currentElement->value, shown;
    if (run.editors.choosePrinter && run.editors.choosePrinter(dialog, value, shown))
        ShowValue(dialog, run, IDC_PRINTER_TEXT, std::move(value), shown);
}

void OnSpecialEdit(HWND dialog, TFormRun& run) {
    const TSpecialValueEditor editor =
        run.editors.specialEditor ? run.editors.specialEditor(run.form.currentElement->type) : nullptr;
    if (editor && editor(dialog, run.session, *run.form.currentElement)) RefreshTreeItem(dialog, run);
}

void OnDefaultPrinter(HWND dialog, TFormRun& run) {
    const std::u16string question = Translate(u"run_cpp_2669", u"Use default printer?");
    if (MessageBoxW(dialog, W(question), kProgramTitle, MB_YESNO | MB_ICONQUESTION) != IDYES) return;
    if (!run.editors.useDefaultPrinter) return;
    std::u16string value = run.form.currentElement->value, shown;
    run.editors.useDefaultPrinter(value, shown);
    ShowValue(dialog, run, IDC_PRINTER_TEXT, std::move(value), shown);
}

void OnChooseFont(HWND dialog, TFormRun& run) {
    const TElementDef& element = *run.form.currentElement;
    std::u16string value = element.value, shown;
    if (run.editors.chooseFont && run.editors.chooseFont(dialog, element.name.str(), value, shown))
        ShowValue(dialog, run, IDC_FONT_TEXT, std::move(value), shown);
}

void OnBrowse(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    TOpenFileRequest request;
    request.title = Translate(formtexts::kBrowse);
    request.filter = BuildBrowseFilter(element.fileFilter, Translate(formtexts::kAllFilesFilter));
    request.initialFile = BrowseInitialFile(element.value);
    const std::u16string chosen = ChooseFileToOpen(dialog, request);
    if (chosen.empty()) return;
    element.value = chosen;
    {
        TBusyScope busy(run.busy);
        SetControlText(dialog, IDC_VALUE_EDIT, element.value);
    }
    RefreshTreeItem(dialog, run);
}

bool PathExists(const std::u16string& path) {
    return platform::isUsablePath(path) && GetFileAttributesW(W(path)) != INVALID_FILE_ATTRIBUTES;
}

void OnImportKey(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    TConfigSession& session = run.session;
    TOpenFileRequest request;
    request.title = Translate(formtexts::kSelectSshKey);
    request.flags = OFN_FILEMUSTEXIST;
    const std::u16string chosen = ChooseFileToOpen(dialog, request);
    if (chosen.empty()) return;
    const ImportPlan plan = PlanKeyImport(session.authFileDirectory, chosen, PathExists);
    if (plan.copy) {
        // The directory call wants back slashes and no separator at the end.
        std::u16string directory = plan.directory;
        std::replace(directory.begin(), directory.end(), u'/', u'\\');
        while (directory.size() > 1 && directory.back() == u'\\') directory.pop_back();
        // The folder comes from the host: a name that cannot be a path fails as a failed copy.
        const bool usable = platform::isUsablePath(directory) && platform::isUsablePath(plan.target);
        if (usable) SHCreateDirectoryExW(nullptr, W(directory), nullptr);
        if (!usable || !CopyFileW(W(chosen), W(plan.target), TRUE)) {
            // One key stands for all three texts of this handler.
            const std::u16string text = Translate(formtexts::kCouldNotCreate) + plan.target + u"\"";
            const std::u16string caption = Translate(formtexts::kError);
            MessageBoxW(dialog, W(text), W(caption), MB_OK);
            return;
        }
    }
    session.ReadAuthFiles();
    {
        TBusyScope busy(run.busy);
        FillCombo(dialog, session.authFiles);
        SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(W(plan.name)));
    }
    element.value = plan.name;
    RefreshTreeItem(dialog, run);
}

void OnDeleteLanguage(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    if (element.value.empty()) return;
    const std::u16string language = element.value;
    const std::u16string text = Translate(formtexts::kDeleteLanguage) + language + u"?";
    const std::u16string caption = Translate(formtexts::kConfirmDeleteLanguage);
    if (MessageBoxW(dialog, W(text), W(caption), MB_OKCANCEL | MB_ICONWARNING | MB_DEFBUTTON2) != IDOK) return;
    if (run.session.link.DeleteLanguage(language) != 0) return;
    TElementDef* list = run.session.FindElement(u"LanguageName");
    if (!list) return;
    const int old = static_cast<int>(SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_GETCURSEL, 0, 0));
    RemoveLanguageEntry(list->strings, list->values, language);
    const int selection = SelectionAfterDelete(old, list->strings.size());
    {
        TBusyScope busy(run.busy);
        FillCombo(dialog, list->strings);
        SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_SETCURSEL, static_cast<WPARAM>(selection), 0);
    }
    element.value = selection >= 0 ? list->strings[static_cast<std::size_t>(selection)] : std::u16string();
    RefreshTreeItem(dialog, run);
}

void OnAddLanguage(HWND dialog, TFormRun& run) {
    TElementDef& element = *run.form.currentElement;
    TConfigSession& session = run.session;
    const TFormEditors& editors = run.editors;
    if (editors.charMapsModified && editors.charMapsModified(session)) {
        const std::u16string question = Translate(formtexts::kMapsModified) + Translate(formtexts::kSaveMapsNow);
        const int answer = MessageBoxW(dialog, W(question), kProgramTitle, MB_YESNOCANCEL | MB_ICONEXCLAMATION);
        if (answer == IDCANCEL) return;
        if (answer == IDYES && editors.saveCharMaps) editors.saveCharMaps(session);
    }
    std::u16string newName;
    std::u16string baseName = element.value;
    if (!editors.addLanguage || !editors.addLanguage(dialog, session, element.strings, newName, baseName)) return;
    if (session.link.AddLanguage(newName, baseName) != 0) {
        const std::u16string text = Translate(formtexts::kCouldNotAddLanguage);
        const std::u16string caption = Translate(formtexts::kCouldNotAddLanguageTitle);
        MessageBoxW(dialog, W(text), W(caption), MB_OK);
        return;
    }
    // The local lists change only once the kernel has the language.
    element.strings.push_back(newName);
    if (!element.values.empty()) element.values.push_back(newName);
    element.value = newName;
    {
        TBusyScope busy(run.busy);
        FillCombo(dialog, element.strings);
        SendDlgItemMessageW(dialog, IDC_VALUE_COMBO, CB_SETCURSEL, element.strings.size() - 1, 0);
    }
    RefreshTreeItem(dialog, run);
}

}  // namespace

void HideEditors(const TFormRun& run) {
    for (int id : kValueControls)
        if (HWND control = FormControl(run, id)) ShowWindow(control, SW_HIDE);
}

TemplateBytes SetEditorsAside(const TemplateBytes& bytes, std::vector<TLateEditor>& aside) {
    TemplateDialog dialog;
    std::vector<TemplateItem> items;
    if (!ReadTemplate(bytes.data(), bytes.size(), dialog, items)) return bytes;
    std::vector<TemplateItem> kept;
    for (TemplateItem& item : items) {
        if (std::find(kValueControls.begin(), kValueControls.end(), item.id) != kValueControls.end())
            aside.push_back(TLateEditor{std::move(item), nullptr});
        else
            kept.push_back(std::move(item));
    }
    return WriteTemplate(dialog, kept);
}

bool LateEditorRect(HWND dialog, const TFormRun& run, int id, RECT& rect) {
    const TLateEditor* late = FindLateEditor(run, id);
    if (!late || late->window) return false;
    // As the dialog manager places a control: origin and size mapped from dialog units apart.
    RECT origin{late->item.x, late->item.y, 0, 0}, size{0, 0, late->item.cx, late->item.cy};
    MapDialogRect(dialog, &origin);
    MapDialogRect(dialog, &size);
    rect = RECT{origin.left, origin.top, origin.left + size.right, origin.top + size.bottom};
    return true;
}

void MakeRemainingEditors(HWND dialog, TFormRun& run) {
    std::vector<int> ids;
    for (const TLateEditor& late : run.lateEditors) ids.push_back(late.item.id);
    MakeEditors(dialog, run, ids);
}

HWND FormControl(const TFormRun& run, int id) {
    const TLateEditor* late = FindLateEditor(run, id);
    return late ? late->window : run.Control(id);
}

void ShowEditor(HWND dialog, TFormRun& run, bool byKeyboard) {
    const TElementDef* element = run.form.currentElement;
    if (!element) return;
    const EditorView view = DescribeEditor(*element, run.session.macroAssist);
    {
        TBusyScope busy(run.busy);
        ApplyEditor(dialog, run, view);
    }
    // A mouse click goes on to the field; arrow keys stay in the tree.
    if (view.focus != 0 && !byKeyboard)
        PostMessageW(dialog, WM_FORM_SETFOCUS, 0, reinterpret_cast<LPARAM>(GetDlgItem(dialog, view.focus)));
}

bool OnEditorCommand(HWND dialog, TFormRun& run, int id, int code) {
    if (id < IDC_VALUE_EDIT || id > IDC_SSH_IMPORT) return false;
    if (run.busy || run.form.currentElement == nullptr) return true;
    switch (id) {
    case IDC_VALUE_EDIT:
        if (code == EN_CHANGE) OnEditChanged(dialog, run);
        break;
    case IDC_VALUE_CHECK:
        if (code == BN_CLICKED) OnCheckClicked(dialog, run);
        break;
    case IDC_VALUE_COMBO:
        if (code == CBN_SELCHANGE) OnComboChanged(dialog, run);
        break;
    case IDC_COLOUR_EDIT:
        if (code == BN_CLICKED) OnChooseColour(dialog, run);
        break;
    case IDC_FONT_EDIT:
        if (code == BN_CLICKED) OnChooseFont(dialog, run);
        break;
    case IDC_FILE_BROWSE:
        if (code == BN_CLICKED) OnBrowse(dialog, run);
        break;
    case IDC_SSH_IMPORT:
        if (code == BN_CLICKED) OnImportKey(dialog, run);
        break;
    case IDC_LANG_DELETE:
        if (code == BN_CLICKED) OnDeleteLanguage(dialog, run);
        break;
    case IDC_LANG_ADD:
        if (code == BN_CLICKED) OnAddLanguage(dialog, run);
        break;
    case IDC_MACRO_ASSIST:
        if (code == BN_CLICKED) OnMacroAssist(dialog, run);
        break;
    case IDC_PRINTER_EDIT:
        if (code == BN_CLICKED) OnEditPrinter(dialog, run);
        break;
    case IDC_PRINTER_DEFAULT:
        if (code == BN_CLICKED) OnDefaultPrinter(dialog, run);
        break;
    case IDC_SPECIAL_EDIT:
        if (code == BN_CLICKED) OnSpecialEdit(dialog, run);
        break;
    // 3011 does nothing by design.
    default: break;
    }
    return true;
}

}  // namespace qrl
