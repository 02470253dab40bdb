// Configure Keyboard, the "KeyMap" route's graphic editor, through the DLL on the bundled sample:
// keys pressed on the two pictures or chosen in the lists, mapped to an emulation key, a string or
// a global string, and the reply compared. The status texts and the mapping rules are checked
// natively.
#include "forms/formsetup.h"
#include "keyboard/keyboard_rc.h"
#include "kit/basedialog.h"
#include "platform/platform.h"
#include "keypress.h"
#include "platform/tempfolder.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kTitle = L"Configure Keyboard";
const std::u16string kKdfPath = SampleKdfPath();

std::u16string Request(std::u16string_view kdfPath) {
    return ReplaceFirst(SampleText("keymap_request.xml"), u"samples\\keyboards", kdfPath);
}

// The sample's key lists and settings around the three mappings.
std::u16string Reply(std::u16string_view keyMap, std::u16string_view strings, std::u16string_view globals,
                     std::u16string_view pcLayout = u"0") {
    const auto item = [](std::u16string_view name, std::u16string_view maps) {
        if (maps.empty()) return u"    <Item Element=\"" + std::u16string(name) + u"\"/>\n";
        return u"    <Item Element=\"" + std::u16string(name) + u"\">\n" + std::u16string(maps) + u"    </Item>\n";
    };
    return u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n" + item(u"KeyMap", keyMap) +
           item(u"KeyStrings", strings) + item(u"GlobalKeyStrings", globals) +
           u"    <Item Element=\"UseOldKeymap\" Value=\"0\"/>\n    <Item Element=\"EmKbLang\" Value=\"0\"/>\n"
           u"    <Item Element=\"PCKbLang\" Value=\"" +
           std::u16string(pcLayout) + u"\"/>\n  </Data>\n</Config>";
}
std::u16string Map(std::u16string_view pkey, std::u16string_view emkey) {
    return u"      <Map pkey=\"" + std::u16string(pkey) + u"\" emkey=\"" + std::u16string(emkey) + u"\"/>\n";
}
std::u16string Text(std::u16string_view pkey, std::u16string_view text) {
    return u"      <Map pkey=\"" + std::u16string(pkey) + u"\" string=\"" + std::u16string(text) + u"\"/>\n";
}
const std::u16string kSampleMap = Map(u"112", u"112") + Map(u"113", u"113") + Map(u"13", u"147") + Map(u"16397", u"147");

void PressPc(HWND dlg, int32_t code) { ASSERT_TRUE(PressKey(GetDlgItem(dlg, IDC_PC_PICTURE), "at102.kdf", "pc", code)); }
void PressEm(HWND dlg, int32_t code) {
    ASSERT_TRUE(PressKey(GetDlgItem(dlg, IDC_EM_PICTURE), "IBM5250.kdf", "IBM5250", code));
}

std::wstring Status(HWND dlg) { return Driver::Text(GetDlgItem(dlg, IDC_GK_STATUS)); }
using GraphicKeymap = ProductTest;

// A PC key shows its emulation key; a press on the emulation picture picks a new target, Map binds it.
// Remove drops the shown key's mapping.
TEST_F(GraphicKeymap, PcKeyRemappedToAnotherEmulationKeyAndAnotherRemoved) {
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        EXPECT_EQ(Status(dlg), L"Select a key to show its mapping");
        PressPc(dlg, 112);
        EXPECT_EQ(Status(dlg), L"PC 'F1' is mapped to Emulation 'F1'");
        EXPECT_TRUE(Driver::Enabled(dlg, ID_MAPREMOVE));
        PressEm(dlg, 146);
        EXPECT_EQ(Status(dlg), L"Press 'Map' to map PC 'F1' to Emulation 'Reset'");
        EXPECT_TRUE(Driver::Enabled(dlg, ID_MAPSET));
        Driver::Click(dlg, ID_MAPSET);
        d.Settle();
        EXPECT_EQ(Status(dlg), L"PC 'F1' is mapped to Emulation 'Reset'");
        PressPc(dlg, 13);
        Driver::Click(dlg, ID_MAPREMOVE);
        d.Settle();
        EXPECT_EQ(Status(dlg), L"PC 'Enter' is not mapped");
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(Map(u"113", u"113") + Map(u"16397", u"147") + Map(u"112", u"146"),
                             Text(u"369", u"logoff"), Text(u"626", u"signon")));
}

// A left press on Shift latches it, so F2 stands for Shift+F2 and shows its string in the string
// edit; a new text is mapped, and an empty one is refused.
TEST_F(GraphicKeymap, ShiftedKeyShowsItsStringAndMapsANewOne) {
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        PressPc(dlg, 0x10);
        PressPc(dlg, 113);
        EXPECT_EQ(Status(dlg), L"PC 'Sh+F2' is mapped to string 'logoff'");
        EXPECT_TRUE(Driver::Shown(dlg, IDC_GK_STRING) && IsDlgButtonChecked(dlg, ID_EMSTRING) == BST_CHECKED);
        Driver::Type(GetDlgItem(dlg, IDC_GK_STRING), L"");
        Driver::Click(dlg, ID_MAPSET);
        EXPECT_EQ(d.Answer(dlg, IDOK), L"Quorl|The string must not be blank.");
        Driver::Type(GetDlgItem(dlg, IDC_GK_STRING), L"bye");
        EXPECT_EQ(Status(dlg), L"Press 'Map' to map PC 'Sh+F2' to string 'bye'");
        Driver::Click(dlg, ID_MAPSET);
        d.Settle();
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap, Text(u"369", u"bye"), Text(u"626", u"signon")));
}

// Ctrl+F3, chosen in the PC list with the Ctrl box, holds a global string: mapping it to an
// emulation key asks first; No keeps everything, Yes drops the string and, with no emulation key
// chosen, maps nothing.
TEST_F(GraphicKeymap, GlobalStringIsDroppedOnlyAfterTheQuestion) {
    const std::wstring global = L"PC 'Ctrl+F3' is mapped to global string 'signon'";
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        Driver::Tick(dlg, ID_PCLIST);
        Driver::Tick(dlg, ID_PHYS_CTRL);
        Driver::SelectRow(dlg, IDC_GK_PCLIST, 2);
        EXPECT_EQ(Status(dlg), global);
        Driver::Tick(dlg, ID_EMKEY);
        Driver::Click(dlg, ID_MAPSET);
        EXPECT_EQ(d.Answer(dlg, IDNO), L"Quorl|This will remove the Global string for this key\nOk to continue?");
        EXPECT_EQ(Status(dlg), global);
        Driver::Tick(dlg, ID_EMKEY);
        Driver::Click(dlg, ID_MAPSET);
        d.Answer(dlg, IDYES);
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap, Text(u"369", u"logoff"), u""));
}

// A folder with a short emulation .kdf and no PC one: both keyboards are lists, locked so; an
// emulation key chosen first gets a PC key from the other list, and Map adds the pair.
TEST_F(GraphicKeymap, WithoutUsableKeyboardFilesBothSidesAreListsAndStillMap) {
    const TempFolder folder;
    folder.write("IBM5250.kdf", "\x70\x22\x67");
    const RunResult r = RunRequest(Request(folder.path().u16string()), kTitle, [&](Driver& d, HWND dlg) {
        EXPECT_TRUE(Driver::Shown(dlg, IDC_GK_PCLIST) && Driver::Shown(dlg, IDC_GK_EMLIST) &&
                    !Driver::Shown(dlg, IDC_PC_PICTURE) && !Driver::Enabled(dlg, ID_PCLIST) && !Driver::Enabled(dlg, ID_EMLIST));
        Driver::SelectRow(dlg, IDC_GK_EMLIST, 2);
        EXPECT_EQ(Status(dlg), L"Emulation 'Reset' is not mapped");
        Driver::SelectRow(dlg, IDC_GK_PCLIST, 2);
        EXPECT_EQ(Status(dlg), L"Press 'Map' to map Emulation 'Reset' to PC 'F3'");
        Driver::Click(dlg, ID_MAPSET);
        d.Settle();
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap + Map(u"114", u"146"), Text(u"369", u"logoff"), Text(u"626", u"signon")));
}

// Keyboard Selection changes the layout at once; Cancel puts it back, OK keeps it for the reply.
TEST_F(GraphicKeymap, KeyboardSelectionCancelRestoresTheLayout) {
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        for (int button : {IDCANCEL, IDOK}) {
            Driver::Click(dlg, ID_KEYBOARDS);
            HWND keyboards = d.WaitForDialog(L"Keyboard Selection");
            EXPECT_EQ(Driver::ListRows(keyboards, IDC_KBD_PC), (std::vector<std::wstring>{L"United Kingdom", L"Deutschland"}));
            EXPECT_EQ(SendDlgItemMessageW(keyboards, IDC_KBD_PC, CB_GETCURSEL, 0, 0), 0);  // Cancel put it back
            Driver::Choose(keyboards, IDC_KBD_PC, 1);
            d.Close(keyboards, button);
        }
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap, Text(u"369", u"logoff"), Text(u"626", u"signon"), u"1"));
}

// Find Key: the key pressed with Alt held selects Alt+F1 as a click with Alt latched would; a key on
// no keyboard only says so.
TEST_F(GraphicKeymap, FindKeySelectsThePressedKeyWithItsModifiers) {
    const auto press = [](Driver& d, HWND dlg, UINT message, WPARAM key, LPARAM flags) {
        Driver::Click(dlg, IDC_FIND_KEY);
        HWND window = nullptr;
        for (int tries = 0; !window && tries < 100; ++tries, d.Settle()) window = FindWindowW(L"PressKeyWin", nullptr);
        ASSERT_NE(window, nullptr);
        PostMessageW(window, message, key, flags);
        d.Settle();
    };
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        press(d, dlg, WM_SYSKEYDOWN, VK_F1, LPARAM{1} << 29);
        EXPECT_EQ(Status(dlg), L"PC 'Alt+F1' is not mapped");
        PressEm(dlg, 146);
        Driver::Click(dlg, ID_MAPSET);
        d.Settle();
        press(d, dlg, WM_KEYDOWN, 0xE8, 0);
        EXPECT_EQ(Status(dlg), L"That key is not on the PC keyboard");
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap + Map(u"1136", u"146"), Text(u"369", u"logoff"), Text(u"626", u"signon")));
}

// A map with every kind of finding: Remove duplicates asks with the count and lists again; Go to,
// and a double-click on a row, close the check and select the key.
TEST_F(GraphicKeymap, CheckListsFindingsRemovesDuplicatesAndGoesToAKey) {
    const std::u16string extra = Map(u"113", u"146") + Map(u"1033", u"112") + Map(u"8193", u"147") + Map(u"114", u"999");
    std::u16string request = ReplaceFirst(Request(kKdfPath), u"<Map pkey=\"16397\" emkey=\"147\"/>\n",
                                          u"<Map pkey=\"16397\" emkey=\"147\"/>\n" + extra);
    request = ReplaceFirst(request, u"<Map pkey=\"626\" string=\"signon\"/>", u"<Map pkey=\"626\" string=\"signon\"/><Map pkey=\"13\" string=\"one\"/>");
    const std::vector<std::wstring> findings = {
        L"Enter: global string \"one\", emulation key Enter",
        L"F2: 2 entries in the key map; only the first is shown and edited",
        L"key 8193: the code is on no PC keyboard and not in the PC key list",
        L"F3: emulation key 999 is not in the emulation key list",
        L"Alt+Tab: Windows keeps this key; the mapping never runs",
        L"Reset: no PC key sends it",
    };
    const RunResult r = RunRequest(request, kTitle, [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_KEYMAP_CHECK);
        HWND check = d.WaitForDialog(L"Key Map Check");
        EXPECT_EQ(Driver::ListRows(check, IDC_CHECK_LIST), findings);
        Driver::Click(check, IDC_CHECK_DEDUPLICATE);
        EXPECT_EQ(d.Answer(check, IDYES), L"Quorl|Entries that the editor can never show or edit: 1\nRemove them?");
        std::vector<std::wstring> left = findings;
        left.erase(left.begin() + 1);
        EXPECT_EQ(Driver::ListRows(check, IDC_CHECK_LIST), left);
        EXPECT_FALSE(Driver::Enabled(check, IDC_CHECK_DEDUPLICATE));
        Driver::SelectRow(check, IDC_CHECK_LIST, 2);
        d.Close(check, IDC_CHECK_GOTO);
        EXPECT_EQ(Status(dlg), L"PC 'F3' is mapped to an unknown key");
        Driver::Click(dlg, IDC_KEYMAP_CHECK);
        check = d.WaitForDialog(L"Key Map Check");
        Driver::DoubleClickRow(check, IDC_CHECK_LIST, 0);
        d.WaitGone(check);
        EXPECT_EQ(Status(dlg), L"PC 'Enter' is mapped to global string 'one'");
        d.Close(dlg);
    });
    EXPECT_EQ(r.reply, Reply(kSampleMap + Map(u"1033", u"112") + Map(u"8193", u"147") + Map(u"114", u"999"),
                             Text(u"369", u"logoff"), Text(u"626", u"signon") + Text(u"13", u"one")));
}

// Export, then Remove, then Import with Replace gives the map back; Merge lets the file's codes
// replace theirs; a broken file says where and changes nothing.
TEST_F(GraphicKeymap, ExportAndImportWithReplaceMergeAndABrokenFile) {
    const TempFolder folder;
    const std::wstring exported = (folder.path() / "shared.xml").wstring();
    const auto import = [](Driver& d, HWND dlg, const std::wstring& path) {
        Driver::Click(dlg, IDC_KEYMAP_IMPORT);
        d.AnswerFileDialog(L"Import Key Map", path);
    };
    const RunResult replaced = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_KEYMAP_EXPORT);
        d.AnswerFileDialog(L"Export Key Map", exported);
        PressPc(dlg, 112);
        Driver::Click(dlg, ID_MAPREMOVE);
        d.Settle();
        import(d, dlg, exported);
        d.Close(d.WaitForDialog(L"Import Key Map"), IDC_IMPORT_REPLACE);
        d.Close(dlg);
    });
    EXPECT_EQ(replaced.reply, Reply(kSampleMap, Text(u"369", u"logoff"), Text(u"626", u"signon")));

    folder.write("merge.xml", "<KeyMapFile version=\"1\"><Item Element=\"KeyMap\"><Map pkey=\"112\" emkey=\"146\"/></Item>"
                              "<Item Element=\"KeyStrings\"><Map pkey=\"13\" string=\"hi\"/></Item></KeyMapFile>");
    folder.write("broken.xml", "<KeyMapFile version=\"1\">\n  <Item>\n</KeyMapFile>");
    const std::wstring broken = (folder.path() / "broken.xml").wstring();
    const RunResult merged = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        import(d, dlg, broken);
        EXPECT_EQ(d.Answer(dlg, IDOK),
                  L"Quorl|" + broken + L"\nline 3, column 12: the file is not well-formed XML (error 13)");
        import(d, dlg, (folder.path() / "merge.xml").wstring());
        d.Close(d.WaitForDialog(L"Import Key Map"), IDC_IMPORT_MERGE);
        d.Close(dlg);
    });
    EXPECT_EQ(merged.reply, Reply(Map(u"113", u"113") + Map(u"16397", u"147") + Map(u"112", u"146"),
                                  Text(u"369", u"logoff") + Text(u"13", u"hi"), Text(u"626", u"signon")));
}

// The host program run as an integrator runs it: its exit code (~0 if it does not start).
DWORD RunHostProgram(const std::wstring& arguments) {
    std::wstring command = L"\"" + std::filesystem::path(QRL_HOST_PROGRAM).wstring() + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return ~0u;
    DWORD code = ~0u;
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0) GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

// The sheet the dialog saves is, byte for byte, the one `qrl4host --cheatsheet` writes without a window.
TEST_F(GraphicKeymap, CheatSheetFromTheDialogEqualsTheHostProgramsOne) {
    const TempFolder folder;
    const std::wstring path = (folder.path() / "sheet.html").wstring();
    const RunResult r = RunRequest(Request(kKdfPath), kTitle, [&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_CHEAT_SHEET);
        d.AnswerFileDialog(L"Save Cheat Sheet", path);
        d.Close(dlg, IDCANCEL);
    });
    EXPECT_EQ(r.code, 2);
    const std::filesystem::path request = folder.path() / "request.xml";
    const std::filesystem::path windowless = folder.path() / "windowless.html";
    folder.write("request.xml", utf16ToUtf8(Request(kKdfPath)));
    EXPECT_EQ(RunHostProgram(L"--cheatsheet \"" + request.wstring() + L"\" \"" + windowless.wstring() + L"\""), 0u);
    std::string saved, written;
    EXPECT_TRUE(platform::readFile(U16(path.c_str()), saved));
    EXPECT_TRUE(platform::readFile(windowless.u16string(), written));
    EXPECT_FALSE(saved.empty());
    EXPECT_EQ(saved, written);
}

}  // namespace
}  // namespace qrl::test
