// How long the module's dialogs take to open and to answer an edit on large data, measured as a
// host sees it: from the call (or the click) until every window of the dialog has painted; the
// host's buffers and the thread that watches the dialog are made before the call. Not a
// test; run by hand under Wine from the win64 build:
//   wine build/win64/bench/dialogs/dialog_timing.exe [RUNS [CASE]]
// Each case runs once cold, then RUNS times (default 10); the table gives the cold time, the
// median and the slowest of the warm runs, in milliseconds. CASE runs only the cases whose name
// contains it.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "../../tools/genrequest/generate.h"
#include "forms/forms_rc.h"
#include "hotspots/hotspots_rc.h"
#include "keyboard/keyboard_rc.h"
#include "macro/macro_rc.h"
#include "text/textutil.h"

namespace {

using Clock = LARGE_INTEGER;

double Milliseconds(const Clock& from, const Clock& to) {
    static const LONGLONG frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f.QuadPart;
    }();
    return static_cast<double>(to.QuadPart - from.QuadPart) * 1000.0 / static_cast<double>(frequency);
}

Clock Now() {
    Clock c;
    QueryPerformanceCounter(&c);
    return c;
}

const wchar_t* W(const std::u16string& text) { return reinterpret_cast<const wchar_t*>(text.c_str()); }

std::u16string ReadSample(const std::string& name) {
    std::ifstream in(std::string(QRL_SOURCE_DIR) + "/samples/" + name, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return qrl::utf8ToUtf16(bytes.str());
}

std::u16string Replace(std::u16string text, std::u16string_view from, std::u16string_view to) {
    const std::size_t at = text.find(from);
    if (at != std::u16string::npos) text.replace(at, from.size(), to);
    return text;
}

std::u16string Number(std::size_t n) { return qrl::utf8ToUtf16(std::to_string(n)); }

// The source tree as the Windows side names it.
std::u16string WindowsPath(const std::string& unixPath) {
    std::u16string path = u"Z:" + qrl::utf8ToUtf16(unixPath);
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

// ---- the module, loaded as a host loads it

struct Module {
    HMODULE handle = nullptr;
    int (*run)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*) = nullptr;
    int (*macro)(HWND, wchar_t*, uint32_t, const wchar_t*, HWND, int) = nullptr;
    // When the last entry point was called: the host's buffers are ready by then.
    mutable std::atomic<LONGLONG> called{0};

    bool Load(const std::wstring& path) {
        handle = LoadLibraryW(path.c_str());
        if (!handle) return false;
        run = reinterpret_cast<decltype(run)>(reinterpret_cast<void*>(GetProcAddress(handle, "fnRunConfig2W")));
        macro = reinterpret_cast<decltype(macro)>(reinterpret_cast<void*>(GetProcAddress(handle, "fnMacroAssist")));
        return run && macro;
    }
    void RunRequest(const std::u16string& request) const {
        std::u16string text = request;
        std::vector<wchar_t> reply(1u << 22);
        uint32_t status = 0;
        called = Now().QuadPart;
        run(reinterpret_cast<wchar_t*>(text.data()), nullptr, reply.data(), reply.size(), &status);
    }
    void RunMacro(const std::u16string& macroText) const {
        std::vector<wchar_t> buffer(macroText.size() + 1024, L'\0');
        std::copy(macroText.begin(), macroText.end(), buffer.begin());
        const std::u16string keys(u"Enter\0PF1\0PF2\0Reset\0\0", 21);
        called = Now().QuadPart;
        macro(nullptr, buffer.data(), static_cast<uint32_t>(buffer.size()), W(keys), nullptr, 7);
    }
};

std::wstring ModulePath() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring p(path);
    for (int up = 0; up < 3; ++up) p = p.substr(0, p.find_last_of(L"\\/"));  // <build>/bench/dialogs/x.exe
    return p + L"\\src\\qrl4cfg.dll";
}

// ---- watching the dialog thread from a second one

std::vector<HWND> VisibleDialogs(DWORD thread) {
    std::vector<HWND> found;
    EnumThreadWindows(
        thread,
        [](HWND w, LPARAM p) -> BOOL {
            wchar_t name[16] = {};
            GetClassNameW(w, name, 16);
            if (IsWindowVisible(w) && std::wstring(name) == L"#32770") reinterpret_cast<std::vector<HWND>*>(p)->push_back(w);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

bool NothingToPaint(HWND window) {
    if (GetUpdateRect(window, nullptr, FALSE)) return false;
    bool clean = true;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM p) -> BOOL {
            if (IsWindowVisible(child) && GetUpdateRect(child, nullptr, FALSE)) *reinterpret_cast<bool*>(p) = false;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&clean));
    return clean;
}

// The dialog of the thread other than `except`, once it shows and has painted; null after 60 s.
HWND WaitPainted(DWORD thread, HWND except = nullptr) {
    for (int waited = 0; waited < 60000; ++waited) {
        for (HWND dialog : VisibleDialogs(thread))
            if (dialog != except && NothingToPaint(dialog)) return dialog;
        Sleep(1);
    }
    return nullptr;
}

// Cancels every dialog of the thread until none is left (a question on the way is answered No).
void CloseAll(DWORD thread) {
    for (int round = 0; round < 200; ++round) {
        const std::vector<HWND> open = VisibleDialogs(thread);
        if (open.empty()) return;
        for (HWND dialog : open) {
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            PostMessageW(dialog, WM_COMMAND, IDNO, 0);
        }
        Sleep(50);
    }
}

// One timed step of a case: works the open dialog and returns how long the part it times took.
using Step = std::function<double(DWORD thread, HWND dialog)>;

struct Case {
    const char* name;
    std::function<void(const Module&)> call;  // opens the dialog on this thread and returns when it ends
    Step step;                                // null: the opening is what is timed
};

double RunOnce(const Module& module, const Case& c) {
    const DWORD thread = GetCurrentThreadId();
    std::atomic<double> measured{-1};
    std::thread watcher([&] {
        HWND dialog = WaitPainted(thread);
        Clock start;
        start.QuadPart = module.called;
        if (dialog) measured = c.step ? c.step(thread, dialog) : Milliseconds(start, Now());
        CloseAll(thread);
    });
    c.call(module);
    watcher.join();
    return measured;
}

// A click or a pick sent to the dialog: the time until its handler returns and all has painted.
double TimedCommand(DWORD thread, HWND dialog, int id, int code) {
    const Clock start = Now();
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
    WaitPainted(thread);
    return Milliseconds(start, Now());
}

// A click on a list's row gives the list the focus first: the dialog's own focus moves there,
// as it does for a user, before the timed part begins.
void FocusList(DWORD thread, HWND dialog, int id) {
    PostMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE);
    Sleep(50);
    WaitPainted(thread);
}

// ---- the data

std::u16string KeyMapRequest(bool classic, std::size_t mappings, bool allToOneKey) {
    std::u16string physical, map;
    const std::size_t keys = (mappings + 3) / 4;
    for (std::size_t k = 0; k < keys; ++k)
        physical += u"<Key Name=\"Key " + Number(k) + u"\" Id=\"" + Number(k + 1) + u"\" Shift=\"1792\"/>";
    static constexpr std::size_t kModifiers[] = {0, 256, 512, 1024};
    for (std::size_t i = 0; i < mappings; ++i) {
        const std::size_t code = (i / 4 + 1) | kModifiers[i % 4];
        const std::size_t em = allToOneKey ? 147 : (i % 2 ? 112 : 113);
        map += u"<Map pkey=\"" + Number(code) + u"\" emkey=\"" + Number(em) + u"\"/>";
    }
    std::u16string text = ReadSample(classic ? "classic_keymap_request.xml" : "keymap_request.xml");
    const std::size_t keysAt = text.find(u"<Item Element=\"PhysicalKeys\">") + 29;
    text.insert(keysAt, physical);
    const std::size_t mapAt = text.find(u"<Item Element=\"KeyMap\">") + 23;
    text.insert(mapAt, map);
    return Replace(text, u"samples\\keyboards", WindowsPath(std::string(QRL_SOURCE_DIR) + "/samples/keyboards"));
}

std::u16string HotSpotRequest(std::size_t count) {
    char folder[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, folder);
    // A file per size: every case's request is made before the first runs.
    const std::string name = "timing" + std::to_string(count) + ".hsp";
    const std::string file = std::string(folder) + name;
    std::ofstream out(file, std::ios::binary);
    out << "[version]\r\nVersion=2\r\n\r\n[IBM5250]\r\nFGndColour=\r\nBGndColour=192,192,192\r\nOn=1\r\n";
    for (std::size_t i = 1; i <= count; ++i)
        out << "HS" << i << "=Spot " << i << ",2," << (i % 20 + 1) << ",0,0,0,6,0,Spot,1,0,,,0,0,0,0,{PF3},0,0,0,,,0,0,,,\r\n";
    out.close();
    std::u16string text = ReadSample("hotspots_request.xml");
    // The sample's comment names the placeholder too: replace the value, not the first mention.
    text = Replace(text, u"Value=\"@SAMPLES@\"", u"Value=\"" + qrl::utf8ToUtf16(folder) + u"\"");
    return Replace(text, u"hotspots.hsp", qrl::utf8ToUtf16(name));
}

std::u16string ColourRequest(std::size_t schemes) {
    std::u16string text = ReadSample("colourmap_request.xml");
    std::u16string more;
    for (std::size_t i = 0; i < schemes; ++i)
        more += u"<ColourScheme Element=\"Scheme " + Number(i) +
                u"\"><features index=\"0\" value=\"70000 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \"/>"
                u"</ColourScheme>";
    const std::size_t at = text.find(u"<Item Element=\"ColourSchemes\">") + 30;
    text.insert(at, more);
    return text;
}

std::u16string MacroText(std::size_t tokens) {
    // Five tokens a round: text, a key, an escape, a command, text again.
    std::u16string text;
    for (std::size_t i = 0; i * 5 < tokens; ++i) text += u"Hello{Enter}\\p010{.Pause(5)}x";
    return text;
}

std::vector<Case> Cases() {
    const auto request = [](std::u16string text) {
        return [text](const Module& m) { m.RunRequest(text); };
    };
    const auto macro = [](std::u16string text) {
        return [text](const Module& m) { m.RunMacro(text); };
    };
    // A list button on the hundredth token (a Text token).
    const auto tokenButton = [](int button) -> Step {
        return [button](DWORD thread, HWND dialog) {
            FocusList(thread, dialog, IDC_TOKEN_LIST);
            SendDlgItemMessageW(dialog, IDC_TOKEN_LIST, LB_SETCURSEL, 100, 0);
            SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_TOKEN_LIST, LBN_SELCHANGE), 0);
            return TimedCommand(thread, dialog, button, BN_CLICKED);
        };
    };
    // One character typed into the hundredth token's text.
    const Step changeToken = [](DWORD thread, HWND dialog) {
        FocusList(thread, dialog, IDC_TOKEN_LIST);
        SendDlgItemMessageW(dialog, IDC_TOKEN_LIST, LB_SETCURSEL, 100, 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_TOKEN_LIST, LBN_SELCHANGE), 0);
        const Clock start = Now();
        SetDlgItemTextW(dialog, IDC_TEXT_EDIT, L"Hello!");
        WaitPainted(thread);
        return Milliseconds(start, Now());
    };
    // The delete button on the hundredth hotspot.
    const Step deleteHotSpot = [](DWORD thread, HWND dialog) {
        SendDlgItemMessageW(dialog, IDC_HS_LIST, LB_SETCURSEL, 100, 0);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDC_HS_LIST, LBN_SELCHANGE), 0);
        return TimedCommand(thread, dialog, IDC_HS_DELETE, BN_CLICKED);
    };
    // The "by emulation key" dialog: the emulation key with every entry chosen.
    const Step chooseEmulationKey = [](DWORD thread, HWND first) {
        PostMessageW(first, WM_COMMAND, MAKEWPARAM(IDC_LIST_BYEMUL, BN_CLICKED), 0);
        HWND byKey = WaitPainted(thread, first);
        if (!byKey) return -1.0;
        const LRESULT rows = SendDlgItemMessageW(byKey, IDC_EM_KEY, CB_GETCOUNT, 0, 0);
        double slowest = 0;
        for (LRESULT row = 0; row < rows; ++row) {
            SendDlgItemMessageW(byKey, IDC_EM_KEY, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
            slowest = std::max(slowest, TimedCommand(thread, byKey, IDC_EM_KEY, CBN_SELCHANGE));
        }
        return slowest;
    };
    // The second setting of the general route (an integer the request left unreadable), selected,
    // then a digit typed over it: the value, its label in the tree, its bold, the reset button.
    const Step typeInSetting = [](DWORD thread, HWND dialog) {
        HWND tree = GetDlgItem(dialog, IDC_TREE);
        auto item = reinterpret_cast<LPARAM>(TreeView_GetChild(tree, TreeView_GetRoot(tree)));
        item = reinterpret_cast<LPARAM>(TreeView_GetNextSibling(tree, reinterpret_cast<HTREEITEM>(item)));
        if (!item) return -1.0;
        SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, item);
        WaitPainted(thread);
        HWND edit = GetDlgItem(dialog, IDC_VALUE_EDIT);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        const Clock start = Now();
        SendMessageW(edit, WM_CHAR, L'7', 1);
        WaitPainted(thread);
        return Milliseconds(start, Now());
    };
    // One character typed into the empty search: the tree narrowed to the settings that hold it.
    const Step typeInSearch = [](DWORD thread, HWND dialog) {
        HWND edit = GetDlgItem(dialog, IDC_SEARCH_EDIT);
        if (!edit) return -1.0;
        // What the dialog does once it has painted is done before the user types.
        Sleep(200);
        WaitPainted(thread);
        const Clock start = Now();
        SendMessageW(edit, WM_CHAR, L'7', 1);
        WaitPainted(thread);
        return Milliseconds(start, Now());
    };
    return {
        {"general route, 10 elements", request(qrl::gen::MakeRequest(10)), nullptr},
        {"general route, 1,000 elements", request(qrl::gen::MakeRequest(1000)), nullptr},
        {"general route, 10,000 elements", request(qrl::gen::MakeRequest(10000)), nullptr},
        {"general route, 10,000 elements in 50 groups", request(qrl::gen::MakeGroupedRequest(10000, 50)), nullptr},
        {"Configure Keyboard, 5,000 mappings", request(KeyMapRequest(false, 5000, false)), nullptr},
        {"classic key map, 5,000 mappings", request(KeyMapRequest(true, 5000, false)), nullptr},
        {"Configure HotSpots, 1,000 hotspots", request(HotSpotRequest(1000)), nullptr},
        {"Configure HotSpots, 10,000 hotspots", request(HotSpotRequest(10000)), nullptr},
        {"Macro Assistant, 100 KB macro", macro(MacroText(100000 / 6)), nullptr},
        {"Colour Configuration, 50 schemes", request(ColourRequest(50)), nullptr},
        {"edit: Macro Assistant delete, 30,000 tokens", macro(MacroText(30000)), tokenButton(IDC_DELETE_TOKEN)},
        {"edit: Macro Assistant insert, 30,000 tokens", macro(MacroText(30000)), tokenButton(IDC_INSERT_AFTER)},
        {"edit: Macro Assistant change, 30,000 tokens", macro(MacroText(30000)), changeToken},
        {"edit: Configure HotSpots, 10,000 hotspots", request(HotSpotRequest(10000)), deleteHotSpot},
        {"edit: classic key map by emulation key, 8,000 rows", request(KeyMapRequest(true, 8000, true)),
         chooseEmulationKey},
        {"edit: general route, 10,000 elements", request(qrl::gen::MakeRequest(10000)), typeInSetting},
        {"edit: general route search, 10,000 elements in 50 groups", request(qrl::gen::MakeGroupedRequest(10000, 50)),
         typeInSearch},
    };
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10;
    Module module;
    // A host with a window has the system's libraries loaded already; the module's own loading is
    // what is timed. Load, start and unload as a host that calls once: the first time cold, then warm.
    for (const wchar_t* system : {L"advapi32.dll", L"comctl32.dll", L"comdlg32.dll", L"crypt32.dll", L"gdi32.dll",
                                  L"shell32.dll", L"user32.dll"})
        LoadLibraryW(system);
    std::vector<double> loads;
    for (int i = 0; i <= runs; ++i) {
        const Clock start = Now();
        HMODULE handle = LoadLibraryW(ModulePath().c_str());
        auto init = reinterpret_cast<int (*)(uint64_t)>(reinterpret_cast<void*>(GetProcAddress(handle, "fnInit")));
        if (!handle || !init) {
            std::printf("cannot load %ls\n", ModulePath().c_str());
            return 2;
        }
        init(0);
        FreeLibrary(handle);
        loads.push_back(Milliseconds(start, Now()));
    }
    if (!module.Load(ModulePath())) return 2;
    std::printf("%-52s %8s %8s %8s\n", "case (milliseconds)", "cold", "median", "slowest");
    std::printf("%-52s %8.1f %8.1f %8.1f\n", "LoadLibraryW + fnInit + FreeLibrary", loads.front(),
                Median({loads.begin() + 1, loads.end()}), *std::max_element(loads.begin() + 1, loads.end()));
    const std::string only = argc > 2 ? argv[2] : "";
    for (const Case& c : Cases()) {
        if (std::string(c.name).find(only) == std::string::npos) continue;
        const double cold = RunOnce(module, c);
        std::vector<double> warm;
        for (int i = 0; i < runs; ++i) warm.push_back(RunOnce(module, c));
        std::printf("%-52s %8.1f %8.1f %8.1f\n", c.name, cold, Median(warm), *std::max_element(warm.begin(), warm.end()));
        std::fflush(stdout);
    }
    return 0;
}
