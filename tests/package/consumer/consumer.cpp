// Runs the packaged comms sample through fnRunConfig2W, accepts the dialog unchanged from a second
// thread as a user would, and prints the code, the status and the reply.
#include <qrl4cfg.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

BOOL CALLBACK acceptShownDialog(HWND window, LPARAM accepted) {
    wchar_t name[8] = {};
    GetClassNameW(window, name, 8);
    if (!IsWindowVisible(window) || std::wstring(name) != L"#32770") return TRUE;
    *reinterpret_cast<bool*>(accepted) = PostMessageW(window, WM_COMMAND, IDOK, 0) != 0;
    return FALSE;
}

int main(int, char** argv) {
    std::ifstream in(argv[1], std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    std::wstring request(bytes.size(), L'\0');
    request.resize(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), request.data(),
                                       static_cast<int>(request.size())));
    std::thread user([thread = GetCurrentThreadId()] {
        bool accepted = false;  // a run that shows no dialog leaves it false for 30 seconds
        for (int tries = 0; !accepted && tries < 300; ++tries, Sleep(100))
            EnumThreadWindows(thread, acceptShownDialog, reinterpret_cast<LPARAM>(&accepted));
    });
    wchar_t reply[4096] = {};
    uint32_t status = 99;
    const int code = fnRunConfig2W(request.data(), nullptr, reply, 4096, &status);
    user.join();
    std::printf("code %d status %u\n%ls\n", code, status, reply);
    return fnInit(0);
}
