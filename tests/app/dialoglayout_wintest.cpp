// Every dialog at this program's resolution (96 dots per inch, 144 in a prefix made so): per-monitor
// aware while this host's thread stays as it was, on common controls 6 in this host without a manifest,
// each English text fitting its control (the host program's check), also after the settings dialog
// moved monitor; and the buttons most dialogs share read their keys' defaults.
#include "charmap/charmap_rc.h"
#include "colours/colours_rc.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "hotspots/hotspots_rc.h"
#include "keyboard/keyboard_rc.h"
#include "kit/basedialog.h"
#include "kit/dpi.h"
#include "layoutcheck.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace qrl::test {
namespace {

using Titles = std::set<std::wstring>;

// The texts of OK, Cancel and Help ("" where a dialog has none), and the dialogs that show them.
const std::map<std::wstring, Titles> kSharedButtons = {
    {L"&Ok|&Cancel|&Help", {L"Keyboard Configuration", L"Advanced Keyboard Configuration", L"Select a Physical Key",
                            L"Configure Keyboard", L"Keyboard Selection", L"Colour Configuration", L"Edit Attribute",
                            L"Configure Palette", L"Advanced Attribute Configuration", L"Save Colour Scheme",
                            L"T653X Colour Mapping Defaults", L"Edit Character Set", L"Add New language", L"SSL Certificate"}},
    {L"&Ok|&Cancel|", {L"Configure  Telnet over TCP", L"Module Selection", L"IBM5250 Attribute Configuration",
                       L"Choose a Scheme"}},
    {L"Ctrl|&Cancel|&Help", {L"Select a Physical Key"}},  // the list by emulation key; its popup is shared
};

struct Findings {
    std::set<std::wstring> problems;
    std::map<std::wstring, Titles> buttons;  // as kSharedButtons, for the dialogs it names
};

void Inspect(HWND dialog, Findings& found) {
    for (const std::wstring& problem : qrl4host::LayoutProblems(dialog)) found.problems.insert(problem);
    const std::wstring title = Driver::Text(dialog);
    if (std::none_of(kSharedButtons.begin(), kSharedButtons.end(), [&](const auto& g) { return g.second.count(title); }))
        return;
    found.buttons[Driver::Text(dialog, IDOK) + L"|" + Driver::Text(dialog, IDCANCEL) + L"|" + Driver::Text(dialog, IDHELP)]
        .insert(title);
}

// As Windows tells a dialog moved to a monitor of 120 dots per inch (96 from above): it goes there, scaled.
void MoveToAnotherMonitor(Driver& d, HWND dialog, Findings& found) {
    const int from = static_cast<int>(WindowDpi(dialog)), to = from > 96 ? 96 : 120;
    RECT button = ControlRect(GetDlgItem(dialog, IDOK)), window{};
    GetWindowRect(dialog, &window);
    const RECT told{10, 10, 10 + MulDiv(window.right - window.left, to, from), 10 + MulDiv(window.bottom - window.top, to, from)};
    SendMessageW(dialog, kDpiChangedMessage, MAKEWPARAM(to, to), reinterpret_cast<LPARAM>(&told));
    d.Settle();
    const int width = MulDiv(button.right - button.left, to, from);
    button = ControlRect(GetDlgItem(dialog, IDOK));
    if (!GetWindowRect(dialog, &window) || !EqualRect(&window, &told) || std::abs(button.right - button.left - width) > 1)
        found.problems.insert(Driver::Text(dialog) + L": not laid out again at " + std::to_wstring(to));
}

// A button opening the dialog titled so (visited with the popup of its `inner` button and the steps
// `then`), or a step. A button that asks for a file first gets the test folder's file `fileName` in
// the dialog titled `file`.
struct Step {
    int button;
    const wchar_t* title = nullptr;
    int inner = 0;
    const wchar_t* file = nullptr;
    const wchar_t* fileName = L"layout-keymap.xml";
    std::vector<Step> then = {};
};
constexpr int kAnotherMonitor = -1, kSelect = -2;

void Visit(Driver& d, HWND dialog, const std::vector<Step>& path, Findings& found) {
    Inspect(dialog, found);
    for (const Step& step : path) {
        if (HWND tree = GetDlgItem(dialog, IDC_TREE); step.button == kSelect)
            Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, step.title));
        if (step.button == kAnotherMonitor) MoveToAnotherMonitor(d, dialog, found);
        d.Settle();
        if (step.button < 0) {
            Inspect(dialog, found);
            continue;
        }
        Driver::Click(dialog, step.button);
        if (step.file) d.AnswerFileDialog(step.file, TempDir() + step.fileName);
        if (!step.title) continue;
        HWND next = d.WaitForDialog(step.title);
        Visit(d, next, step.then, found);
        if (step.inner) Driver::Click(next, step.inner);
        if (HWND popup = step.inner ? d.WaitForPopup(next) : nullptr) {
            Inspect(popup, found);
            d.Close(popup, IDCANCEL);
        }
        d.Close(next, IDCANCEL);
    }
}

// 0 unaware, 1 system, 2 per monitor: of `window`, or of this thread for null.
int Awareness(HWND window) {
    const auto call = [](const char* name) { return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)); };
    HANDLE context = window ? reinterpret_cast<HANDLE(WINAPI*)(HWND)>(call("GetWindowDpiAwarenessContext"))(window)
                            : reinterpret_cast<HANDLE(WINAPI*)()>(call("GetThreadDpiAwarenessContext"))();
    return reinterpret_cast<int(WINAPI*)(HANDLE)>(call("GetAwarenessFromDpiAwarenessContext"))(context);
}

TEST(DialogLayout, EveryTextFitsItsControlAndEveryControlItsDialog) {
    ASSERT_TRUE(Product::Get().Loaded());
    wchar_t wanted[8] = {};
    ASSERT_EQ(WindowDpi(nullptr), GetEnvironmentVariableW(L"QRL_WINE_DPI", wanted, 8) ? _wtoi(wanted) : 96u);
    ForgetSelection(u"Comms");  // else the form opens on the element another program left selected
    ForgetModuleValue(u"Comms.WindowSize");  // the move stores another size: forgotten at the end
    HostWindow host;
    const std::u16string samples = toU16(QRL_SOURCE_DIR "/samples"),
                         comms = ReplaceFirst(SampleText("comms_request.xml"), u"<Link type=\"HWND\" value=\"0\" msgid=\"0\"/>",
                                              host.LinkElement()),
                         colours = SampleText("colourmap_request.xml"), classic = SampleText("classic_keymap_request.xml"),
                         keymap = ReplaceFirst(SampleText("keymap_request.xml"), u"samples\\keyboards", samples + u"/keyboards"),
                         hotspots = ReplaceFirst(SampleText("hotspots_request.xml"), u"@SAMPLES@", samples), mouse = SampleText("mousemap_request.xml");
    struct Case { const std::u16string& request; std::wstring firstTitle; std::vector<Step> path; };
    const Case cases[] = {
        {comms, L"Configure  Telnet over TCP",
         {{kAnotherMonitor}, {IDC_MODULE_SELECT, L"Module Selection"}, {kSelect, L"Host name"}, {kSelect, L"5250 colours"},
          {IDC_SPECIAL_EDIT, L"IBM5250 Attribute Configuration"}, {kSelect, L"Tandem colours"}, {IDC_SPECIAL_EDIT, L"T653X Colour Mapping Defaults"},
          {kSelect, L"Host code page"}, {IDC_SPECIAL_EDIT, L"Edit Character Set", IDC_CHARSET_EDIT}, {kSelect, L"Language ("},
          {IDC_LANG_ADD, L"Add New language"}, {kSelect, L"Client certificate"}, {IDC_SPECIAL_EDIT, L"SSL Certificate"}, {kSelect, L"Login script"},
          {IDC_MACRO_ASSIST, L"Macro Assistant"}}},
        {classic, L"Keyboard Configuration",
         {{IDC_ADVANCED, L"Advanced Keyboard Configuration"}, {IDC_LIST_BYEMUL, L"Select a Physical Key", IDC_ADD_PKEY}}},
        {keymap, L"Configure Keyboard", {{ID_KEYBOARDS, L"Keyboard Selection"}, {IDC_KEYMAP_CHECK, L"Key Map Check"},
                                          {IDC_KEYMAP_EXPORT, nullptr, 0, L"Export Key Map"},
                                          {IDC_KEYMAP_IMPORT, L"Import Key Map", 0, L"Import Key Map"}}},
        {colours, L"Colour Configuration", {{IDC_ATTREDIT, L"Edit Attribute", IDC_PALETTE_CFG}, {IDC_ATTR_ADVANCED, L"Advanced Attribute Configuration"},
                                            {IDC_SCHEME_SAVEAS, L"Save Colour Scheme"}, {IDC_CONTRAST_CHECK, L"Contrast Check"},
                                            {IDC_ATTREDIT, L"Edit Attribute", 0, nullptr, nullptr, {{IDC_PALETTE_CFG, L"Configure Palette", 0, nullptr, nullptr,
                                             {{IDC_PAL_IMPORT, L"Choose a Scheme", 0, L"Import Palette", L"layout-schemes.json"}}}}}}},
        {hotspots, L"Configure HotSpots", {{IDC_HS_NEW, L"Configure HotSpot", IDC_HS_MATCH}, {IDC_HS_COLOURS, L"Configure HotSpots Colours"},
                                           {IDC_HS_SAVEAS, L"Save HotSpot Set"}}},
        {mouse, L"Configure Mouse", {}},
    };
    Findings found;
    DeleteFileW((TempDir() + L"layout-keymap.xml").c_str());  // else saving it asks first
    std::ifstream sample(QRL_SOURCE_DIR "/samples/palettes/harbour.json", std::ios::binary);
    const std::string scheme{std::istreambuf_iterator<char>(sample), {}};
    std::ofstream(std::filesystem::path(TempDir() + L"layout-schemes.json"), std::ios::binary)
        << "{\"schemes\": [" << scheme << ", " << scheme << "]}";
    host.exchangeReplies = {u"<charmap><map start=\"41\" length=\"1\"/></charmap>"};  // the character set's map
    const int hostAwareness = Awareness(nullptr);
    std::set<int> dialogAwareness;
    std::set<std::wstring> cues;
    for (const Case& c : cases)
        RunRequest(c.request, c.firstTitle, [&](Driver& d, HWND first) {
            dialogAwareness.insert(Awareness(first));
            wchar_t cue[64] = {};  // version 5's edit doesn't know the message
            if (SendDlgItemMessageW(first, IDC_SEARCH_EDIT, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(cue), 64)) cues.insert(cue);
            Visit(d, first, c.path, found);
            if (IsWindow(first)) d.Close(first, IDCANCEL);
        });
    // Edit Attribute's small layout, chosen where the normal one does not fit the screen.
    RECT area{}, pocket{0, 0, 240, 320};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &pocket, 0);
    RunRequest(colours, L"Colour Configuration", [&](Driver& d, HWND first) {
        Visit(d, first, {{IDC_ATTREDIT, L"Edit Attribute", IDC_PALETTE_CFG}}, found);
        d.Close(first, IDCANCEL);
    });
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &area, 0);
    ForgetModuleValue(u"Comms.WindowSize");
    EXPECT_EQ(dialogAwareness, std::set<int>{2});
    EXPECT_EQ(Awareness(nullptr), hostAwareness);
    EXPECT_EQ(cues, std::set<std::wstring>{L"Search settings (Ctrl+F)"});
    EXPECT_EQ(std::vector<std::wstring>(found.problems.begin(), found.problems.end()), std::vector<std::wstring>{});
    EXPECT_EQ(found.buttons, kSharedButtons);
}

}  // namespace
}  // namespace qrl::test
