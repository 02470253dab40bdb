// Runs the packaged comms sample through fnRunConfig2W, accepts the dialog unchanged from a second
// thread, and prints the code, the status and the reply.
#include <qrl4cfg.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace {

BOOL CALLBACK acceptShownDialog(HWND window, LPARAM accepted) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (!IsWindowVisible(window) || std::wstring(name) != L"#32770") return TRUE;
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    *reinterpret_cast<bool*>(accepted) = true;
    return FALSE;
}

std::wstring readUtf8(const char* path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    const std::string text = bytes.str();
    std::wstring wide(text.size(), L'\0');
    wide.resize(MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                    static_cast<int>(wide.size())));
    return wide;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 || fnInit(1) != 0) return 2;
    std::wstring request = readUtf8(argv[1]);
    const DWORD dialogThread = GetCurrentThreadId();
    std::thread user([dialogThread] {
        bool accepted = false;
        for (int tries = 0; tries < 300 && !accepted; ++tries) {
            Sleep(100);
            EnumThreadWindows(dialogThread, acceptShownDialog, reinterpret_cast<LPARAM>(&accepted));
        }
    });
    wchar_t reply[4096] = {};
    uint32_t status = 99;
    const int code = fnRunConfig2W(request.data(), nullptr, reply, 4096, &status);
    user.join();
    char utf8[8192] = {};
    WideCharToMultiByte(CP_UTF8, 0, reply, -1, utf8, sizeof utf8, nullptr, nullptr);
    std::printf("code %d status %u\n%s\n", code, status, utf8);
    return 0;
}
