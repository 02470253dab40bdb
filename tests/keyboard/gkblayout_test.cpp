#include <gtest/gtest.h>

#include "keyboard/kdf.h"

using namespace qrl;

namespace {

GKbKey& addKey(GKbLayout& layout, int code, int x = 0, int y = 0, int w = 1, int h = 1) {
    auto* key = static_cast<GKbKey*>(layout.newKey(0));
    layout.Keys.push_back(key);
    key->Code = code;
    key->X = x;
    key->Y = y;
    key->Width = w;
    key->Height = h;
    return *key;
}

std::vector<int> ratio(const GKbLayout& l) { return {l.XNum, l.XDen, l.YNum, l.YDen}; }
std::vector<int> rect(const GKbKey& k) { return {k.Rect.left, k.Rect.top, k.Rect.right, k.Rect.bottom}; }

// Per state 0 to 7 (with the toggle bit given): the drawn labels joined by '|', the mapped flags as 0 and 1.
std::string drawnLabels(const GKbKey& key, int toggle) {
    std::string out;
    for (int s = 0; s < 8; ++s) out += (s ? "|" : "") + drawnLabel(key, toggle | s);
    return out;
}
std::string mappedFlags(const GKbKey& key, int toggle) {
    std::string out;
    for (int s = 0; s < 8; ++s) out += isMapped(key, toggle | s) ? '1' : '0';
    return out;
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
    EXPECT_EQ(ratio(layout), (std::vector<int>{500, 1000, 500, 1000}));
    EXPECT_EQ(rect(layout.key(1)), (std::vector<int>{450, 100, 490, 120}));
    EXPECT_EQ(layout.Style.BaseSize, 20);

    layout.scaleTo(1000, 100);  // height is tighter: 40 < 100
    EXPECT_EQ(ratio(layout), (std::vector<int>{100, 250, 100, 250}));
    EXPECT_EQ(rect(layout.key(0)), (std::vector<int>{8, 4, 24, 20}));  // 20 * 100 / 250 ...
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
    EXPECT_EQ(ratio(flat), (std::vector<int>{1, 1, 1, 1}));

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
    GKbKey& plain = addKey(layout, 0x41);
    GKbKey& keypad = addKey(layout, 0x67);
    keypad.AltCode = 0x24;
    GKbKey& extended = addKey(layout, 0x4025);
    struct Case {
        int code;
        const GKbKey* key;
        int state;
    };
    const Case cases[] = {
        {0x41, &plain, 0},
        {0x41 | 0x100, &plain, 1},
        {0x41 | 0x700, &plain, 7},
        {0x41 | 0x800, &plain, 0},  // bit 11 is masked, not a state
        {0x4025 | 0x200, &extended, 2},
        {0x24, &keypad, 16},
        {0x24 | 0x500, &keypad, 16 | 5},
        {0x99, nullptr, 0},
    };
    for (const Case& c : cases) {
        int state = -1;
        EXPECT_EQ(layout.findKey(c.code, state), c.key) << std::hex << c.code;
        EXPECT_EQ(state, c.state) << std::hex << c.code;
    }

    // A key that uses shift codes is found by the code of one of its entries.
    plain.UsesShiftCodes = 1;
    plain.Shifts[5].Code = 0x1234;
    plain.AltCode = 0x77;
    plain.AltShifts[3].Code = 0x2345;
    int state = -1;
    EXPECT_EQ(layout.findKey(0x1234, state), &plain);
    EXPECT_EQ(state, 5);
    EXPECT_EQ(layout.findKey(0x2345, state), &plain);
    EXPECT_EQ(state, 3);
}

TEST(GKbLayout, SetStateLatchesModifierKeysThatAreNotMapped) {
    GKbLayout layout("L");
    GKbKey& shift = addKey(layout, 0x10);
    shift.ModifierMask = 1;
    GKbKey& altGr = addKey(layout, 0x4012);
    altGr.ModifierMask = 6;
    GKbKey& letter = addKey(layout, 0x41);
    letter.Selected = true;
    const auto selected = [&] { return std::vector<bool>{shift.Selected, altGr.Selected, letter.Selected}; };

    layout.setState(1);
    EXPECT_EQ(layout.State, 1);
    EXPECT_EQ(selected(), (std::vector<bool>{true, false, true}));  // ordinary keys keep their selection
    layout.setState(4);
    EXPECT_EQ(selected(), (std::vector<bool>{false, true, true}));
    shift.Mapped[1] = true;  // mapped in state 1: left alone, free to be selected for mapping
    layout.setState(1);
    EXPECT_EQ(selected(), (std::vector<bool>{false, false, true}));
}

TEST(KbKeyStates, EntriesLabelsAndMarksFollowTheStateBits) {
    GKbKey key(0x67);
    for (int n = 0; n < 8; ++n) {
        key.Shifts[n].Label = "s" + std::to_string(n);
        key.AltShifts[n].Label = "a" + std::to_string(n);
    }
    key.Shifts[1].Inactive = true;

    // The drawn label is entry 2n, running from Shifts on into AltShifts; without an AltCode the
    // toggle bit changes nothing.
    EXPECT_EQ(&shiftEntry(key, 16 | 1), &key.Shifts[1]);
    EXPECT_EQ(drawnLabels(key, 0), "s0|s2|s4|s6|a0|a2|a4|a6");
    EXPECT_EQ(drawnLabels(key, 16), "s0|s2|s4|s6|a0|a2|a4|a6");
    EXPECT_TRUE(shiftEntry(key, 1).Inactive);  // the flag goes by n itself

    key.AltCode = 0x24;
    EXPECT_EQ(&shiftTable(key, 16), &key.AltShifts);
    EXPECT_EQ(&shiftEntry(key, 16 | 6), &key.AltShifts[6]);
    EXPECT_EQ(drawnLabels(key, 16), "a0|a2|a4|a6||||");  // past the end of AltShifts: no label

    key.Mapped[2] = true;
    key.AltMapped[3] = true;
    EXPECT_EQ(mappedFlags(key, 0), "00100000");
    EXPECT_EQ(mappedFlags(key, 16), "00010000");

    // Bit 11 and the extended bit do not pass.
    std::vector<int> states;
    for (int code : {0x41, 0x141, 0x741, 0x4A41}) states.push_back(shiftFromCode(code));
    EXPECT_EQ(states, (std::vector<int>{0, 1, 7, 2}));
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
