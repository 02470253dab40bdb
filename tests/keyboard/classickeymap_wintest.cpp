// The "KeyMap" route with the classic editor, through the DLL on the bundled sample: a key's mapping
// changed by physical key, keys added and removed by emulation key, the press-key window, the
// advanced settings, and the replies compared whole. The mapping rules are checked natively.
#include "forms/formsetup.h"
#include "keyboard/keyboard_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kTitle = L"Keyboard Configuration";

// The reply of the sample with the three lists and the four settings (a digit each) as given.
std::string Reply(std::u16string_view keyMap, std::u16string_view keyStrings, std::u16string_view globals,
                  std::u16string_view settings = u"1000") {
    std::u16string text = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n";
    const std::pair<const char16_t*, std::u16string_view> lists[] = {
        {u"KeyMap", keyMap}, {u"KeyStrings", keyStrings}, {u"GlobalKeyStrings", globals}};
    for (const auto& [name, maps] : lists)
        text += u"    <Item Element=\"" + std::u16string(name) +
                (maps.empty() ? u"\"/>\n" : u"\">\n" + std::u16string(maps) + u"    </Item>\n");
    const char16_t* names[] = {u"UseOldKeymap", u"numpadshift", u"numpad", u"capslock"};
    for (std::size_t i = 0; i < 4; ++i)
        text += u"    <Item Element=\"" + std::u16string(names[i]) + u"\" Value=\"" + settings[i] + u"\"/>\n";
    return Utf8(text + u"  </Data>\n</Config>");
}
std::u16string Map(int pkey, int emkey) {
    return u"      <Map pkey=\"" + toU16(std::to_string(pkey)) + u"\" emkey=\"" + toU16(std::to_string(emkey)) + u"\"/>\n";
}
std::u16string Text(int pkey, std::u16string_view text) {
    return u"      <Map pkey=\"" + toU16(std::to_string(pkey)) + u"\" string=\"" + std::u16string(text) + u"\"/>\n";
}

RunResult RunKeymap(const std::function<void(Driver&, HWND)>& script) {
    return RunRequest(SampleText("classic_keymap_request.xml"), kTitle, script);
}

using ClassicKeymap = ProductTest;

TEST_F(ClassicKeymap, ByPhysicalKeyLoadsAndStoresEachKind) {
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_EM_KEY)), L"PF1");
        Driver::Choose(dlg, IDC_PHYS_KEY, 1);  // F2
        Driver::Tick(dlg, IDC_SHIFT);          // F2 + Shift: a string
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_STRING)), L"logoff");
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_FIELD_CAPTION)), L"Text:");
        Driver::Tick(dlg, IDC_MAP_GLOBAL);
        EXPECT_TRUE(Driver::Shown(dlg, IDC_GLOBAL_STRING) && !Driver::Shown(dlg, IDC_STRING) && !Driver::Shown(dlg, IDC_EM_KEY));
        Driver::Type(GetDlgItem(dlg, IDC_GLOBAL_STRING), L"hello");
        Driver::Choose(dlg, IDC_PHYS_KEY, 2);  // Enter: stored the global string first
        EXPECT_FALSE(Driver::Enabled(dlg, IDC_ALT));  // Enter may carry Shift only
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_EM_KEY)), L"");  // the box stays: Enter + Shift, not mapped
        Driver::Tick(dlg, IDC_SHIFT);
        Driver::Tick(dlg, IDC_MAP_NONE);
        Driver::Tick(dlg, IDC_SHIFT);          // Enter + Shift again, not mapped
        Driver::Choose(dlg, IDC_PHYS_KEY, 3);  // Keypad +: Enter unmapped
        // Keypad + takes no Shift: the box is disabled, and cleared though it was ticked.
        EXPECT_FALSE(Driver::Enabled(dlg, IDC_SHIFT) || Driver::Checked(dlg, IDC_SHIFT));
        Driver::Tick(dlg, IDC_MAP_EMKEY);
        Driver::Choose(dlg, IDC_EM_KEY, 3);    // Reset
        d.Close(dlg);
    });
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(Utf8(r.reply), Reply(Map(112, 1) + Map(113, 2) + Map(107, 4), Text(369, u"logoff"), Text(369, u"hello")));
}

TEST_F(ClassicKeymap, ByEmulationKeyAddsWithTheReplacementQuestionAndRemoves) {
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        d.Close(dlg, IDC_LIST_BYEMUL);
        HWND byEmul = d.WaitForDialog(L"Select a Physical Key");  // its buttons' texts are the layout walk's
        EXPECT_FALSE(Driver::Enabled(byEmul, IDC_REMOVE_PKEY));
        Driver::Click(byEmul, IDC_ADD_PKEY);
        HWND select = d.WaitForPopup(byEmul);
        Driver::Choose(select, IDC_PHYS_KEY, 2);  // F2, behind "(Select a key)"
        Driver::Tick(select, IDC_SHIFT);
        Driver::Click(select, IDOK);
        EXPECT_EQ(d.Answer(select, IDOK), L"Confirm replacement|Physical key \"F2 + Shift\" is already mapped to\r\n"
                                          L"string \"logoff\"\r\n\r\nThis mapping will be removed. Proceed?");
        d.WaitGone(select);
        d.Settle();
        EXPECT_EQ(Driver::ListRows(byEmul, IDC_PKEY_LIST), (std::vector<std::wstring>{L"F1", L"F2 + Shift"}));
        Driver::SelectRow(byEmul, IDC_PKEY_LIST, 0);
        Driver::Click(byEmul, IDC_REMOVE_PKEY);
        EXPECT_EQ(d.Answer(byEmul, IDYES), L"Delete mapping|Delete the assignment to physical key 'F1'?");
        d.Close(byEmul);
    });
    EXPECT_EQ(Utf8(r.reply), Reply(Map(113, 2) + Map(13, 3) + Map(369, 1), u"", u""));
}

TEST_F(ClassicKeymap, PressKeyAdvancedAndCancel) {
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_PRESS_KEY);
        d.Settle();
        PostMessageW(FindWindowW(L"PressKeyWin", nullptr), WM_KEYDOWN, VK_F2, 0);
        d.Settle();
        EXPECT_EQ(Driver::Text(GetDlgItem(dlg, IDC_PHYS_KEY)), L"F2");
        Driver::Click(dlg, IDC_ADVANCED);
        HWND advanced = d.WaitForDialog(L"Advanced Keyboard Configuration");
        for (int id : {IDC_NP_CURSOR, IDC_NP_SHIFT, IDC_CL_OFF}) Driver::Tick(advanced, id);
        d.Close(advanced);
        d.Close(dlg);
    });
    EXPECT_EQ(Utf8(r.reply), Reply(Map(112, 1) + Map(113, 2) + Map(13, 3), Text(369, u"logoff"), u"",
                                   u"1112"));
    const RunResult cancelled = RunKeymap([](Driver& d, HWND dlg) {
        Driver::Choose(dlg, IDC_EM_KEY, 3);
        d.Close(dlg, IDC_LIST_BYEMUL);  // stored, but Cancel drops everything
        d.Close(d.WaitForDialog(L"Select a Physical Key"), IDCANCEL);
    });
    EXPECT_EQ(cancelled.code, 2);
}

}  // namespace
}  // namespace qrl::test
