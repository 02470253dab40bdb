// The keyboard picture's edges on a window as a key map dialog holds it: inactive keys, a resize,
// empty layouts, marks and modifier states. Ordinary presses, latching Shift and the lists are
// driven through Configure Keyboard; what a key looks like, the scale and the key search are
// checked natively.
#include "forms/driver.h"
#include "keyboard/graphickeymap.h"
#include "keyboard/keyboardctl.h"
#include "keypress.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>

namespace qrl::test {
namespace {

std::unique_ptr<GKbKeyboard> SampleKeyboard() {
    auto keyboard = std::make_unique<GKbKeyboard>();
    return LoadKeyboard(SampleKdfPath() + u"/at102.kdf", "pc", *keyboard) == kKdfOk ? std::move(keyboard) : nullptr;
}

GKbKey* KeyOf(GKbLayout& layout, std::int32_t code) {
    for (std::size_t i = 0; i < layout.Keys.size(); ++i)
        if (layout.key(i).Code == code) return &layout.key(i);
    return nullptr;
}

class KeyboardPicture : public ::testing::Test {
protected:
    static void SetUpTestSuite() { RegisterKeyboardClass(GetModuleHandleW(nullptr)); }
    void SetUp() override {
        keyboard_ = SampleKeyboard();
        ASSERT_NE(keyboard_, nullptr);
        control_ = CreateWindowExW(0, kKeyboardClass, L"", WS_CHILD | WS_VISIBLE, 0, 0, 600, 200, parent_.Handle(),
                                   reinterpret_cast<HMENU>(1500), GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(control_, nullptr);
        picture_ = KeyboardOf(control_);
        ASSERT_NE(picture_, nullptr);
    }
    GKbLayout& Layout() { return keyboard_->layout(0); }
    void Paint() const {
        InvalidateRect(control_, nullptr, TRUE);
        UpdateWindow(control_);
    }
    void Click(const GKbKey& key, UINT message) const {
        const int x = (key.Rect.left + key.Rect.right) / 2;
        const int y = (key.Rect.top + key.Rect.bottom) / 2;
        SendMessageW(control_, message, 0, MAKELPARAM(x, y));
    }

    std::unique_ptr<GKbKeyboard> keyboard_;
    ParentWindow parent_;  // goes first, and the control with it; the layout stays the test's
    HWND control_ = nullptr;
    KeyboardCtl* picture_ = nullptr;
};

TEST_F(KeyboardPicture, InactiveKeysResizesEmptyLayoutsAndMarks) {
    EXPECT_EQ(KeyboardOf(parent_.Handle()), nullptr);  // not a picture
    picture_->setLayout(&Layout());
    Paint();
    GKbKey* a = KeyOf(Layout(), 0x41);
    ASSERT_NE(a, nullptr);
    Click(*a, WM_RBUTTONDOWN);
    a->Shifts[0].Inactive = true;  // an inactive key takes no press, with either button
    Click(*a, WM_LBUTTONDOWN);
    Click(*a, WM_RBUTTONDOWN);
    ASSERT_EQ(parent_.messages.size(), 1u);
    EXPECT_EQ(parent_.messages[0].message, kKeyPressedRight);
    EXPECT_EQ(parent_.messages[0].lParam, reinterpret_cast<LPARAM>(a));

    // A resize keeps the scale of the first paint.
    const KbRect before = a->Rect;
    SetWindowPos(control_, nullptr, 0, 0, 300, 100, SWP_NOMOVE | SWP_NOZORDER);
    Paint();
    EXPECT_EQ(a->Rect.right, before.right);

    picture_->setShift(0x600);  // Ctrl and Alt bits of a code word
    EXPECT_EQ(picture_->getState(), 6);
    picture_->markMapped(0x41, true);
    picture_->markMapped(0x141, true);  // a code with modifiers finds no key
    EXPECT_EQ(std::vector<bool>({a->Mapped[0], a->Mapped[1]}), std::vector<bool>({true, false}));
    picture_->clearMarks();
    EXPECT_FALSE(a->Mapped[0]);
    // All at once: a repeated code marks its key, a code with modifiers none, old marks go.
    a->Mapped[1] = true;
    picture_->setMarks({0x141, 0x41, 0x41});
    EXPECT_EQ(std::vector<bool>({a->Mapped[0], a->Mapped[1]}), std::vector<bool>({true, false}));
    picture_->setMarks({});
    EXPECT_FALSE(a->Mapped[0]);
    EXPECT_EQ(picture_->selectKey(0x7777, false), nullptr);

    // No layout, and a layout of no keys: only the background is painted.
    picture_->setLayout(nullptr);
    Paint();
    EXPECT_EQ(picture_->getState(), 0);
    GKbLayout empty("empty");
    picture_->setLayout(&empty);
    Paint();
    EXPECT_TRUE(empty.Scaled);
    parent_.messages.clear();
    Click(*a, WM_LBUTTONDOWN);
    EXPECT_TRUE(parent_.messages.empty());
}

TEST(KeyNameList, SelectsByIdAndReadsBack) {
    HWND list = CreateWindowExW(0, L"LISTBOX", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    const std::vector<KeyName> keys{{u"Enter", 13, 0}, {u"PF1", 0x70, 0}, {u"Also PF1", 0x70, 0}};
    KeyList names(list);
    EXPECT_EQ(names.selectedId(), -1);
    names.setKeys(&keys);
    EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 3);
    names.selectCode(0x70);
    EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), 1);  // the first of that id
    EXPECT_EQ(names.selectedId(), 0x70);
    names.selectCode(99);
    EXPECT_EQ(names.selectedId(), -1);
    names.selectCode(13);
    names.clear();
    EXPECT_EQ(names.selectedId(), -1);
    DestroyWindow(list);
}

}  // namespace
}  // namespace qrl::test
