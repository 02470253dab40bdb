#include "hotspots/hotspotsdlg.h"

#include <windows.h>
#include <commdlg.h>

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "kit/listrows.h"
#include "hotspots/hotspotcoloursdlg.h"
#include "hotspots/hotspotdata.h"
#include "hotspots/hotspoteditdlg.h"
#include "hotspots/hotspotrules.h"
#include "hotspots/hotspots_rc.h"
#include "keyboard/keymapdata.h"
#include "keyboard/kdf.h"
#include "platform/platform.h"
#include "request/session.h"
#include "text/textutil.h"

#include <algorithm>
#include <utility>

namespace qrl {

namespace {

constexpr TDialogText kMainTexts[] = {
    {kDialogTitleId, {u"IDD_HOTSPOTS", u"Configure HotSpots"}},
    {IDC_HS_ENABLE, {u"IDC_HS_ENABLE", u"Enable &HotSpots"}},
    {IDC_HS_COLOURS, {u"IDC_HS_COLOURS", u"Co&lours..."}},
    {IDC_HS_FILE_LABEL, {u"IDC_HS_FILE", u"File:"}},
    {IDC_HS_BROWSE, {u"IDC_HS_BROWSE", u"&Browse..."}},
    {IDC_HS_SET_LABEL, {u"IDC_HS_SET", u"Set:"}},
    {IDC_HS_SAVE, {u"IDC_HS_SAVE", u"Sa&ve"}},
    {IDC_HS_SAVEAS, {u"IDC_HS_SAVEAS", u"Save&As..."}},
    {IDC_HS_LIST_LABEL, {u"IDC_HS_LIST", u"HotSpots:"}},
    {IDC_HS_EDIT, {u"IDC_HS_EDIT", u"&Edit..."}},
    {IDC_HS_NEW, {u"IDC_HS_NEW", u"&New..."}},
    {IDC_HS_DELETE, {u"IDC_HS_DELETE", u"&Delete"}},
    {IDC_HS_COPY, {u"IDC_HS_COPY", u"C&opy"}},
    {IDOK, {u"IDOK", u"&OK"}},
    {IDCANCEL, {u"IDCANCEL", u"&Cancel"}},
    {IDC_HS_HELP, {u"IDHELP", u"&Help"}},
};

constexpr TDialogText kSaveSetTexts[] = {
    {kDialogTitleId, {u"IDD_HS_SAVESET", u"Save HotSpot Set"}},
    {IDC_HS_SETNAME_LABEL, {u"IDC_HS_SETNAME", u"Set name:"}},
    {IDOK, {u"IDOK", u"&OK"}},
    {IDCANCEL, {u"IDCANCEL", u"&Cancel"}},
    {IDC_HS_HELP, {u"IDHELP", u"&Help"}},
};

constexpr TTextKey kNoSections{u"hotspotsdlg_cpp_339", u"No HotSpot sections were found"};
constexpr TTextKey kChooseFile{u"hotspotsdlg_cpp_220", u"Choose a HotSpot file"};
constexpr TTextKey kFileFilter{u"hotspotsdlg_cpp_209", u"HotSpot files (*.hsp)|*.hsp|All files (*.*)|*.*|"};
constexpr TTextKey kDoesNotExist{u"hotspotsdlg_cpp_535", u" does not exist"};
constexpr TTextKey kSaveQuestion{u"hotspotsdlg_cpp_557", u"Save changes to HotSpot set '"};

// Set names are read and offered with at most this many characters.
constexpr int kSetNameLimit = 200;

// Save HotSpot Set: the name a set is saved under.
class SaveSetDlg : public TDialog {
public:
    SaveSetDlg(const TConfigSession& session, std::u16string name) : session_(session), name_(std::move(name)) {}
    const std::u16string& Name() const { return name_; }

protected:
    std::span<const TDialogText> Texts() const override { return kSaveSetTexts; }
    INT_PTR OnInit() override {
        SendDlgItemMessageW(Window(), IDC_HS_SETNAME, EM_LIMITTEXT, kSetNameLimit, 0);
        SetControlText(Window(), IDC_HS_SETNAME, name_);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        if (code != BN_CLICKED) return FALSE;
        switch (id) {
        case IDOK: name_ = GetControlText(Window(), IDC_HS_SETNAME); End(IDOK); return TRUE;
        case IDCANCEL: End(IDCANCEL); return TRUE;
        case IDC_HS_HELP: session_.ShowHelp(u"hotspots.saveas"); return TRUE;
        default: return FALSE;
        }
    }

private:
    const TConfigSession& session_;
    std::u16string name_;
};

class HotSpotsDlg : public TDialog {
public:
    explicit HotSpotsDlg(TConfigSession& session) { data_.session = &session; }
    const THotSpotDialogData& Data() const { return data_; }

protected:
    std::span<const TDialogText> Texts() const override { return kMainTexts; }
    INT_PTR OnInit() override;
    INT_PTR OnCommand(int id, int code) override;

private:
    TConfigSession& Session() const { return *data_.session; }
    HotSpots& Set() { return data_.hotspots; }
    int Selected() const { return static_cast<int>(SendDlgItemMessageW(Window(), IDC_HS_LIST, LB_GETCURSEL, 0, 0)); }

    void Load(const std::u16string& setName);
    void ConvertKeysIfNeeded();
    void FillList(int selection);
    void FillSets();
    void RefreshListButtons();
    void RefreshSave();
    void ShowFile();
    void OnSetChanged();
    int AskToSave();
    void SaveAs(bool reload);
    void Browse();
    void ChooseFile(const std::u16string& path);
    void EditRecord(int (*apply)(HotSpots&, const HotSpot&, int32_t), const HotSpot& start, int32_t id);
    void EditSelected();
    void NewHotSpot();
    void CopySelected();
    void DeleteSelected();
    void EditColours();

    THotSpotDialogData data_;
    TShownRows spotRows_;
};

void HotSpotsDlg::Load(const std::u16string& setName) {
    Set().Read(data_.fullPath.c_str(), setName.c_str());
}

void HotSpotsDlg::ConvertKeysIfNeeded() {
    if (Set().needsKeyConversion) Set().ConvertKeys(KeyDataOf(std::as_const(Session())));
}

INT_PTR HotSpotsDlg::OnInit() {
    data_.fullPath = HotSpotFullPath(Session());
    Load(Session().hotspotEmulation);
    ConvertKeysIfNeeded();
    SetChecked(Window(), IDC_HS_ENABLE, Set().enabled);
    FillList(0);
    ShowFile();
    FillSets();
    return TRUE;
}

void HotSpotsDlg::ShowFile() { SetControlText(Window(), IDC_HS_FILE, Session().hotspotFile); }

// The descriptions in list order; `selection` is clamped away when the list is empty.
void HotSpotsDlg::FillList(int selection) {
    HWND list = GetDlgItem(Window(), IDC_HS_LIST);
    std::vector<std::u16string> rows;
    rows.reserve(Set().spots.size());
    for (const HotSpot& spot : Set().spots) rows.push_back(spot.description);
    spotRows_.Show(list, std::move(rows));
    const bool select = !Set().spots.empty() && selection >= 0;
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(select ? selection : -1), 0);
    RefreshListButtons();
}

void HotSpotsDlg::RefreshListButtons() {
    const bool selected = Selected() >= 0;
    for (int id : {IDC_HS_EDIT, IDC_HS_DELETE, IDC_HS_COPY}) EnableControl(Window(), id, selected);
}

void HotSpotsDlg::FillSets() {
    HWND combo = GetDlgItem(Window(), IDC_HS_SET);
    TRedrawOff quiet(combo);
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    const std::vector<std::u16string> names = HotSpotSetNames(data_.fullPath);
    for (const std::u16string& name : names)
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(name)));
    const LRESULT found =
        SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(W(Set().setName)));
    if (found != CB_ERR) {
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
    } else if (names.empty()) {
        const LRESULT row = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(W(Translate(kNoSections))));
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
    RefreshSave();
}

void HotSpotsDlg::RefreshSave() {
    EnableControl(Window(), IDC_HS_SAVE, SendDlgItemMessageW(Window(), IDC_HS_SET, CB_GETCURSEL, 0, 0) != CB_ERR);
}

int HotSpotsDlg::AskToSave() {
    if (!Set().dirty) return IDYES;
    const std::u16string text = SaveQuestionText(Translate(kSaveQuestion), Set().setName);
    const std::u16string caption = GetWindowText16(Window());
    const int answer = MessageBoxW(Window(), W(text), W(caption), MB_YESNOCANCEL | MB_ICONQUESTION);
    if (answer == IDYES) {
        if (SaveOnYesFor(Set()) == SaveOnYes::Write)
            Set().Write(data_.fullPath.c_str(), nullptr);
        else
            SaveAs(false);
    }
    return answer;
}

void HotSpotsDlg::OnSetChanged() {
    HWND combo = GetDlgItem(Window(), IDC_HS_SET);
    const LRESULT row = SendMessageW(combo, CB_GETCURSEL, 0, 0);
    std::u16string name;
    if (row != CB_ERR) {
        const auto length = static_cast<std::size_t>(std::max<LRESULT>(0, SendMessageW(combo, CB_GETLBTEXTLEN, row, 0)));
        std::u16string text(length + 1, u'\0');
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text.data()));
        name = text.c_str();
        if (name.size() > kSetNameLimit) name.resize(kSetNameLimit);
    }
    if (AskToSave() != IDCANCEL) {
        Set().Clear();
        Load(name);  // no key conversion here: only a file's first load converts
        FillList(0);
    }
    RefreshSave();
}

void HotSpotsDlg::SaveAs(bool reload) {
    const std::u16string offered = Set().setName.empty() ? Session().hotspotEmulation : Set().setName;
    SaveSetDlg dialog(Session(), offered);
    if (dialog.RunModal(Window(), IDD_HS_SAVESET) != IDOK) return;
    Set().dirty = true;
    Set().Write(data_.fullPath.c_str(), dialog.Name().c_str());
    Set().Clear();
    if (!reload) return;
    Load(dialog.Name());
    ConvertKeysIfNeeded();
    FillList(0);
    ShowFile();
    FillSets();
}

void HotSpotsDlg::Browse() {
    TOpenFileRequest request;
    request.title = Translate(kChooseFile);
    request.filter = BuildBrowseFilter(Translate(kFileFilter), u"");  // at most 400 characters
    request.initialFolder = Session().hotspotDirectory;
    request.defaultExtension = u"*.hsp";
    request.flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    const std::u16string chosen = ChooseFileToOpen(Window(), request);
    if (!chosen.empty()) ChooseFile(chosen);
}

void HotSpotsDlg::ChooseFile(const std::u16string& path) {
    TConfigSession& session = Session();
    const std::u16string full = joinPath(session.hotspotDirectory, path);
    if (!platform::isUsablePath(full) || GetFileAttributesW(W(full)) == INVALID_FILE_ATTRIBUTES) {
        const std::u16string text = path + Translate(kDoesNotExist);
        const std::u16string caption = GetWindowText16(Window());
        MessageBoxW(Window(), W(text), W(caption), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    data_.fullPath = full;
    session.hotspotFile = HotSpotFileForRequest(session.hotspotDirectory, path);
    Load(session.hotspotEmulation);
    ConvertKeysIfNeeded();
    SetChecked(Window(), IDC_HS_ENABLE, Set().enabled);
    FillList(0);
    ShowFile();
    FillSets();
}

// Runs Configure HotSpot on `start`; on OK `apply` puts the record into the set and names the row
// to select.
void HotSpotsDlg::EditRecord(int (*apply)(HotSpots&, const HotSpot&, int32_t), const HotSpot& start, int32_t id) {
    data_.editing = start;
    if (!RunHotSpotEdit(Window(), data_)) return;
    FillList(apply(Set(), data_.editing, id));
}

void HotSpotsDlg::EditSelected() {
    const int index = Selected();
    if (index < 0 || index >= static_cast<int>(Set().spots.size())) return;
    const HotSpot& spot = *std::next(Set().spots.begin(), index);
    EditRecord([](HotSpots& set, const HotSpot& edited, int32_t id) { return ApplyEditedHotSpot(set, id, edited); },
               spot, spot.id);
}

void HotSpotsDlg::NewHotSpot() {
    EditRecord([](HotSpots& set, const HotSpot& created, int32_t) { return ApplyNewHotSpot(set, created); }, HotSpot{},
               0);
}

void HotSpotsDlg::CopySelected() {
    const int index = Selected();
    if (index < 0 || index >= static_cast<int>(Set().spots.size())) return;
    EditRecord([](HotSpots& set, const HotSpot& copy, int32_t) { return ApplyCopiedHotSpot(set, copy); },
               *std::next(Set().spots.begin(), index), 0);
}

void HotSpotsDlg::DeleteSelected() {
    const int index = Selected();
    if (index < 0) return;
    FillList(ApplyDeleteHotSpot(Set(), index));
}

void HotSpotsDlg::EditColours() {
    if (!RunHotSpotColours(Window(), Session(), Set().foreground, Set().background)) return;
    Set().dirty = true;
}

INT_PTR HotSpotsDlg::OnCommand(int id, int code) {
    if (id == IDC_HS_SET) {
        if (code == CBN_SELCHANGE) OnSetChanged();
        return TRUE;
    }
    if (id == IDC_HS_LIST) {
        if (code == LBN_SELCHANGE) RefreshListButtons();
        if (code == LBN_DBLCLK) EditSelected();
        return TRUE;
    }
    if (code != BN_CLICKED) return FALSE;
    switch (id) {
    case IDC_HS_ENABLE:
        Set().dirty = true;
        Set().enabled = IsChecked(Window(), IDC_HS_ENABLE);
        return TRUE;
    case IDC_HS_COLOURS: EditColours(); return TRUE;
    case IDC_HS_BROWSE: Browse(); return TRUE;
    case IDC_HS_SAVE: Set().Write(data_.fullPath.c_str(), nullptr); return TRUE;
    case IDC_HS_SAVEAS: SaveAs(true); return TRUE;
    case IDC_HS_EDIT: EditSelected(); return TRUE;
    case IDC_HS_NEW: NewHotSpot(); return TRUE;
    case IDC_HS_DELETE: DeleteSelected(); return TRUE;
    case IDC_HS_COPY: CopySelected(); return TRUE;
    case IDC_HS_HELP: Session().ShowHelp(u"hotspots.index"); return TRUE;
    case IDOK:
        Set().Write(data_.fullPath.c_str(), nullptr);
        End(IDOK);
        return TRUE;
    case IDCANCEL: End(IDCANCEL); return TRUE;
    default: return FALSE;
    }
}

}  // namespace

int RunHotSpotDialog(TConfigSession& session, void* parent) {
    HotSpotsDlg dialog(session);
    const INT_PTR result = dialog.RunModal(static_cast<HWND>(parent), IDD_HOTSPOTS);
    if (result != IDOK) return static_cast<int>(result);
    if (TElementDef* file = session.FindElement(u"filename")) file->value = dialog.Data().fullPath;
    return IDOK;
}

}  // namespace qrl
