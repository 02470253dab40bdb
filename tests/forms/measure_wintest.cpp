// A one-off measurement, not a test that runs by default: how long the built-in form of a request
// of 10,000 elements takes to open. Run it with
//   wintest_forms --gtest_also_run_disabled_tests --gtest_filter=Measure.*
#include "dllhost.h"
#include "driver.h"
#include "formsetup.h"
#include "forms/forms_rc.h"
#include "forms/runform.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <iostream>

namespace qrl::test {
namespace {

// 10,000 elements of mixed types in 100 listed groups of two levels, with a data value each.
std::u16string LargeRequest(int count) {
    std::u16string text = u"<Config ModuleType=\"Comms\"><Help help_file=\"big.hlp\"/><Groups>";
    for (int g = 0; g < 10; ++g) {
        text += u"<Group Name=\"Area" + decimal(g) + u"\" expanded=\"1\"/>";
        for (int s = 0; s < 10; ++s) text += u"<Group Name=\"Area" + decimal(g) + u".Part" + decimal(s) + u"\"/>";
    }
    text += u"</Groups><DTD>";
    static const char16_t* kTypes[] = {u"text", u"int", u"bool", u"stringset", u"rgb"};
    for (int i = 0; i < count; ++i) {
        const int group = i * 100 / count;
        text += u"<Element Name=\"S" + decimal(i) + u"\" group=\"Area" + decimal(group / 10) + u".Part" +
                decimal(group % 10) + u"\" Type=\"" + kTypes[i % 5] + u"\" descr=\"Setting " + decimal(i) + u"\"";
        if (i % 5 == 3) text += u" strings=\"Red,Green,Blue\"";
        text += u" Default=\"" + (i % 5 == 1 ? decimal(i) : i % 5 == 4 ? std::u16string(u"00ff00") : u"Green") + u"\"/>";
    }
    text += u"</DTD><Data>";
    for (int i = 0; i < count; ++i) text += u"<Item Element=\"S" + decimal(i) + u"\" Value=\"Green\"/>";
    text += u"</Data></Config>";
    return text;
}

double Ms(const LARGE_INTEGER& a, const LARGE_INTEGER& b) {
    LARGE_INTEGER f;
    QueryPerformanceFrequency(&f);
    return static_cast<double>(b.QuadPart - a.QuadPart) * 1000.0 / static_cast<double>(f.QuadPart);
}

TEST(Measure, DISABLED_OpenTheBuiltInFormOfTenThousandElements) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    const std::u16string request = LargeRequest(10000);
    for (int round = 0; round < 3; ++round) {
        // Through the entry point: parse, load, build, dialog visible.
        LARGE_INTEGER start{}, shown{};
        std::size_t items = 0;
        auto failures = RunDriven(
            [&] {
                QueryPerformanceCounter(&start);
                Product::Get().RunConfig2W(request);
            },
            [&](Driver& d) {
                HWND dlg = d.WaitForDialog(L"Configure  ", 60000, 0);
                QueryPerformanceCounter(&shown);
                items = static_cast<std::size_t>(SendDlgItemMessageW(dlg, IDC_TREE, TVM_GETCOUNT, 0, 0));
                Driver::Click(dlg, IDCANCEL);
                d.WaitGone(dlg);
            });
        EXPECT_TRUE(failures.empty());

        // The form engine alone: the session is loaded before the clock starts.
        EnsureFormClasses();
        auto session = LoadSession(request);
        LARGE_INTEGER formStart{}, formShown{};
        failures = RunDriven(
            [&] {
                QueryPerformanceCounter(&formStart);
                RunForm(*session, nullptr, nullptr);
            },
            [&](Driver& d) {
                HWND dlg = d.WaitForDialog(L"Configure  ", 60000, 0);
                QueryPerformanceCounter(&formShown);
                Driver::Click(dlg, IDCANCEL);
                d.WaitGone(dlg);
            });
        EXPECT_TRUE(failures.empty());
        std::cout << "[ measure  ] 10,000 elements, " << items << " tree items: fnRunConfig2W to visible "
                  << Ms(start, shown) << " ms; RunForm to visible " << Ms(formStart, formShown) << " ms\n";
    }
}

}  // namespace
}  // namespace qrl::test
