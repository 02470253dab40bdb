// A host that loads and frees the DLL again and again must get its memory back each time. This
// program never holds the DLL otherwise, so every LoadLibrary starts the module afresh.
#include <windows.h>

#include "forms/dllhost.h"
#include "forms/driver.h"
#include "forms/soak.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using RunConfig2W = int (*)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*);

// One cycle: load, a request that fails after reading its ini file (the cache, its lock and an
// exception all come into play), free.
bool cycle(const std::wstring& dll, const std::wstring& iniFile) {
    HMODULE module = LoadLibraryW(dll.c_str());
    if (!module) return false;
    const auto run = reinterpret_cast<RunConfig2W>(reinterpret_cast<void (*)()>(GetProcAddress(module, "fnRunConfig2W")));
    std::wstring request = L"<Config ModuleType=\"KeyMap\" IniFile=\"" + iniFile + L"\"><DTD><Bad/></DTD></Config>";
    wchar_t reply[64];
    uint32_t status = 0;
    const bool ran = run && run(request.data(), nullptr, reply, 64, &status) == 630;
    return FreeLibrary(module) != 0 && ran;
}

TEST(Unload, LoadAndFreeCyclesGiveTheMemoryBack) {
    const std::wstring dll = qrl::test::ProductPath();
    const std::wstring ini = qrl::test::TempDir() + L"qrl4cfg_unload.ini";
    // About 1.5 KB a cycle stays behind outside our code (loader and runtime bookkeeping); one lost
    // exception pool of the C++ runtime would be ~73 KB.
    qrl::test::ExpectNoGrowth(200, [&](int) { return cycle(dll, ini); }, 4096);
}

}  // namespace
