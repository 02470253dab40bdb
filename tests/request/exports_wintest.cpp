// The DLL's export table as a host sees it: loaded by path, entry points by their exported names.
#include "forms/dllhost.h"
#include "forms/driver.h"

#include <gtest/gtest.h>

namespace qrl::test {
namespace {

using RunConfig2WFn = int (*)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*);
using RunConfigWFn = int (*)(wchar_t*, HWND, wchar_t*, unsigned int);
const char* const kRunConfigW = "?fnRunConfigW@@YAHPEA_WPEAUHWND__@@0I@Z";
const char* const kAssign = "??4CQRLCONFIG@@QEAAAEAV0@AEBV0@@Z";

template <class F>
F Entry(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(Product::Get().Module(), name)));
}

const std::u16string kFormRequest =
    u"<Config><DTD><Element Name=\"A\" Default=\"x\"/></DTD>"
    u"<Interface StartForm=\"F\"><Form Name=\"F\" Title=\"Capacity test\" Width=\"120\" Height=\"60\">"
    u"<Button Caption=\"OK\" Action=\"OK\" Left=\"5\" Top=\"5\" Width=\"40\" Height=\"14\"/>"
    u"<Button Caption=\"Cancel\" Action=\"Cancel\" Left=\"50\" Top=\"5\" Width=\"40\" Height=\"14\"/>"
    u"</Form></Interface></Config>";

// Runs `call` while a user presses OK on the test form.
void Pressing(const std::function<void()>& call) {
    Drive(call, [](Driver& d) { d.Close(d.WaitForDialog(L"Capacity test")); });
}

// fnRunConfig2W with no status pointer.
int RunWithoutStatus(std::u16string request, std::u16string* reply = nullptr) {
    std::vector<wchar_t> buffer(4096, L'#');
    const int code = Entry<RunConfig2WFn>("fnRunConfig2W")(reinterpret_cast<wchar_t*>(request.data()), nullptr,
                                                            buffer.data(), buffer.size(), nullptr);
    if (reply) *reply = reinterpret_cast<const char16_t*>(buffer.data());
    return code;
}

using Exports = ProductTest;

TEST_F(Exports, NamesAndSmallEntries) {
    for (const char* name : {"fnRunConfig2W", "fnInit", "fnOpenWait", kRunConfigW, kAssign})
        EXPECT_NE(GetProcAddress(Product::Get().Module(), name), nullptr) << name;
    for (const char* name : {"fnRunConfigW", "qrlRunConfigW"})
        EXPECT_EQ(GetProcAddress(Product::Get().Module(), name), nullptr) << name;

    EXPECT_EQ(Entry<int (*)(uint64_t)>("fnInit")(0x1234567890ull), 0);
    char object[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const char other[8] = {};
    EXPECT_EQ(Entry<void* (*)(void*, const void*)>(kAssign)(object, other), object);
    EXPECT_EQ(object[0], 1);  // nothing copied
    for (unsigned char flags : {0, 1, 0xFF}) EXPECT_EQ(Product::Get().OpenWait(nullptr, flags), 0);
}

// The run's rules are checked natively; here what only the real entries and platform show.
TEST_F(Exports, FailedRequestsAre630WithStatusZero) {
    std::vector<std::u16string> requests = {u"<Config"};
    // An IniFile that cannot be a file is no file: the run goes on to its fault, whatever the length.
    for (const std::size_t length : {1000u, 70000u, 1000000u})
        requests.push_back(u"<Config IniFile=\"" + std::u16string(length, u'n') + u"\"><Data><Value/></Data></Config>");
    for (const std::u16string& request : requests) {
        SCOPED_TRACE(request.size());
        const RunResult run = Product::Get().RunConfig2W(request, nullptr, 4096);
        EXPECT_EQ(run.code, 630);
        EXPECT_EQ(run.status, 0u);
        EXPECT_EQ(RunWithoutStatus(request), 630);
    }
    // A null request is no request.
    uint32_t status = 7;
    wchar_t reply[16];
    EXPECT_EQ(Entry<RunConfig2WFn>("fnRunConfig2W")(nullptr, nullptr, reply, 16, &status), 630);
    EXPECT_EQ(status, 0u);
    wchar_t broken[] = L"<Config";
    EXPECT_EQ(Entry<RunConfigWFn>(kRunConfigW)(broken, nullptr, reply, 16), 630);
}

TEST_F(Exports, EachEntryRunsTheForm) {
    RunResult withStatus, tooSmall;
    Pressing([&] { withStatus = Product::Get().RunConfig2W(kFormRequest); });
    EXPECT_EQ(withStatus.status, 0u);
    EXPECT_NE(withStatus.reply.find(u"<Item Element=\"A\" Value=\"x\"/>"), std::u16string::npos);
    Pressing([&] { tooSmall = Product::Get().RunConfig2W(kFormRequest, nullptr, withStatus.reply.size()); });
    EXPECT_EQ(tooSmall.code, 160);

    std::u16string text = kFormRequest;
    std::vector<wchar_t> reply(4096, L'#');
    int code = -1;
    Pressing([&] {
        code = Entry<RunConfigWFn>(kRunConfigW)(reinterpret_cast<wchar_t*>(text.data()), nullptr, reply.data(), 4096);
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(reply.data())), withStatus.reply);
    std::u16string statusless;
    Pressing([&] { code = RunWithoutStatus(kFormRequest, &statusless); });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(statusless, withStatus.reply);
}

}  // namespace
}  // namespace qrl::test
