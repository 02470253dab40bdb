// The palette control on a window of its own, as Edit Attribute holds it: its messages, and the
// selections carried in the notification of a press. Geometry and click rules are checked natively.
#include "colours/palettectl.h"
#include "colours/palettemodel.h"
#include "forms/driver.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

namespace qrl::test {
namespace {

class PaletteControl : public ::testing::Test {
protected:
    static void SetUpTestSuite() { RegisterPaletteClass(GetModuleHandleW(nullptr)); }
    void SetUp() override {
        // 161 wide: cells of 20, the first row from 0 to 160.
        palette_ = CreateWindowW(kPaletteClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 161, 40, parent_.Handle(),
                                 reinterpret_cast<HMENU>(77), GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(palette_, nullptr);
    }

    LRESULT Send(UINT message, WPARAM wParam = 0) const { return SendMessageW(palette_, message, wParam, 0); }
    void Press(UINT button, int cell) const {
        SendMessageW(palette_, button, 0, MAKELPARAM((cell % 8) * 20 + 5, (cell / 8) * 20 + 5));
    }
    // The selections each notification of the palette carried.
    std::vector<LPARAM> Notified() const {
        std::vector<LPARAM> carried;
        for (const ParentWindow::Message& m : parent_.messages)
            if (m.message == WM_COMMAND && LOWORD(m.wParam) == 77) carried.push_back(m.lParam);
        return carried;
    }

    ParentWindow parent_;
    HWND palette_ = nullptr;
};

TEST_F(PaletteControl, TwoSelectionsTravelInTheNotification) {
    Send(kPaletteSetFirst, 3);
    Send(kPaletteSetSecond, 9);
    Press(WM_LBUTTONDOWN, 10);
    Press(WM_RBUTTONDOWN, 4);
    EXPECT_EQ(Notified(), (std::vector<LPARAM>{MAKELPARAM(10, 9), MAKELPARAM(10, 4)}));
}

TEST_F(PaletteControl, SingleModeSetsBothAndIgnoresTheRightButtonAndADisabledControl) {
    Send(kPaletteSetSingle, 1);
    Send(kPaletteSetFirst, 6);
    EXPECT_EQ(Send(kPaletteGetSecond), 6);
    Press(WM_RBUTTONDOWN, 2);
    Press(WM_LBUTTONDOWN, 12);
    EnableWindow(palette_, FALSE);
    Press(WM_LBUTTONDOWN, 1);
    EXPECT_EQ(Notified(), std::vector<LPARAM>{MAKELPARAM(12, 12)});
    EXPECT_EQ(Send(kPaletteGetFirst), 12);
}

}  // namespace
}  // namespace qrl::test
