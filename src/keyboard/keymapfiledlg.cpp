#include "keyboard/keymapfiledlg.h"

#include <commdlg.h>

#include "kit/basedialog.h"
#include "kit/dialogkit.h"
#include "kit/fieldrules.h"
#include "keyboard/keyboard_rc.h"
#include "keyboard/keymapcheatsheet.h"
#include "keyboard/keymapfile.h"
#include "keyboard/keymapsettings.h"
#include "platform/platform.h"

namespace qrl {

namespace {

constexpr TTextKey kExportTitle{u"keymapfiledlg_cpp_1", u"Export Key Map"};
constexpr TTextKey kImportTitle{u"keymapfiledlg_cpp_2", u"Import Key Map"};
constexpr TTextKey kFileFilter{u"keymapfiledlg_cpp_3", u"Key map files (*.xml)|*.xml|"};
constexpr TTextKey kAllFiles{u"keymapfiledlg_cpp_4", u"All files|*.*|"};
constexpr TTextKey kNotWritten{u"keymapfiledlg_cpp_5", u"The key map could not be written to "};
constexpr TTextKey kCheatSheetTitle{u"keymapfiledlg_cpp_7", u"Save Cheat Sheet"};
constexpr TTextKey kPageFilter{u"keymapfiledlg_cpp_8", u"Web pages (*.html)|*.html|"};
constexpr TTextKey kNotRead{u"keymapfiledlg_cpp_6", u"The file could not be read: "};

constexpr TDialogText kImportModeTexts[] = {
    {kDialogTitleId, {u"IDD_KEYMAP_IMPORT", u"Import Key Map"}},
    {IDC_IMPORT_QUESTION, {u"IDC_IMPORT_QUESTION", u"Replace the current key map, or merge the file into it?"}},
    {IDC_IMPORT_REPLACE, {u"IDC_IMPORT_REPLACE", u"&Replace"}},
    {IDC_IMPORT_MERGE, {u"IDC_IMPORT_MERGE", u"&Merge"}},
    {IDCANCEL, kCancelText},
};

// Replace, Merge or Cancel: the dialog ends with the id of the button.
class ImportModeDlg : public TDialog {
protected:
    std::span<const TDialogText> Texts() const override { return kImportModeTexts; }
    INT_PTR OnCommand(int id, int code) override {
        if (code != BN_CLICKED || (id != IDC_IMPORT_REPLACE && id != IDC_IMPORT_MERGE && id != IDCANCEL)) return FALSE;
        End(id);
        return TRUE;
    }
};

TOpenFileRequest FileRequest(const TTextKey& title, const TTextKey& filter = kFileFilter,
                             std::u16string extension = u"xml") {
    TOpenFileRequest request;
    request.title = Translate(title);
    request.filter = BuildBrowseFilter(Translate(filter), Translate(kAllFiles));
    request.defaultExtension = std::move(extension);
    return request;
}

void Complain(HWND owner, const std::u16string& text) {
    MessageBoxW(owner, W(text), kProgramTitle, MB_OK | MB_ICONEXCLAMATION);
}

// Asks where to save, and writes `bytes` there.
void SaveAs(HWND owner, TOpenFileRequest request, const std::string& bytes) {
    request.flags = OFN_PATHMUSTEXIST | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY;
    const std::u16string path = ChooseFileToSave(owner, request);
    if (!path.empty() && !platform::writeFile(path, bytes)) Complain(owner, Translate(kNotWritten) + path);
}

}  // namespace

void ExportKeyMapFile(HWND owner, const KeymapSettings& settings) {
    TOpenFileRequest request = FileRequest(kExportTitle);
    request.initialFile = settings.EmName + u"-keymap.xml";
    SaveAs(owner, request, WriteKeyMapFile(settings.keys(), PcKeyboardStem(settings), settings.EmName));
}

void SaveCheatSheet(HWND owner, const KeymapSettings& settings) {
    TOpenFileRequest request = FileRequest(kCheatSheetTitle, kPageFilter, u"html");
    request.initialFile = CheatSheetFileName(settings);
    SaveAs(owner, request, CheatSheetFor(settings));
}

bool ImportKeyMapFile(HWND owner, KeymapSettings& settings) {
    TOpenFileRequest request = FileRequest(kImportTitle);
    request.flags = OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
    const std::u16string path = ChooseFileToOpen(owner, request);
    if (path.empty()) return false;
    std::string bytes;
    if (!platform::readFile(path, bytes)) {
        Complain(owner, Translate(kNotRead) + path);
        return false;
    }
    const TKeyMapFileRead read = ReadKeyMapFile(bytes);
    if (!read.ok()) {
        Complain(owner, path + u"\n" + KeyMapFileMessage(read));
        return false;
    }
    ImportModeDlg question;
    const INT_PTR mode = question.RunModal(owner, IDD_KEYMAP_IMPORT);
    if (mode != IDC_IMPORT_REPLACE && mode != IDC_IMPORT_MERGE) return false;
    ImportKeyMap(settings.keys(), read.file, mode == IDC_IMPORT_MERGE ? TKeyMapImport::Merge : TKeyMapImport::Replace);
    return true;
}

}  // namespace qrl
