// A thousand runs of the general route in one process: windows, GDI objects and memory must not
// grow. Each run opens the built-in form, changes a value and accepts.
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"

#include <psapi.h>

#include <gtest/gtest.h>

#include <iostream>

namespace qrl::test {
namespace {

struct Usage {
    std::size_t windows = 0;
    std::size_t gdiObjects = 0;
    std::size_t privateBytes = 0;
};

std::size_t CountGdiObjects() {
    // Under Wine a handle whose high word is 0 matches any live object at that index, so probing
    // every index counts the live objects of the process.
    std::size_t count = 0;
    for (uintptr_t index = 1; index <= 0xFFFF; ++index)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++count;
    return count;
}

Usage Measure() {
    Usage u;
    u.windows = ThreadWindows(GetCurrentThreadId()).size();
    u.gdiObjects = CountGdiObjects();
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    u.privateBytes = counters.PagefileUsage;
    return u;
}

const std::wstring kTitle = L"Configure  Telnet over TCP";

bool OneRun(const std::u16string& request, int n) {
    RunResult r;
    const auto failures = RunDriven([&] { r = Product::Get().RunConfig2W(request); }, [&](Driver& d) {
        HWND dlg = d.WaitForDialog(kTitle, 15000, 0);
        HWND tree = GetDlgItem(dlg, IDC_TREE);
        Driver::SelectTreeItem(tree, Driver::FindTreeItem(tree, L"Host name"));
        Driver::Type(GetDlgItem(dlg, IDC_VALUE_EDIT), L"host" + std::to_wstring(n));
        Driver::Click(dlg, IDOK);
        d.WaitGone(dlg);
    });
    return failures.empty() && r.code == 0 && r.reply.find(u"Value=\"host" + decimal(n) + u"\"") != std::u16string::npos;
}

TEST(Leaks, AThousandRunsOfTheGeneralRoute) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    const std::u16string request = SampleText("comms_request.xml");
    // Warm up: caches of the platform (fonts, classes, the language table) fill on the first runs.
    for (int n = 0; n < 20; ++n) ASSERT_TRUE(OneRun(request, n)) << n;
    const Usage before = Measure();
    int failed = 0;
    for (int n = 0; n < 1000; ++n)
        if (!OneRun(request, n)) ++failed;
    const Usage after = Measure();
    std::cout << "[ leaks    ] windows " << before.windows << " -> " << after.windows << ", GDI objects "
              << before.gdiObjects << " -> " << after.gdiObjects << ", private bytes " << before.privateBytes << " -> "
              << after.privateBytes << "\n";
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.gdiObjects, before.gdiObjects);
    // A leak of one small block per run would already show as more than this.
    EXPECT_LT(after.privateBytes, before.privateBytes + 512 * 1024);
}

}  // namespace
}  // namespace qrl::test
