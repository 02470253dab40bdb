// The "KeyMap" route with the classic editor, through the DLL on the bundled sample: a key's mapping
// changed by physical key, keys added and removed by emulation key, the press-key window, the
// advanced settings, and the replies compared whole. The mapping rules are checked natively.
#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/formsetup.h"
#include "keyboard/keyboard_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

const std::wstring kTitle = L"Keyboard Configuration";

// The reply of the sample with the three lists and the four settings as given.
std::string Reply(std::u16string_view keyMap, std::u16string_view keyStrings, std::u16string_view globals,
                  std::u16string_view settings = u"1\", \"0\", \"0\", \"0") {
    std::u16string text = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data>\n";
    auto list = [&](std::u16string_view name, std::u16string_view maps) {
        if (maps.empty()) return u"    <Item Element=\"" + std::u16string(name) + u"\"/>\n";
        return u"    <Item Element=\"" + std::u16string(name) + u"\">\n" + std::u16string(maps) + u"    </Item>\n";
    };
    text += list(u"KeyMap", keyMap) + list(u"KeyStrings", keyStrings) + list(u"GlobalKeyStrings", globals);
    std::u16string values(settings);
    const char16_t* names[] = {u"UseOldKeymap", u"numpadshift", u"numpad", u"capslock"};
    std::size_t at = 0;
    for (const char16_t* name : names) {
        const std::size_t end = values.find(u'"', at);
        text += u"    <Item Element=\"" + std::u16string(name) + u"\" Value=\"" + values.substr(at, end - at) + u"\"/>\n";
        at = end == std::u16string::npos ? values.size() : end + 4;
    }
    return Utf8(text + u"  </Data>\n</Config>");
}
std::u16string Map(int pkey, int emkey) {
    return u"      <Map pkey=\"" + toU16(std::to_string(pkey)) + u"\" emkey=\"" + toU16(std::to_string(emkey)) + u"\"/>\n";
}
std::u16string Text(int pkey, std::u16string_view text) {
    return u"      <Map pkey=\"" + toU16(std::to_string(pkey)) + u"\" string=\"" + std::u16string(text) + u"\"/>\n";
}

RunResult RunKeymap(const std::function<void(Driver&, HWND)>& script) {
    RunResult result;
    const std::u16string request = SampleText("classic_keymap_request.xml");
    const auto failures = RunDriven([&] { result = Product::Get().RunConfig2W(request); },
                                    [&](Driver& d) { script(d, d.WaitForDialog(kTitle)); });
    for (const std::string& f : failures) ADD_FAILURE() << f;
    return result;
}

bool Enabled(HWND dlg, int id) { return IsWindowEnabled(GetDlgItem(dlg, id)) != FALSE; }
bool Shown(HWND dlg, int id) { return IsWindowVisible(GetDlgItem(dlg, id)) != FALSE; }

class ClassicKeymap : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Product::Get().Loaded()); }
};

TEST_F(ClassicKeymap, ByPhysicalKeyLoadsAndStoresEachKind) {
    std::wstring f1Shows, shiftedF2Text, caption, enterShiftShows;
    bool enterAltEnabled = true, keypadShiftEnabled = true, globalShown = false;
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        f1Shows = Driver::Text(GetDlgItem(dlg, IDC_EM_KEY));
        Driver::Choose(dlg, IDC_PHYS_KEY, 1);  // F2
        Driver::Tick(dlg, IDC_SHIFT);          // F2 + Shift: a string
        shiftedF2Text = Driver::Text(GetDlgItem(dlg, IDC_STRING));
        caption = Driver::Text(GetDlgItem(dlg, IDC_FIELD_CAPTION));
        Driver::Tick(dlg, IDC_MAP_GLOBAL);
        globalShown = Shown(dlg, IDC_GLOBAL_STRING) && !Shown(dlg, IDC_STRING) && !Shown(dlg, IDC_EM_KEY);
        Driver::Type(GetDlgItem(dlg, IDC_GLOBAL_STRING), L"hello");
        Driver::Choose(dlg, IDC_PHYS_KEY, 2);  // Enter: stored the global string first
        enterAltEnabled = Enabled(dlg, IDC_ALT);
        enterShiftShows = Driver::Text(GetDlgItem(dlg, IDC_EM_KEY));  // the box stays: Enter + Shift
        Driver::Tick(dlg, IDC_SHIFT);
        Driver::Tick(dlg, IDC_MAP_NONE);
        Driver::Choose(dlg, IDC_PHYS_KEY, 3);  // Keypad +: Enter unmapped
        keypadShiftEnabled = Enabled(dlg, IDC_SHIFT);
        Driver::Tick(dlg, IDC_MAP_EMKEY);
        Driver::Choose(dlg, IDC_EM_KEY, 3);    // Reset
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(f1Shows, L"PF1");
    EXPECT_EQ(shiftedF2Text, L"logoff");
    EXPECT_EQ(caption, L"Text:");
    EXPECT_TRUE(globalShown);
    EXPECT_FALSE(enterAltEnabled);  // Enter may carry Shift only
    EXPECT_EQ(enterShiftShows, L"");  // not mapped
    EXPECT_FALSE(keypadShiftEnabled);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(Utf8(r.reply), Reply(Map(112, 1) + Map(113, 2) + Map(107, 4), Text(369, u"logoff"), Text(369, u"hello")));
}

TEST_F(ClassicKeymap, ByEmulationKeyAddsWithTheReplacementQuestionAndRemoves) {
    std::wstring okCaption, question, removeQuestion;
    std::vector<std::wstring> listed;
    bool removeAtStart = true;
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_LIST_BYEMUL);
        d.WaitGone(dlg);
        HWND byEmul = d.WaitForDialog(kTitle);
        okCaption = Driver::Text(GetDlgItem(byEmul, IDOK));
        removeAtStart = Enabled(byEmul, IDC_REMOVE_PKEY);
        Driver::Click(byEmul, IDC_ADD_PKEY);
        HWND select = d.WaitForDialog(L"Select a Physical Key");
        Driver::Choose(select, IDC_PHYS_KEY, 2);  // F2, behind "(Select a key)"
        Driver::Tick(select, IDC_SHIFT);
        Driver::Click(select, IDOK);
        question = d.Answer(select, IDOK);
        d.WaitGone(select);
        d.Settle();
        listed = Driver::ListRows(byEmul, IDC_PKEY_LIST);
        SendDlgItemMessageW(byEmul, IDC_PKEY_LIST, LB_SETCURSEL, 0, 0);
        SendMessageW(byEmul, WM_COMMAND, MAKEWPARAM(IDC_PKEY_LIST, LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(byEmul, IDC_PKEY_LIST)));
        Driver::Click(byEmul, IDC_REMOVE_PKEY);
        removeQuestion = d.Answer(byEmul, IDYES);
        Driver::Click(byEmul, IDOK);
        d.WaitGone(byEmul);
    });
    EXPECT_EQ(okCaption, L"Ctrl");  // five texts land on the OK button, the last stays
    EXPECT_FALSE(removeAtStart);
    EXPECT_EQ(question, L"Confirm replacement|Physical key \"F2 + Shift\" is already mapped to\r\nstring \"logoff\"\r\n\r\n"
                        L"This mapping will be removed. Proceed?");
    EXPECT_EQ(listed, (std::vector<std::wstring>{L"F1", L"F2 + Shift"}));
    EXPECT_EQ(removeQuestion, L"Delete mapping|Delete the assignment to physical key 'F1'?");
    EXPECT_EQ(Utf8(r.reply), Reply(Map(113, 2) + Map(13, 3) + Map(369, 1), u"", u""));
}

TEST_F(ClassicKeymap, PressKeyAdvancedAndCancel) {
    std::wstring pressed;
    const RunResult r = RunKeymap([&](Driver& d, HWND dlg) {
        Driver::Click(dlg, IDC_PRESS_KEY);
        d.Settle();
        HWND press = FindWindowW(L"PressKeyWin", nullptr);
        PostMessageW(press, WM_KEYDOWN, VK_F2, 0);
        d.Settle();
        pressed = Driver::Text(GetDlgItem(dlg, IDC_PHYS_KEY));
        Driver::Click(dlg, IDC_ADVANCED);
        HWND advanced = d.WaitForDialog(L"Advanced Keyboard Configuration");
        Driver::Tick(advanced, IDC_NP_CURSOR);
        Driver::Tick(advanced, IDC_NP_SHIFT);
        Driver::Tick(advanced, IDC_CL_OFF);
        Driver::Click(advanced, IDOK);
        d.WaitGone(advanced);
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    EXPECT_EQ(pressed, L"F2");
    EXPECT_EQ(Utf8(r.reply), Reply(Map(112, 1) + Map(113, 2) + Map(13, 3), Text(369, u"logoff"), u"",
                                   u"1\", \"1\", \"1\", \"2"));
    const RunResult cancelled = RunKeymap([](Driver& d, HWND dlg) {
        Driver::Choose(dlg, IDC_EM_KEY, 3);
        Driver::Click(dlg, IDC_LIST_BYEMUL);  // stored, but Cancel drops everything
        d.WaitGone(dlg);
        HWND byEmul = d.WaitForDialog(kTitle);
        Driver::Click(byEmul, IDCANCEL);
        d.WaitGone(byEmul);
    });
    EXPECT_EQ(cancelled.code, 2);
    EXPECT_EQ(cancelled.reply, u"");
}

}  // namespace
}  // namespace qrl::test
