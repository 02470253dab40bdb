// qrl4host: a small host for the configuration module. It loads the DLL by path, owns a hidden link
// window that answers the module's link messages, runs one request file through an entry point and
// prints the code, the status and the reply. For scripted runs it pictures each dialog and presses
// buttons. Run without arguments for the options.
#include <windows.h>
#include <shellapi.h>

#include <cstdio>
#include <cwchar>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/requestcheck.h"
#include "cheatsheet.h"
#include "hostwindow.h"
#include "languagefiles.h"
#include "snapshots.h"
#include "version.h"
#include "text/textutil.h"

namespace {

using qrl4host::PrintText;

const char kUsage[] =
    "usage: qrl4host [options] REQUEST\n"
    "       qrl4host --check REQUEST\n"
    "       qrl4host --cheatsheet REQUEST FILE\n"
    "       qrl4host --language-template FILE | --pseudo-language FILE | --check-language FILE\n"
    "       qrl4host --version\n"
    "  --check REQUEST    read REQUEST as the module would, without loading it, and print each\n"
    "                     finding as file:line:column: error|warning: text; exit 0 when the module\n"
    "                     would run it, 1 when it would answer 630, 2 when the file cannot be read\n"
    "  --cheatsheet REQUEST FILE   write the cheat sheet of a KeyMap request to FILE, as\n"
    "                     Configure Keyboard's Cheat Sheet button writes it, without a window\n"
    "  --language-template FILE   write a language file with every text key of the module and its\n"
    "                     English text, grouped by dialog, to start a translation from\n"
    "  --pseudo-language FILE     write a language file whose texts are the English ones made longer,\n"
    "                     accented and bracketed, to see where a text is cut or not translated\n"
    "  --check-language FILE|DIR  print as file:line: text each unknown key, missing key, text whose\n"
    "                     % placeholders or & accelerator differ from the English one, and line\n"
    "                     that is not read whole; a folder is checked as one language of all its\n"
    "                     *.lang files; exit 0 when none, 1 when some, 2 if a file is unreadable\n"
    "  REQUEST            request file, UTF-8 or UTF-16 (with or without a byte-order mark)\n"
    "  --dll PATH         the module (default: qrl4cfg.dll beside qrl4host.exe)\n"
    "  --entry 2W|W|macro fnRunConfig2W (default), fnRunConfigW, or fnMacroAssist on the file's text\n"
    "  --mode N           macro level for fnMacroAssist: 1, 3 or 7 (default 7)\n"
    "  --keys A,B,...     emulation key names for fnMacroAssist\n"
    "  --capacity N       reply buffer in characters (default 1048576)\n"
    "  --null-status      pass no status pointer\n"
    "  --no-link          leave the request's Link alone (default: add one to the link window)\n"
    "  --auth-dir DIR     answer to code 123\n"
    "  --emulation NAME   answer to code 8204\n"
    "  --exchange FILE    reply to code 8437, in turn (repeat for several)\n"
    "  --result-8438 N, --result-8439 N, --result-8440 N   results of those codes (default 0)\n"
    "  --wait             open the please-wait window before the run\n"
    "  --pictures DIR     save a PNG picture of every dialog shown\n"
    "  --press ID         press the control ID in the next dialog that shows (repeat in order)\n"
    "  --select TEXT      before the first press, select the tree item whose text starts with TEXT\n"
    "  --choose ID=ROW    before the first picture, choose row ROW of the first dialog's drop-down ID\n"
    "  --settle MS        wait this long after a dialog shows before picturing it (default 600)\n"
    "  --timeout MS       press Cancel in a dialog still open after this long (default never)\n"
    "  --check-layout     print each dialog's texts wider than their controls and controls outside it;\n"
    "                     the exit code is then 3 when there are any\n";

// Text files come as UTF-16 (marked, or recognisable by its zero bytes) or UTF-8.
bool readText(const std::wstring& path, std::u16string& text) {
    std::ifstream in(path.c_str(), std::ios::binary);
    if (!in) return false;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    const std::string raw = bytes.str();
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(raw[i]); };
    bool littleEndian = raw.size() >= 2 && byteAt(0) == 0xFF && byteAt(1) == 0xFE;
    const bool bigEndian = raw.size() >= 2 && byteAt(0) == 0xFE && byteAt(1) == 0xFF;
    std::size_t start = littleEndian || bigEndian ? 2 : 0;
    if (!littleEndian && !bigEndian && raw.size() >= 2 && byteAt(1) == 0 && byteAt(0) != 0) littleEndian = true;
    if (littleEndian || bigEndian) {
        text.clear();
        for (std::size_t i = start; i + 1 < raw.size(); i += 2) {
            const unsigned lo = bigEndian ? byteAt(i + 1) : byteAt(i);
            const unsigned hi = bigEndian ? byteAt(i) : byteAt(i + 1);
            text.push_back(static_cast<char16_t>(lo | (hi << 8)));
        }
        return true;
    }
    if (raw.size() >= 3 && byteAt(0) == 0xEF && byteAt(1) == 0xBB && byteAt(2) == 0xBF) start = 3;
    text = qrl::utf8ToUtf16(std::string_view(raw).substr(start));
    return true;
}

// Puts a Link to our window last into the root, so that it overrides any Link the file has.
std::u16string withLink(const std::u16string& request, HWND window) {
    wchar_t link[128];
    std::swprintf(link, 128, L"<Link type=\"HWND\" value=\"%llx\" msgid=\"%x\"/>",
                  static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(window)), qrl4host::kLinkMessage);
    const std::u16string linkText(reinterpret_cast<const char16_t*>(link));
    const std::size_t endTag = request.rfind(u"</");
    if (endTag != std::u16string::npos) return request.substr(0, endTag) + linkText + request.substr(endTag);
    // <Config .../> alone: open it up.
    const std::size_t close = request.rfind(u"/>");
    std::size_t open = request.find(u'<');
    while (open != std::u16string::npos && open + 1 < request.size() &&
           (request[open + 1] == u'?' || request[open + 1] == u'!'))
        open = request.find(u'<', open + 1);
    if (close == std::u16string::npos || open == std::u16string::npos || open > close) return request;
    std::size_t nameEnd = open + 1;
    while (nameEnd < close && !qrl::isXmlSpace(request[nameEnd])) ++nameEnd;
    return request.substr(0, close) + u">" + linkText + u"</" + request.substr(open + 1, nameEnd - open - 1) + u">" +
           request.substr(close + 2);
}

std::wstring besideProgram(const wchar_t* name) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    folder.resize(folder.find_last_of(L"\\/") + 1);
    return folder + name;
}

using RunConfig2W = int (*)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*);
using RunConfigW = int (*)(wchar_t*, HWND, wchar_t*, unsigned int);
using OpenWait = int (*)(HWND, unsigned char);
using MacroAssist = int (*)(HWND, wchar_t*, uint32_t, const wchar_t*, HWND, int);

// fnMacroAssist's key list: each name with its terminator, and an empty name last.
std::wstring keyList(const std::wstring& commaSeparated) {
    std::wstring list = commaSeparated;
    for (wchar_t& c : list)
        if (c == L',') c = L'\0';
    if (!list.empty()) list.push_back(L'\0');
    list.push_back(L'\0');
    return list;
}

// GetProcAddress gives a generic function pointer; passing it through void(*)() says so to the compiler.
template <class F>
F entryPoint(HMODULE module, const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// --check: the module's readers over the file, the DLL left alone.
int checkFile(const std::wstring& path) {
    std::u16string request;
    if (!readText(path, request)) {
        std::fprintf(stderr, "qrl4host: cannot read %ls\n", path.c_str());
        return qrl::kCheckUnreadable;
    }
    const std::string file = qrl::utf16ToUtf8(std::u16string(reinterpret_cast<const char16_t*>(path.c_str())));
    const std::vector<qrl::TCheckFinding> findings = qrl::CheckRequest(request);
    for (const qrl::TCheckFinding& finding : findings) std::printf("%s\n", qrl::FormatFinding(file, finding).c_str());
    return qrl::CheckExitCode(findings);
}

int cheatSheetFile(const std::wstring& requestPath, const std::wstring& file) {
    std::u16string request;
    if (!readText(requestPath, request)) {
        std::fprintf(stderr, "qrl4host: cannot read %ls\n", requestPath.c_str());
        return 2;
    }
    return qrl4host::writeCheatSheet(request, file);
}

int run(int argc, wchar_t** argv) {
    qrl4host::THostOptions host;
    qrl4host::TSnapshotOptions shots;
    std::wstring dllPath = besideProgram(L"qrl4cfg.dll");
    std::wstring requestPath;
    std::wstring entry = L"2W";
    uint64_t capacity = 1 << 20;
    bool nullStatus = false, addLink = true, openWait = false;
    int macroMode = 7;
    std::wstring keys;

    for (int i = 1; i < argc; ++i) {
        const std::wstring arg = argv[i];
        const auto value = [&]() -> std::wstring {
            if (i + 1 >= argc) {
                std::fprintf(stderr, "qrl4host: %ls needs a value\n", arg.c_str());
                std::exit(2);
            }
            return argv[++i];
        };
        const auto toU16 = [](const std::wstring& s) { return std::u16string(reinterpret_cast<const char16_t*>(s.c_str())); };
        if (arg == L"--check") return checkFile(value());
        else if (arg == L"--cheatsheet") {
            const std::wstring request = value();
            return cheatSheetFile(request, value());
        }
        else if (arg == L"--version") return qrl4host::PrintVersion();
        else if (arg == L"--language-template") return qrl4host::writeLanguageTemplate(value());
        else if (arg == L"--pseudo-language") return qrl4host::writePseudoLanguage(value());
        else if (arg == L"--check-language") return qrl4host::checkLanguageFile(value());
        else if (arg == L"--dll") dllPath = value();
        else if (arg == L"--entry") entry = value();
        else if (arg == L"--capacity") capacity = std::wcstoull(value().c_str(), nullptr, 10);
        else if (arg == L"--mode") macroMode = std::wcstol(value().c_str(), nullptr, 10);
        else if (arg == L"--keys") keys = value();
        else if (arg == L"--null-status") nullStatus = true;
        else if (arg == L"--no-link") addLink = false;
        else if (arg == L"--auth-dir") host.authDirectory = toU16(value());
        else if (arg == L"--emulation") host.emulationName = toU16(value());
        else if (arg == L"--exchange") {
            std::u16string reply;
            const std::wstring file = value();
            if (!readText(file, reply)) {
                std::fprintf(stderr, "qrl4host: cannot read %ls\n", file.c_str());
                return 2;
            }
            host.exchangeReplies.push_back(reply);
        } else if (arg == L"--result-8438") host.mapsSavedResult = std::wcstol(value().c_str(), nullptr, 10);
        else if (arg == L"--result-8439") host.deleteLanguageResult = std::wcstol(value().c_str(), nullptr, 10);
        else if (arg == L"--result-8440") host.addLanguageResult = std::wcstol(value().c_str(), nullptr, 10);
        else if (arg == L"--wait") openWait = true;
        else if (arg == L"--pictures") shots.directory = value();
        else if (arg == L"--press") shots.presses.push_back(std::wcstol(value().c_str(), nullptr, 10));
        else if (arg == L"--select") shots.select = value();
        else if (arg == L"--choose") {
            const std::wstring choice = value();
            wchar_t* rest = nullptr;
            shots.chooseId = static_cast<int>(std::wcstol(choice.c_str(), &rest, 10));
            shots.chooseRow = *rest == L'=' ? static_cast<int>(std::wcstol(rest + 1, nullptr, 10)) : 0;
        }
        else if (arg == L"--settle") shots.settleMs = std::wcstoul(value().c_str(), nullptr, 10);
        else if (arg == L"--check-layout") shots.checkLayout = true;
        else if (arg == L"--timeout") shots.timeoutMs = std::wcstoul(value().c_str(), nullptr, 10);
        else if (!arg.empty() && arg[0] == L'-') {
            std::fprintf(stderr, "qrl4host: unknown option %ls\n%s", arg.c_str(), kUsage);
            return 2;
        } else requestPath = arg;
    }
    if (requestPath.empty()) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    std::u16string request;
    if (!readText(requestPath, request)) {
        std::fprintf(stderr, "qrl4host: cannot read %ls\n", requestPath.c_str());
        return 2;
    }
    if (!shots.directory.empty()) CreateDirectoryW(shots.directory.c_str(), nullptr);

    HMODULE module = LoadLibraryW(dllPath.c_str());
    if (!module) {
        std::fprintf(stderr, "qrl4host: cannot load %ls (error %lu)\n", dllPath.c_str(), GetLastError());
        return 2;
    }
    const auto runConfig2W = entryPoint<RunConfig2W>(module, "fnRunConfig2W");
    const auto runConfigW = entryPoint<RunConfigW>(module, "?fnRunConfigW@@YAHPEA_WPEAUHWND__@@0I@Z");
    const auto openWaitEntry = entryPoint<OpenWait>(module, "fnOpenWait");
    const auto macroAssist = entryPoint<MacroAssist>(module, "fnMacroAssist");
    if (!runConfig2W || !runConfigW || !openWaitEntry || !macroAssist) {
        std::fprintf(stderr, "qrl4host: %ls lacks an entry point\n", dllPath.c_str());
        return 2;
    }

    HWND linkWindow = qrl4host::CreateLinkWindow(GetModuleHandleW(nullptr), &host);
    if (entry == L"macro") {
        while (!request.empty() && (request.back() == u'\n' || request.back() == u'\r')) request.pop_back();
        std::vector<wchar_t> text(request.begin(), request.end());
        text.resize(static_cast<std::size_t>(capacity), L'\0');
        const std::wstring names = keyList(keys);
        qrl4host::StartSnapshots(shots);
        const int code = macroAssist(nullptr, text.data(), static_cast<uint32_t>(capacity), names.c_str(), linkWindow,
                                     macroMode);
        qrl4host::StopSnapshots();
        std::printf("code: %d\n", code);
        text.back() = L'\0';
        if (code == 0) PrintText("text", reinterpret_cast<const char16_t*>(text.data()));
        std::fflush(stdout);
        DestroyWindow(linkWindow);
        FreeLibrary(module);
        return qrl4host::LayoutProblemCount() ? 3 : 0;
    }
    if (addLink) request = withLink(request, linkWindow);
    if (openWait) openWaitEntry(nullptr, 0);
    qrl4host::StartSnapshots(shots);

    std::vector<wchar_t> text(request.begin(), request.end());
    text.push_back(L'\0');
    std::vector<wchar_t> reply(static_cast<std::size_t>(capacity) + 1, L'\0');
    uint32_t status = 0xFFFFFFFF;
    int code = 0;
    if (entry == L"W")
        code = runConfigW(text.data(), nullptr, reply.data(), static_cast<unsigned int>(capacity));
    else
        code = runConfig2W(text.data(), nullptr, reply.data(), capacity, nullStatus ? nullptr : &status);
    qrl4host::StopSnapshots();

    std::printf("code: %d\n", code);
    if (entry == L"W" || nullStatus)
        std::printf("status: none\n");
    else
        std::printf("status: %u\n", status);
    if (code == 0) {
        reply.back() = L'\0';
        PrintText("reply", reinterpret_cast<const char16_t*>(reply.data()));
    }
    std::fflush(stdout);
    DestroyWindow(linkWindow);
    FreeLibrary(module);
    return qrl4host::LayoutProblemCount() ? 3 : 0;
}

}  // namespace

int main() {
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    if (!argv) return 2;
    const int result = run(argc, argv);
    LocalFree(argv);
    return result;
}
