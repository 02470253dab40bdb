#include <gtest/gtest.h>

#include "keyboard/kdf.h"

using namespace qrl;

namespace {

GKbKey& addKey(GKbLayout& layout, int code, int x, int y, int w, int h) {
    auto* key = static_cast<GKbKey*>(layout.newKey(0));
    layout.Keys.push_back(key);
    key->Code = code;
    key->X = x;
    key->Y = y;
    key->Width = w;
    key->Height = h;
    return *key;
}

}  // namespace

TEST(GKbLayout, ScalesBothAxesByTheTighterSideWithEqualMargins) {
    GKbLayout layout("L");
    layout.KeyUnit = 40;
    addKey(layout, 1, 20, 10, 40, 40);
    addKey(layout, 2, 900, 200, 80, 40);
    // Extent 20 + 980 = 1000 wide, 10 + 240 = 250 high.
    layout.scaleTo(500, 500);  // width is tighter: 50 < 200
    EXPECT_TRUE(layout.Scaled);
    EXPECT_EQ(layout.XNum, 500);
    EXPECT_EQ(layout.XDen, 1000);
    EXPECT_EQ(layout.YNum, 500);
    EXPECT_EQ(layout.YDen, 1000);
    EXPECT_EQ(layout.key(1).Rect.left, 450);
    EXPECT_EQ(layout.key(1).Rect.right, 490);
    EXPECT_EQ(layout.key(1).Rect.top, 100);
    EXPECT_EQ(layout.key(1).Rect.bottom, 120);
    EXPECT_EQ(layout.Style.BaseSize, 20);

    layout.scaleTo(1000, 100);  // height is tighter: 40 < 100
    EXPECT_EQ(layout.XNum, 100);
    EXPECT_EQ(layout.XDen, 250);
    EXPECT_EQ(layout.key(0).Rect.left, 8);     // 20 * 100 / 250
    EXPECT_EQ(layout.key(0).Rect.bottom, 20);  // 50 * 100 / 250
    EXPECT_EQ(layout.Style.BaseSize, 16);

    layout.scaleTo(200, 50);  // equal ratios: the height wins
    EXPECT_EQ(layout.XDen, 250);
}

TEST(GKbLayout, EmptyOrDegenerateLayoutsScaleWithoutDividingByZero) {
    GKbLayout empty("E");
    empty.scaleTo(300, 200);  // the extent comes to 0x7FFFFFFF: everything scales to nothing
    EXPECT_TRUE(empty.Scaled);
    EXPECT_EQ(empty.XDen, 0x7FFFFFFF);
    EXPECT_EQ(empty.hitTest(0, 0), nullptr);

    GKbLayout flat("F");
    addKey(flat, 1, 0, 0, 0, 0);  // extent 0 by 0: the ratio stays as constructed
    flat.scaleTo(300, 200);
    EXPECT_EQ(flat.XNum, 1);
    EXPECT_EQ(flat.XDen, 1);

    GKbLayout negative("N");
    addKey(negative, 1, -32768, -32768, 32767, 32767);
    addKey(negative, 2, 32767, 32767, 32767, 32767);
    negative.scaleTo(0x7FFFFFFF, 0x7FFFFFFF);  // no overflow, whatever the numbers
    EXPECT_TRUE(negative.Scaled);
}

TEST(GKbLayout, HitTestPrefersTheLaterKeyAndExcludesRightAndBottomEdges) {
    GKbLayout layout("L");
    addKey(layout, 1, 0, 0, 100, 100);
    addKey(layout, 2, 50, 50, 100, 100);
    layout.scaleTo(150, 150);
    ASSERT_EQ(layout.XDen, 150);
    EXPECT_EQ(layout.hitTest(10, 10)->Code, 1);
    EXPECT_EQ(layout.hitTest(60, 60)->Code, 2);  // overlap: the later key lies on top
    EXPECT_EQ(layout.hitTest(149, 149)->Code, 2);
    EXPECT_EQ(layout.hitTest(150, 100), nullptr);
    EXPECT_EQ(layout.hitTest(99, 10)->Code, 1);
    EXPECT_EQ(layout.hitTest(100, 10), nullptr);
    EXPECT_EQ(layout.hitTest(-1, 0), nullptr);
}

TEST(GKbLayout, FindKeyTakesModifiersAndToggleFromTheCodeWord) {
    GKbLayout layout("L");
    addKey(layout, 0x41, 0, 0, 1, 1);
    GKbKey& keypad = addKey(layout, 0x67, 0, 0, 1, 1);
    keypad.AltCode = 0x24;
    GKbKey& extended = addKey(layout, 0x4025, 0, 0, 1, 1);
    int state = -1;

    EXPECT_EQ(layout.findKey(0x41, state), &layout.key(0));
    EXPECT_EQ(state, 0);
    EXPECT_EQ(layout.findKey(0x41 | 0x100, state), &layout.key(0));
    EXPECT_EQ(state, 1);
    EXPECT_EQ(layout.findKey(0x41 | 0x700, state), &layout.key(0));
    EXPECT_EQ(state, 7);
    EXPECT_EQ(layout.findKey(0x41 | 0x800, state), &layout.key(0));  // bit 11 is masked, not a state
    EXPECT_EQ(state, 0);
    EXPECT_EQ(layout.findKey(0x4025 | 0x200, state), &extended);
    EXPECT_EQ(state, 2);
    EXPECT_EQ(layout.findKey(0x24, state), &keypad);
    EXPECT_EQ(state, 16);
    EXPECT_EQ(layout.findKey(0x24 | 0x500, state), &keypad);
    EXPECT_EQ(state, 16 | 5);
    EXPECT_EQ(layout.findKey(0x99, state), nullptr);
    EXPECT_EQ(state, 0);

    // A key that uses shift codes is found by the code of one of its entries.
    GKbKey& coded = layout.key(0);
    coded.UsesShiftCodes = 1;
    coded.Shifts[5].Code = 0x1234;
    coded.AltCode = 0x77;
    coded.AltShifts[3].Code = 0x2345;
    EXPECT_EQ(layout.findKey(0x1234, state), &coded);
    EXPECT_EQ(state, 5);
    EXPECT_EQ(layout.findKey(0x2345, state), &coded);
    EXPECT_EQ(state, 3);
}

TEST(GKbLayout, SetStateLatchesModifierKeysThatAreNotMapped) {
    GKbLayout layout("L");
    GKbKey& shift = addKey(layout, 0x10, 0, 0, 1, 1);
    shift.ModifierMask = 1;
    GKbKey& altGr = addKey(layout, 0x4012, 0, 0, 1, 1);
    altGr.ModifierMask = 6;
    GKbKey& letter = addKey(layout, 0x41, 0, 0, 1, 1);
    letter.Selected = true;

    layout.setState(1);
    EXPECT_EQ(layout.State, 1);
    EXPECT_TRUE(shift.Selected);
    EXPECT_FALSE(altGr.Selected);
    EXPECT_TRUE(letter.Selected);  // ordinary keys keep their selection
    layout.setState(4);
    EXPECT_FALSE(shift.Selected);
    EXPECT_TRUE(altGr.Selected);

    shift.Mapped[1] = true;  // mapped in state 1: left alone, free to be selected for mapping
    layout.setState(1);
    EXPECT_FALSE(shift.Selected);
    EXPECT_FALSE(altGr.Selected);
}

TEST(KbKeyStates, EntriesLabelsAndMarksFollowTheStateBits) {
    GKbKey key(0x67);
    for (int n = 0; n < 8; ++n) {
        key.Shifts[n].Label = "s" + std::to_string(n);
        key.AltShifts[n].Label = "a" + std::to_string(n);
    }
    key.Shifts[1].Inactive = true;

    // Without an AltCode the toggle bit changes nothing.
    EXPECT_EQ(&shiftEntry(key, 16 | 1), &key.Shifts[1]);
    EXPECT_EQ(drawnLabel(key, 16), "s0");
    // The drawn label is entry 2n, running from Shifts on into AltShifts.
    EXPECT_EQ(drawnLabel(key, 0), "s0");
    EXPECT_EQ(drawnLabel(key, 1), "s2");
    EXPECT_EQ(drawnLabel(key, 3), "s6");
    EXPECT_EQ(drawnLabel(key, 4), "a0");
    EXPECT_EQ(drawnLabel(key, 7), "a6");
    EXPECT_TRUE(shiftEntry(key, 1).Inactive);  // the flag goes by n itself

    key.AltCode = 0x24;
    EXPECT_EQ(&shiftTable(key, 16), &key.AltShifts);
    EXPECT_EQ(&shiftEntry(key, 16 | 6), &key.AltShifts[6]);
    EXPECT_EQ(drawnLabel(key, 16 | 1), "a2");
    EXPECT_EQ(drawnLabel(key, 16 | 3), "a6");
    EXPECT_EQ(drawnLabel(key, 16 | 4), "");  // past the end of AltShifts: no label
    EXPECT_EQ(drawnLabel(key, 16 | 7), "");

    key.Mapped[2] = true;
    key.AltMapped[3] = true;
    EXPECT_TRUE(isMapped(key, 2));
    EXPECT_FALSE(isMapped(key, 16 | 2));
    EXPECT_TRUE(isMapped(key, 16 | 3));
    EXPECT_FALSE(isMapped(key, 3));

    EXPECT_EQ(shiftFromCode(0x41), 0);
    EXPECT_EQ(shiftFromCode(0x141), 1);
    EXPECT_EQ(shiftFromCode(0x741), 7);
    EXPECT_EQ(shiftFromCode(0x4A41), 2);  // bit 11 and the extended bit do not pass
}

TEST(KeyStyle, GdiObjectsAreReleasedOnceOnRebuildAndOnDestruction) {
    static int releases = 0;
    releases = 0;
    auto release = [](KeyStyle& style) {
        ++releases;
        EXPECT_NE(style.FaceBrush, nullptr);
    };
    int dummy = 0;
    {
        GKbLayout layout("L");
        layout.Style.FaceBrush = &dummy;
        layout.Style.ReleaseObjectsFn = release;
        layout.Style.releaseObjects();  // rebuilding
        EXPECT_EQ(releases, 1);
        EXPECT_EQ(layout.Style.FaceBrush, nullptr);
        layout.Style.releaseObjects();
        EXPECT_EQ(releases, 1);
        layout.Style.FaceBrush = &dummy;
        layout.Style.ReleaseObjectsFn = release;
    }
    EXPECT_EQ(releases, 2);
    EXPECT_EQ(KeyStyle::singleCharFontHeight(22), 17);
    EXPECT_EQ(KeyStyle::longFontHeight(22), 11);
}
