#include "colours/colourtoolsdlg.h"

#include <commdlg.h>

#include "colours/colours_rc.h"
#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "kit/listrows.h"
#include "platform/platform.h"

#include <span>

namespace qrl {

namespace {

constexpr TDialogText kCheckTexts[] = {
    {kDialogTitleId, {u"IDD_CONTRAST_CHECK", u"Contrast Check"}},
    {IDOK, {u"IDC_CHECK_GOTO", u"&Go to"}},
    {IDCANCEL, {u"IDC_CHECK_CLOSE", u"Close"}},
};

constexpr TDialogText kSchemeTexts[] = {
    {kDialogTitleId, {u"IDD_PALETTE_SCHEMES", u"Choose a Scheme"}},
    {IDOK, kOkText},
    {IDCANCEL, kCancelText},
};

constexpr TTextKey kImportTitle{u"palette_import_title", u"Import Palette"};
constexpr TTextKey kExportTitle{u"palette_export_title", u"Export Palette"};
constexpr TTextKey kImportFilter{u"palette_import_filter",
                                 u"Colour schemes (*.json;*.itermcolors;*.Xresources)|*.json;*.itermcolors;*.Xresources|"};
constexpr TTextKey kExportFilter{u"palette_export_filter", u"Colour schemes (*.json)|*.json|"};
constexpr TTextKey kAllFiles{u"palette_all_files", u"All files|*.*|"};
constexpr TTextKey kUnreadable{u"palette_unreadable", u"the file could not be read"};
constexpr TTextKey kUnwritable{u"palette_unwritable", u"The file could not be written."};

// A list of rows, one of which the user may take with the default button or a double click.
class ListChoiceDlg : public TDialog {
public:
    ListChoiceDlg(std::span<const TDialogText> texts, const std::vector<std::u16string>& rows, bool choosable)
        : texts_(texts), rows_(rows), choosable_(choosable) {}

    std::optional<uint32_t> Run(HWND parent, int templateId) {
        return RunModal(parent, templateId) == IDOK ? chosen_ : std::nullopt;
    }

protected:
    std::span<const TDialogText> Texts() const override { return texts_; }
    INT_PTR OnInit() override {
        FillListRows(GetDlgItem(Window(), IDC_CHOICE_LIST), rows_);
        SendDlgItemMessageW(Window(), IDC_CHOICE_LIST, LB_SETCURSEL, 0, 0);
        EnableControl(Window(), IDOK, choosable_);
        return TRUE;
    }
    INT_PTR OnCommand(int id, int code) override {
        switch (id) {
        case IDC_CHOICE_LIST:
            if (code == LBN_DBLCLK) Choose();
            return TRUE;
        case IDOK:
            if (code == BN_CLICKED) Choose();
            return TRUE;
        case IDCANCEL:
            if (code == BN_CLICKED) End(IDCANCEL);
            return TRUE;
        default: return FALSE;
        }
    }

private:
    // Enter reaches the default button even while it is disabled.
    void Choose() {
        const LRESULT row = SendDlgItemMessageW(Window(), IDC_CHOICE_LIST, LB_GETCURSEL, 0, 0);
        if (!choosable_ || row == LB_ERR) return;
        chosen_ = static_cast<uint32_t>(row);
        End(IDOK);
    }

    std::span<const TDialogText> texts_;
    const std::vector<std::u16string>& rows_;
    bool choosable_;
    std::optional<uint32_t> chosen_;
};

void Warn(HWND owner, const std::u16string& text) {
    MessageBoxW(owner, W(text), kProgramTitle, MB_OK | MB_ICONWARNING);
}

TPaletteImport ReadPaletteAt(const std::u16string& path) {
    std::string bytes;
    if (platform::readFile(path, bytes)) return ReadPaletteFile(bytes);
    TPaletteImport failed;
    failed.error = Translate(kUnreadable);
    return failed;
}

}  // namespace

std::optional<uint32_t> RunContrastCheckDialog(HWND parent, const std::vector<std::u16string>& rows,
                                               bool choosable) {
    ListChoiceDlg dialog(kCheckTexts, rows, choosable);
    return dialog.Run(parent, IDD_CONTRAST_CHECK);
}

std::optional<TImportedPalette> AskPaletteToImport(HWND owner) {
    TOpenFileRequest request;
    request.title = Translate(kImportTitle);
    request.filter = BuildBrowseFilter(Translate(kImportFilter), Translate(kAllFiles));
    request.flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
    const std::u16string path = ChooseFileToOpen(owner, request);
    if (path.empty()) return std::nullopt;
    TPaletteImport import = ReadPaletteAt(path);
    if (!import.ok() || import.schemes.empty()) {
        Warn(owner, PaletteImportMessage(import));
        return std::nullopt;
    }
    if (import.schemes.size() == 1) return import.schemes.front();
    std::vector<std::u16string> names;
    for (const TImportedPalette& scheme : import.schemes) names.push_back(scheme.name);
    ListChoiceDlg choice(kSchemeTexts, names, true);
    const std::optional<uint32_t> row = choice.Run(owner, IDD_PALETTE_SCHEMES);
    if (!row || *row >= import.schemes.size()) return std::nullopt;
    return import.schemes[*row];
}

void AskWhereToExport(HWND owner, const std::string& scheme) {
    TOpenFileRequest request;
    request.title = Translate(kExportTitle);
    request.filter = BuildBrowseFilter(Translate(kExportFilter), Translate(kAllFiles));
    request.defaultExtension = u"json";
    request.flags = OFN_PATHMUSTEXIST | OFN_OVERWRITEPROMPT;
    const std::u16string path = ChooseFileToSave(owner, request);
    if (!path.empty() && !platform::writeFile(path, scheme)) Warn(owner, Translate(kUnwritable));
}

}  // namespace qrl
