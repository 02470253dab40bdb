// The DLL's export table as a host sees it: loaded by path, entry points by their exported names.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using RunConfig2W = int (*)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*);
using RunConfigW = int (*)(wchar_t*, HWND, wchar_t*, unsigned int);
using Init = int (*)(uint64_t);
using OpenWait = int (*)(HWND, unsigned char);
using Assign = void* (*)(void*, const void*);

template <class F>
F entry(HMODULE module, const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// The DLL of this build: <build>/src/qrl4cfg.dll beside <build>/tests/ where this program runs.
HMODULE product() {
    static HMODULE module = [] {
        wchar_t path[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        std::wstring dll(path);
        dll.resize(dll.find_last_of(L"\\/"));
        dll.resize(dll.find_last_of(L"\\/") + 1);
        return LoadLibraryW((dll + L"src\\qrl4cfg.dll").c_str());
    }();
    return module;
}

struct TRun {
    int code;
    uint32_t status;
    std::wstring reply;
};

TRun runConfig2W(const std::wstring& request, uint64_t capacity, bool withStatus = true) {
    std::wstring text = request;
    std::vector<wchar_t> reply(static_cast<std::size_t>(capacity) + 8, L'#');
    uint32_t status = 0xFFFFFFFF;
    const int code = entry<RunConfig2W>(product(), "fnRunConfig2W")(text.data(), nullptr, reply.data(), capacity,
                                                                      withStatus ? &status : nullptr);
    return TRun{code, status, code == 0 ? std::wstring(reply.data()) : std::wstring()};
}

// Presses a button of the dialog titled `title` once it shows, from a second thread, `times` times.
class TPresser {
public:
    TPresser(const wchar_t* title, int id, int times) {
        thread_ = std::thread([=, this] {
            for (int pressed = 0; pressed < times && !stop_;) {
                HWND dialog = FindWindowW(L"#32770", title);
                if (dialog && IsWindowVisible(dialog)) {
                    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0);
                    while (IsWindow(dialog) && !stop_) Sleep(10);
                    ++pressed;
                }
                Sleep(20);
            }
        });
    }
    ~TPresser() {
        stop_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

const std::wstring kFormRequest =
    L"<Config><DTD><Element Name=\"A\" Default=\"x\"/></DTD>"
    L"<Interface StartForm=\"F\"><Form Name=\"F\" Title=\"Capacity test\" Width=\"120\" Height=\"60\">"
    L"<Button Caption=\"OK\" Action=\"OK\" Left=\"5\" Top=\"5\" Width=\"40\" Height=\"14\"/>"
    L"<Button Caption=\"Cancel\" Action=\"Cancel\" Left=\"50\" Top=\"5\" Width=\"40\" Height=\"14\"/>"
    L"</Form></Interface></Config>";

TEST(Exports, NamesAsAHostImportsThem) {
    ASSERT_NE(product(), nullptr) << "qrl4cfg.dll not found";
    for (const char* name : {"fnRunConfig2W", "fnInit", "fnOpenWait", "?fnRunConfigW@@YAHPEA_WPEAUHWND__@@0I@Z",
                             "??4CQRLCONFIG@@QEAAAEAV0@AEBV0@@Z"})
        EXPECT_NE(GetProcAddress(product(), name), nullptr) << name;
    EXPECT_EQ(GetProcAddress(product(), "fnRunConfigW"), nullptr);
    EXPECT_EQ(GetProcAddress(product(), "qrlRunConfigW"), nullptr);
}

TEST(Exports, SmallEntries) {
    ASSERT_NE(product(), nullptr);
    EXPECT_EQ(entry<Init>(product(), "fnInit")(0x1234567890ull), 0);
    char object[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const char other[8] = {};
    EXPECT_EQ(entry<Assign>(product(), "??4CQRLCONFIG@@QEAAAEAV0@AEBV0@@Z")(object, other), object);
    EXPECT_EQ(object[0], 1);  // nothing copied
    const OpenWait openWait = entry<OpenWait>(product(), "fnOpenWait");
    EXPECT_EQ(openWait(nullptr, 0), 0);
    EXPECT_EQ(openWait(nullptr, 1), 0);
    EXPECT_EQ(openWait(nullptr, 0xFF), 0);
}

TEST(Exports, FailedRequestsAre630WithStatusZero) {
    ASSERT_NE(product(), nullptr);
    for (const wchar_t* request : {L"<Config", L"<Konfig/>", L"", L"<Config><DTD><Element/></DTD></Config>",
                                   L"<Config ModuleType=\"Comms\"><Data><Value/></Data></Config>"}) {
        const TRun run = runConfig2W(request, 4096);
        EXPECT_EQ(run.code, 630) << static_cast<const void*>(request);
        EXPECT_EQ(run.status, 0u);
        EXPECT_EQ(runConfig2W(request, 4096, false).code, 630);
    }
    // An IniFile that cannot be a file is no file: the run goes on to its fault, whatever the length.
    for (const std::size_t length : {1000u, 70000u, 1000000u})
        EXPECT_EQ(runConfig2W(L"<Config IniFile=\"" + std::wstring(length, L'n') + L"\"><Data><Value/></Data></Config>",
                              4096).code,
                  630)
            << length;
    // A null request is no request.
    uint32_t status = 7;
    wchar_t reply[16];
    EXPECT_EQ(entry<RunConfig2W>(product(), "fnRunConfig2W")(nullptr, nullptr, reply, 16, &status), 630);
    EXPECT_EQ(status, 0u);
    wchar_t broken[] = L"<Config";
    EXPECT_EQ(entry<RunConfigW>(product(), "?fnRunConfigW@@YAHPEA_WPEAUHWND__@@0I@Z")(broken, nullptr, reply, 16),
              630);
}

TEST(Exports, CapacityRuleAtTheBoundary) {
    ASSERT_NE(product(), nullptr);
    TPresser presser(L"Capacity test", IDOK, 3);
    const TRun full = runConfig2W(kFormRequest, 65536);
    ASSERT_EQ(full.code, 0);
    EXPECT_EQ(full.status, 0u);
    EXPECT_NE(full.reply.find(L"<Item Element=\"A\" Value=\"x\"/>"), std::wstring::npos);
    const uint64_t length = full.reply.size();

    const TRun fits = runConfig2W(kFormRequest, length + 1);
    EXPECT_EQ(fits.code, 0);
    EXPECT_EQ(fits.reply, full.reply);
    const TRun tooSmall = runConfig2W(kFormRequest, length);
    EXPECT_EQ(tooSmall.code, 160);
    EXPECT_EQ(tooSmall.status, 0u);
}

TEST(Exports, CancelAndTheStatuslessEntry) {
    ASSERT_NE(product(), nullptr);
    {
        TPresser presser(L"Capacity test", IDCANCEL, 1);
        const TRun cancelled = runConfig2W(kFormRequest, 4096);
        EXPECT_EQ(cancelled.code, 1);
        EXPECT_EQ(cancelled.status, 1u);
    }
    {
        TPresser presser(L"Capacity test", IDOK, 1);
        std::wstring text = kFormRequest;
        std::vector<wchar_t> reply(4096, L'#');
        EXPECT_EQ(entry<RunConfigW>(product(), "?fnRunConfigW@@YAHPEA_WPEAUHWND__@@0I@Z")(text.data(), nullptr,
                                                                                          reply.data(), 4096),
                  0);
        EXPECT_NE(std::wstring(reply.data()).find(L"<Data>"), std::wstring::npos);
    }
    {
        TPresser presser(L"Capacity test", IDOK, 1);
        EXPECT_EQ(runConfig2W(kFormRequest, 4096, false).code, 0);  // no status pointer: same run
    }
}

}  // namespace
