// Every dialog of the module at the resolution this program runs at (96 dots per inch, and 144 in a
// prefix made so): each English text fits its control, measured in the control's own font, and each
// control lies inside its dialog.
#include "charmap/charmap_rc.h"
#include "colours/colours_rc.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "hotspots/hotspots_rc.h"
#include "keyboard/keyboard_rc.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <set>
#include <span>

namespace qrl::test {
namespace {

// The resolution the program was started at, as its prefix was made.
int WantedDpi() {
    wchar_t value[16] = {};
    const DWORD length = GetEnvironmentVariableW(L"QRL_WINE_DPI", value, 16);
    return length > 0 && length < 16 ? _wtoi(value) : 96;
}

int ScreenDpi() {
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

// A control's text as it is drawn: "&&" is one ampersand, a single one only underlines.
std::wstring Shown(const std::wstring& text) {
    std::wstring shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) ++i;
        shown += text[i];
    }
    return shown;
}

// The size of `text` in the control's font; wrapped at `wrapWidth` when that is above 0.
SIZE TextSize(HWND control, const std::wstring& text, int wrapWidth) {
    HDC dc = GetDC(control);
    auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    HGDIOBJ old = SelectObject(dc, font ? font : GetStockObject(SYSTEM_FONT));
    SIZE size{};
    if (wrapWidth > 0) {
        RECT box{0, 0, wrapWidth, 0};
        DrawTextW(dc, text.c_str(), -1, &box, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
        size = {box.right, box.bottom};
    } else {
        GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    }
    SelectObject(dc, old);
    ReleaseDC(control, dc);
    return size;
}

std::string Narrow(const std::wstring& text) {
    return utf16ToUtf8({reinterpret_cast<const char16_t*>(text.c_str()), text.size()});
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    const std::wstring full = name;
    return full.substr(full.find_last_of(L'!') + 1);  // a versioned class reads "6.0...!Button"
}

// What a control leaves of its width for its text: 0 for controls that show no text of their own.
// `wraps` tells a control that breaks its text into lines.
int TextRoom(HWND control, bool& wraps) {
    const LONG style = GetWindowLongW(control, GWL_STYLE);
    RECT client{};
    GetClientRect(control, &client);
    const std::wstring kind = ClassOf(control);
    wraps = false;
    if (kind == L"Static") {
        const LONG type = style & SS_TYPEMASK;
        if (type != SS_LEFT && type != SS_CENTER && type != SS_RIGHT && type != SS_SIMPLE && type != SS_LEFTNOWORDWRAP)
            return 0;
        wraps = type == SS_LEFT || type == SS_CENTER || type == SS_RIGHT;
        return client.right;
    }
    if (kind != L"Button") return 0;
    // The system's measures are the screen's; a control moved to another resolution draws its own.
    using TDpiForWindow = UINT(WINAPI*)(HWND);
    static const auto dpiForWindow = reinterpret_cast<TDpiForWindow>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    const int dpi = dpiForWindow ? static_cast<int>(dpiForWindow(control)) : ScreenDpi();
    const auto measure = [&](int metric) { return MulDiv(GetSystemMetrics(metric), dpi, ScreenDpi()); };
    const int edges = 2 * measure(SM_CXEDGE);
    wraps = (style & BS_MULTILINE) != 0;
    switch (style & BS_TYPEMASK) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON: return client.right - edges;
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return client.right - ((style & BS_PUSHLIKE) ? edges : measure(SM_CXMENUCHECK) + edges);
    default: return 0;  // group boxes, owner-drawn buttons
    }
}

// One line per visible control of `dialog` whose text is cut or that lies outside the client area.
void Inspect(HWND dialog, std::set<std::string>& problems) {
    const std::string title = Narrow(Driver::Text(dialog));
    RECT area{};
    GetClientRect(dialog, &area);
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control)) continue;
        const std::string where = title + ": " + std::to_string(GetDlgCtrlID(control));
        RECT r{};
        GetWindowRect(control, &r);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
        if (r.left < 0 || r.top < 0 || r.right > area.right || r.bottom > area.bottom)
            problems.insert(where + " lies outside the dialog");
        bool wraps = false;
        const int room = TextRoom(control, wraps);
        const std::wstring text = Shown(Driver::Text(control));
        if (room <= 0 || text.empty()) continue;
        RECT client{};
        GetClientRect(control, &client);
        const SIZE line = TextSize(control, text, 0);
        // A control that holds one line only cuts what does not fit on it, wrapping or not.
        const bool oneLine = !wraps || client.bottom < 2 * line.cy;
        const SIZE need = oneLine ? line : TextSize(control, text, room);
        if (need.cx > room || (!oneLine && need.cy > client.bottom))
            problems.insert(where + " \"" + Narrow(text) + "\" needs " + std::to_string(need.cx) + "x" +
                            std::to_string(need.cy) + ", has " + std::to_string(room) + "x" +
                            std::to_string(client.bottom));
    }
}

// A way to a dialog, one button at a time: the button of the dialog before and the title of the
// dialog it opens; no title: the one it opens on top of that dialog.
struct Step {
    int button;
    const wchar_t* title;
};

// Inspects the dialogs of `path` one after the other and cancels them all.
void Visit(Driver& d, HWND dialog, std::span<const Step> path, std::set<std::string>& problems) {
    Inspect(dialog, problems);
    if (path.empty()) return;
    Driver::Click(dialog, path.front().button);
    HWND next = path.front().title ? d.WaitForDialog(path.front().title) : d.WaitForPopup(dialog);
    Visit(d, next, path.subspan(1), problems);
    d.Close(next, IDCANCEL);
}

std::u16string SamplesPath() { return toU16(QRL_SOURCE_DIR "/samples"); }

TEST(DialogLayout, EveryTextFitsItsControlAndEveryControlItsDialog) {
    ASSERT_TRUE(Product::Get().Loaded());
    ASSERT_EQ(ScreenDpi(), WantedDpi());
    ForgetSelection(u"Emul");
    ForgetSelection(u"Comms");
    struct Case {
        std::u16string request;
        std::wstring title;     // of the route's first dialog
        const wchar_t* element;  // the settings dialog's element to select first, or null
        std::vector<Step> path;
    };
    HostWindow host;
    const std::u16string general =
        u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"HostCodes\" Type=\"charset\" descr=\"Host codes\"/>"
        u"<Element Name=\"LanguageName\" Type=\"stringset\" strings=\"English\" descr=\"Language\"/>"
        u"<Element Name=\"Map5250\" Type=\"5250colrs\" descr=\"Attribute colours\"/>"
        u"<Element Name=\"MapTandem\" Type=\"tandemcolrs\" descr=\"Tandem colours\"/>"
        u"<Element Name=\"Strict\" Type=\"bool\" descr=\"Strict checks\"/>"
        u"<Element Name=\"ClientCert\" Type=\"sslcertificate\" descr=\"Client certificate\"/></DTD><Data>"
        u"<Item Element=\"HostCodes\" Value=\"cp037\"/><Item Element=\"LanguageName\" Value=\"English\"/></Data>" +
        host.LinkElement() + u"</Config>";
    const std::u16string keymap =
        ReplaceFirst(SampleText("keymap_request.xml"), u"samples\\keyboards", SamplesPath() + u"/keyboards");
    const std::u16string hotspots = ReplaceFirst(SampleText("hotspots_request.xml"), u"@SAMPLES@", SamplesPath());
    const std::u16string classic = SampleText("classic_keymap_request.xml");
    const std::u16string colours = SampleText("colourmap_request.xml");
    const wchar_t* kComms = L"Configure  Telnet over TCP";
    const wchar_t* kGeneral = L"Configure  ";
    const Step editAttribute{IDC_ATTREDIT, L"Edit Attribute"};
    const Case cases[] = {
        {SampleText("comms_request.xml"), kComms, nullptr,
         {{IDC_MODULE_SELECT, L"Module Selection"}}},
        {SampleText("comms_request.xml"), kComms, L"Host name", {}},
        {classic, L"Keyboard Configuration", nullptr, {{IDC_ADVANCED, L"Advanced Keyboard Configuration"}}},
        {classic, L"Keyboard Configuration", nullptr, {{IDC_LIST_BYEMUL, L"Select a Physical Key"}, {IDC_ADD_PKEY, nullptr}}},
        {keymap, L"Configure Keyboard", nullptr, {{ID_KEYBOARDS, L"Keyboard Selection"}}},
        {keymap, L"Configure Keyboard", nullptr, {{IDC_KEYMAP_CHECK, L"Key Map Check"}}},
        {colours, L"Colour Configuration", nullptr, {editAttribute, {IDC_PALETTE_CFG, nullptr}}},
        {colours, L"Colour Configuration", nullptr, {{IDC_ATTR_ADVANCED, L"Advanced Attribute Configuration"}}},
        {colours, L"Colour Configuration", nullptr, {{IDC_SCHEME_SAVEAS, L"Save Colour Scheme"}}},
        {colours, L"Colour Configuration", nullptr, {{IDC_CONTRAST_CHECK, L"Contrast Check"}}},
        {hotspots, L"Configure HotSpots", nullptr, {{IDC_HS_NEW, L"Configure HotSpot"}, {IDC_HS_MATCH, nullptr}}},
        {hotspots, L"Configure HotSpots", nullptr, {{IDC_HS_COLOURS, L"Configure HotSpots Colours"}}},
        {hotspots, L"Configure HotSpots", nullptr, {{IDC_HS_SAVEAS, L"Save HotSpot Set"}}},
        {SampleText("mousemap_request.xml"), L"Configure Mouse", nullptr, {}},
        {general, kGeneral, L"Attribute colours", {{IDC_SPECIAL_EDIT, L"IBM5250 Attribute Configuration"}}},
        {general, kGeneral, L"Tandem colours", {{IDC_SPECIAL_EDIT, L"T653X Colour Mapping Defaults"}}},
        {general, kGeneral, L"Strict checks", {}},
        {general, kGeneral, L"Host codes", {{IDC_SPECIAL_EDIT, L"Edit Character Set"}, {IDC_CHARSET_EDIT, nullptr}}},
        {general, kGeneral, L"Language", {{IDC_LANG_ADD, L"Add New language"}}},
        {general, kGeneral, L"Client certificate", {{IDC_SPECIAL_EDIT, L"SSL Certificate"}}},
    };
    std::set<std::string> problems;
    for (const Case& c : cases) {
        const auto script = [&](Driver& d, HWND first) {
            Visit(d, first, c.path, problems);
            if (!c.element && IsWindow(first)) d.Close(first, IDCANCEL);  // a form closes itself
        };
        host.exchangeReplies = {u"<charmap><map start=\"41\" length=\"1\"/></charmap>"};
        if (c.element)
            RunOnElement(c.request, c.element, script, 50, c.title);
        else
            RunRequest(c.request, c.title, script);
    }
    std::u16string text = u"A\tB";
    Drive([&] { Product::Get().MacroAssist(nullptr, text, 256, std::u16string(u"Enter\0", 7), nullptr, 7); },
          [&](Driver& d) {
              HWND assistant = d.WaitForDialog(L"Macro Assistant");
              Inspect(assistant, problems);
              d.Close(assistant, IDCANCEL);
          });
    EXPECT_EQ(std::vector<std::string>(problems.begin(), problems.end()), std::vector<std::string>{});
}

// The awareness of a window, or of the calling thread when `window` is null: 0 unaware, 1 system, 2
// per monitor; -1 where Windows has no such thing.
int Awareness(HWND window) {
    using TContextOf = HANDLE(WINAPI*)(HWND);
    using TThreadContext = HANDLE(WINAPI*)();
    using TAwarenessOf = int(WINAPI*)(HANDLE);
    HMODULE user = GetModuleHandleW(L"user32.dll");
    const auto lookUp = [&](const char* name) { return reinterpret_cast<void*>(GetProcAddress(user, name)); };
    const auto windowContext = reinterpret_cast<TContextOf>(lookUp("GetWindowDpiAwarenessContext"));
    const auto threadContext = reinterpret_cast<TThreadContext>(lookUp("GetThreadDpiAwarenessContext"));
    const auto awarenessOf = reinterpret_cast<TAwarenessOf>(lookUp("GetAwarenessFromDpiAwarenessContext"));
    if (!windowContext || !threadContext || !awarenessOf) return -1;
    return awarenessOf(window ? windowContext(window) : threadContext());
}

LONG FontHeight(HWND control) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfHeight;
}

// The module's windows are per-monitor aware while the host's thread stays as it was; moved to a
// monitor of another resolution (120 dots per inch, or 96 from a higher one, so that it still fits
// the screen), a dialog is laid out anew: the window where Windows puts it, its controls and font
// scaled, and every text still fitting.
TEST(DialogLayout, AMonitorOfAnotherResolutionLaysTheDialogOutAgain) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    const int hostAwareness = Awareness(nullptr);
    int dialogAwareness = -1;
    std::set<std::string> problems;
    RunRequest(SampleText("comms_request.xml"), L"Configure  Telnet over TCP", [&](Driver& d, HWND dialog) {
        dialogAwareness = Awareness(dialog);
        const int from = ScreenDpi(), to = from > 96 ? 96 : 120;
        const auto scaled = [&](LONG length) { return MulDiv(length, to, from); };
        HWND ok = GetDlgItem(dialog, IDOK);
        RECT button{}, window{};
        GetWindowRect(ok, &button);
        GetWindowRect(dialog, &window);
        const LONG font = FontHeight(ok);
        const RECT suggested{10, 10, 10 + scaled(window.right - window.left), 10 + scaled(window.bottom - window.top)};
        SendMessageW(dialog, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(to, to), reinterpret_cast<LPARAM>(&suggested));
        d.Settle();
        RECT moved{}, movedButton{};
        GetWindowRect(dialog, &moved);
        GetWindowRect(ok, &movedButton);
        EXPECT_TRUE(EqualRect(&moved, &suggested));
        EXPECT_NEAR(movedButton.right - movedButton.left, scaled(button.right - button.left), 1);
        EXPECT_NEAR(movedButton.bottom - movedButton.top, scaled(button.bottom - button.top), 1);
        EXPECT_NEAR(FontHeight(ok), scaled(font), 1);
        Inspect(dialog, problems);
        d.Close(dialog, IDCANCEL);
    });
    EXPECT_EQ(dialogAwareness, 2);
    EXPECT_EQ(Awareness(nullptr), hostAwareness);
    EXPECT_EQ(std::vector<std::string>(problems.begin(), problems.end()), std::vector<std::string>{});
}

}  // namespace
}  // namespace qrl::test
