#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "keyboard/graphickeymap.h"
#include "keyboard/kdf.h"
#include "keyboard/keylook.h"

namespace qrl {
namespace {

GKbKey& addKey(GKbLayout& layout, int code, int x = 0, int y = 0, int w = 1, int h = 1) {
    auto* key = static_cast<GKbKey*>(layout.newKey(0));
    layout.Keys.push_back(key);
    std::tie(key->Code, key->X, key->Y, key->Width, key->Height) = std::tuple(code, x, y, w, h);
    return *key;
}

// Labels "s0".."s7" and "a0".."a7" in the two tables.
void Label(GKbKey& key) {
    for (int n = 0; n < kShiftStates; ++n) {
        key.Shifts[static_cast<std::size_t>(n)].Label = "s" + std::to_string(n);
        key.AltShifts[static_cast<std::size_t>(n)].Label = "a" + std::to_string(n);
    }
}

std::vector<int> ratio(const GKbLayout& l) { return {l.XNum, l.XDen, l.YNum, l.YDen}; }
std::vector<int> rect(const KbRect& r) { return {r.left, r.top, r.right, r.bottom}; }

TEST(GKbLayout, ScalesBothAxesByTheTighterSideWithEqualMargins) {
    GKbLayout layout("L");
    layout.KeyUnit = 40;
    addKey(layout, 1, 20, 10, 40, 40);
    addKey(layout, 2, 900, 200, 80, 40);
    // Extent 20 + 980 = 1000 wide, 10 + 240 = 250 high.
    layout.scaleTo(500, 500);  // width is tighter: 50 < 200
    EXPECT_TRUE(layout.Scaled);
    EXPECT_EQ(ratio(layout), (std::vector<int>{500, 1000, 500, 1000}));
    EXPECT_EQ(rect(layout.key(1).Rect), (std::vector<int>{450, 100, 490, 120}));
    EXPECT_EQ(layout.Style.BaseSize, 20);

    layout.scaleTo(1000, 100);  // height is tighter: 40 < 100
    EXPECT_EQ(ratio(layout), (std::vector<int>{100, 250, 100, 250}));
    EXPECT_EQ(rect(layout.key(0).Rect), (std::vector<int>{8, 4, 24, 20}));  // 20 * 100 / 250 ...
    EXPECT_EQ(layout.Style.BaseSize, 16);

    layout.scaleTo(200, 50);  // equal ratios: the height wins
    EXPECT_EQ(layout.XDen, 250);
}

TEST(GKbLayout, EmptyOrDegenerateLayoutsScaleWithoutDividingByZero) {
    GKbLayout empty("E");
    empty.scaleTo(300, 200);  // the extent comes to 0x7FFFFFFF: everything scales to nothing
    EXPECT_EQ(empty.XDen, 0x7FFFFFFF);

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
    const auto hit = [&](int x, int y) { return layout.hitTest(x, y) ? layout.hitTest(x, y)->Code : 0; };
    // In the overlap the later key lies on top; a key's right and bottom edges are not in it.
    EXPECT_EQ(std::vector<int>({hit(10, 10), hit(60, 60), hit(149, 149), hit(150, 100), hit(99, 10), hit(100, 10),
                                hit(-1, 0)}),
              std::vector<int>({1, 2, 2, 0, 1, 0, 0}));
}

TEST(GKbLayout, FindKeyTakesModifiersAndToggleFromTheCodeWord) {
    GKbLayout layout("L");
    GKbKey& plain = addKey(layout, 0x41);
    GKbKey& keypad = addKey(layout, 0x67);
    keypad.AltCode = 0x24;
    GKbKey& extended = addKey(layout, 0x4025);
    // Bit 11 is masked, not a state.
    const struct { int code; const GKbKey* key; int state; } cases[] = {
        {0x41 | 0x700, &plain, 7}, {0x41 | 0x800, &plain, 0}, {0x4025 | 0x200, &extended, 2},
        {0x24 | 0x500, &keypad, 16 | 5}, {0x99, nullptr, 0},
    };
    const auto found = [&](int code) {
        int state = -1;
        const GKbKey* key = layout.findKey(code, state);
        return std::pair(key, state);
    };
    for (const auto& c : cases) EXPECT_EQ(found(c.code), std::pair(c.key, c.state)) << std::hex << c.code;

    // A key that uses shift codes is found by the code of one of its entries.
    plain.UsesShiftCodes = 1;
    plain.Shifts[5].Code = 0x1234;
    plain.AltCode = 0x77;
    plain.AltShifts[3].Code = 0x2345;
    EXPECT_EQ(found(0x1234), std::pair(&std::as_const(plain), 5));
    EXPECT_EQ(found(0x2345), std::pair(&std::as_const(plain), 3));
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
    EXPECT_EQ(selected(), (std::vector<bool>{true, false, true}));  // ordinary keys keep their selection
    layout.setState(4);
    EXPECT_EQ(selected(), (std::vector<bool>{false, true, true}));
    shift.Mapped[1] = true;  // mapped in state 1: left alone, free to be selected for mapping
    layout.setState(1);
    EXPECT_EQ(selected(), (std::vector<bool>{false, false, true}));
}

TEST(KbKeyStates, BitElevenAndTheExtendedBitAreNoModifiers) {
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

TEST(KeyLook, FaceColoursAndLabelByState) {
    KeyStyle style;
    style.FaceColour = 1;
    style.TextColour = 2;
    style.InactiveTextColour = 3;
    GKbKey key(0x41);
    Label(key);
    key.Shifts[1].Inactive = true;
    key.Mapped[2] = true;
    key.AltCode = 0x1041;
    key.AltMapped[3] = true;
    const struct { std::int32_t state; bool selected; KeyFace face; std::uint32_t background, text; bool bevel;
                   const char* label; } cases[] = {
        {0, false, KeyFace::Plain, 1, 2, true, "s0"},
        {1, false, KeyFace::Plain, 1, 3, false, "s2"},           // inactive: no bevel; the label of entry 2 * n
        {2, false, KeyFace::Mapped, 0x800080, 0xFFFFFF, true, "s4"},
        {2, true, KeyFace::Selected, 0x808000, 0xFFFFFF, true, "s4"},
        {4, false, KeyFace::Plain, 1, 2, true, "a0"},            // past Shifts the count runs into AltShifts
        {16 | 3, false, KeyFace::Mapped, 0x800080, 0xFFFFFF, true, "a6"},  // the toggle table
        {16 | 7, false, KeyFace::Plain, 1, 2, true, ""},         // past AltShifts: no label
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.state);
        const TKeyLook look = KeyLookFor(key, c.state, c.selected, style);
        EXPECT_EQ(std::tuple(look.face, look.background, look.text, look.bevel, look.label),
                  std::tuple(c.face, c.background, c.text, c.bevel, std::string(c.label)));
    }
    key.AltCode = 0;  // without an AltCode the toggle bit keeps the first table
    const TKeyLook plain = KeyLookFor(key, 16 | 2, false, style);
    EXPECT_EQ(std::pair(plain.face, plain.label), std::pair(KeyFace::Mapped, std::string("s4")));
}

TEST(KeyLook, LabelsGlyphsAndFonts) {
    const struct { const char* label; bool glyph, known, single; } cases[] = {
        {"A", false, false, true}, {"Tab", false, false, false}, {"<up>", true, true, false},
        {"<foo>", true, false, false}, {"<>", false, false, false}, {"<", false, false, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        GKbKey key(0x41);
        key.Shifts[0].Label = c.label;
        const TKeyLook look = KeyLookFor(key, 0, false, KeyStyle{});
        EXPECT_EQ(look.glyph, c.glyph);
        EXPECT_EQ(GlyphFor(c.label).has_value(), c.known);
        EXPECT_EQ(look.singleChar, c.single);
    }
}

TEST(KeyLook, GlyphsOnTheirSquare) {
    // A wide label rectangle gives a centred square 2 pixels in.
    EXPECT_EQ(rect(GlyphSquare({0, 0, 44, 24})), (std::vector<int>{12, 2, 32, 22}));
    // "<up>" on a square of 20: the grid's points, y upward; "<down>" is it mirrored.
    const std::vector<KbPoint> up = GlyphPoints(*GlyphFor("<up>"), {0, 0, 20, 20});
    EXPECT_EQ(up.front(), (KbPoint{10, 4}));
    EXPECT_EQ(up[3], (KbPoint{10, 18}));
    EXPECT_EQ(GlyphPoints(*GlyphFor("<down>"), {0, 0, 20, 20}).front(), (KbPoint{10, 16}));
    // MulDiv rounds: 3 * 7 / 20 = 1.05 gives 1, 10 * 7 / 20 = 3.5 gives 4.
    EXPECT_EQ(GlyphPoints(*GlyphFor("<up>"), {0, 0, 7, 7}).front(), (KbPoint{4, 1}));
}

const std::string kKdf = std::string(QRL_SOURCE_DIR) + "/samples/keyboards/";

std::u16string path(const std::string& file) { return std::u16string(file.begin(), file.end()); }

TEST(GraphicKeymap, StatusLineAndButtonsForEachState) {
    using K = KeyMappingKind;
    struct Case { int32_t selection; bool current; uint32_t pcCode; K kind; const char16_t* text; bool map, remove; };
    // The other statuses, with their buttons, are in the dialog's Wine test.
    const Case cases[] = {
        {0, false, 0, K::None, u"Select a key to show its mapping", false, false},
        {1, false, 0, K::EmulationKey, u"Press 'Map' to map EM to nothing", true, false},
        {1, true, 5, K::EmulationKey, u"EM is mapped to PC 'PC'", false, true},
        {2, true, 5, K::None, u"PC 'PC' is not mapped", false, false},
    };
    for (const Case& c : cases) {
        const TKeymapStatus s = KeymapStatus(c.selection, c.current, c.pcCode, c.kind, u"EM", u"PC");
        EXPECT_EQ(s.text, c.text);
        EXPECT_EQ(std::make_pair(s.mapEnabled, s.removeEnabled), std::make_pair(c.map, c.remove)) << s.text.size();
    }
}

TEST(GraphicKeymap, WhatWouldBeMapped) {
    const std::vector<KeyName> em = {{u"Reset", 146, 0}};
    EXPECT_EQ(MappedTargetText(TMapTarget::GlobalString, u"g", 146, true, true, em), u"global string 'g'");
    EXPECT_EQ(MappedTargetText(TMapTarget::String, u"", 146, true, true, em), u"string ''");
    EXPECT_EQ(MappedTargetText(TMapTarget::EmulationKey, u"x", 146, true, true, em), u"Emulation 'Reset'");
    // Not on the picture only counts while there is a picture.
    EXPECT_EQ(MappedTargetText(TMapTarget::EmulationKey, u"", 146, false, true, em), u"Emulation 'Reset' (not shown)");
    EXPECT_EQ(MappedTargetText(TMapTarget::EmulationKey, u"", 146, false, false, em), u"Emulation 'Reset'");
    EXPECT_EQ(MappedTargetText(TMapTarget::EmulationKey, u"", 147, true, true, em), u"an unknown key");
    EXPECT_EQ(MappedTargetText(TMapTarget::EmulationKey, u"", 0, true, true, em), u"nothing");
}

TEST(GraphicKeymap, MappingIsCurrentBySideKindAndTarget) {
    TCurrentCheck c;
    EXPECT_FALSE(MappingIsCurrent(c));  // nothing selected
    c.selection = 1;
    EXPECT_TRUE(MappingIsCurrent(c));   // both codes 0
    c.pcCode = 5;
    EXPECT_FALSE(MappingIsCurrent(c));
    c.shownPcCode = 5;
    EXPECT_TRUE(MappingIsCurrent(c));

    c = TCurrentCheck{};
    c.selection = 2;
    c.emCode = c.shownEmCode = 9;
    EXPECT_TRUE(MappingIsCurrent(c));
    c.target = TMapTarget::String;  // a string for an unmapped key is never current
    EXPECT_FALSE(MappingIsCurrent(c));
    c.kind = KeyMappingKind::String;
    c.hasString = true;
    EXPECT_FALSE(MappingIsCurrent(c));
    c.stringMatches = true;
    EXPECT_TRUE(MappingIsCurrent(c));
    c.kind = KeyMappingKind::GlobalString;
    c.hasGlobal = c.globalMatches = true;
    EXPECT_FALSE(MappingIsCurrent(c));  // the radio is still on String
    c.target = TMapTarget::GlobalString;
    EXPECT_TRUE(MappingIsCurrent(c));
}

TEST(GraphicKeymap, CodesOfStatesBoxesAndKeys) {
    EXPECT_EQ(WithLayoutState(0x770 | kModAlt, kStateShift | kStateCtrl | kStateToggle), 0x70u | kModShift | kModCtrl);
    EXPECT_EQ(ShiftBoxesCode(true, false, true), kModShift | kModAlt);
    GKbKey key(0x21);
    EXPECT_EQ(PcKeyCode(key, kStateToggle), 0x21u);  // no AltCode: the toggle changes nothing
    key.AltCode = 0x69;
    EXPECT_EQ(PcKeyCode(key, kStateToggle), 0x69u);
    EXPECT_EQ(PcKeyCode(key, kStateShift), 0x21u);
    key.Shifts[1].Code = 0x99;
    EXPECT_EQ(EmKeyCode(key, kStateShift), 0x21u);
    key.UsesShiftCodes = 1;
    EXPECT_EQ(EmKeyCode(key, kStateShift), 0x99u);
}

// A box takes the chosen code's modifiers from the layout (the boxes without one); a code that
// stays the same is taken back as a repeated list choice is, and from the emulation side no
// mapping is shown.
TEST(GraphicKeymap, ModifierBoxesPutTheCodeThroughTheListStep) {
    constexpr uint32_t kF1 = 112;
    GKbLayout layout("L");
    layout.State = kStateCtrl | kStateToggle;
    // The boxes' modifiers, then the code and the selection after the step.
    const struct { int32_t selection; uint32_t pcCode; const GKbLayout* layout; uint32_t boxes, code; int32_t after;
                   bool show; } cases[] = {
        {2, kF1, nullptr, kModShift, kF1 | kModShift, 2, true},
        {2, kF1 | kModShift, nullptr, kModShift, 0, 0, true},
        {2, kF1 | kModShift, &layout, kModShift, kF1 | kModCtrl, 2, true},  // the layout's state wins
        {1, kF1, nullptr, kModAlt, kF1 | kModAlt, 1, false},
        {1, kF1 | kModCtrl, &layout, 0, 0, 1, false},
        {2, 0, nullptr, kModShift, 0, 2, false},  // no code: nothing to do
    };
    for (const auto& c : cases) {
        const TPcCodeStep step = ShiftBoxesStep(c.selection, c.pcCode, c.layout, c.boxes);
        EXPECT_EQ(std::tuple(step.pcCode, step.selection, step.showMapping), std::tuple(c.code, c.after, c.show))
            << c.selection << " " << std::hex << c.pcCode;
    }
}

TEST(GraphicKeymap, MarksComeFromAllThreeLists) {
    const TKeyData keys{.keyMap = {{13, 147}, {16397, 147}}, .keyStrings = {{369, u"a"}},
                        .globalKeyStrings = {{626, u"b"}}};
    const TMappedMarks marks = MappedMarks(keys);
    EXPECT_EQ(marks.emulation, (std::vector<uint32_t>{147, 147}));
    EXPECT_EQ(marks.physical, (std::vector<uint32_t>{13, 16397, 626, 369}));
}

TEST(GraphicKeymap, KeyboardsLoadOrFallBack) {
    GKbKeyboard pc;
    ASSERT_EQ(LoadKeyboard(path(kKdf + "at102.kdf"), "pc", pc), kKdfOk);  // two layouts
    int32_t index = 1;
    EXPECT_EQ(ChooseLayout(pc, index), &pc.layout(1));
    index = 2;  // out of range: the first
    EXPECT_EQ(ChooseLayout(pc, index), &pc.layout(0));
    EXPECT_EQ(index, 0);

    GKbKeyboard missing, wrongName;
    EXPECT_EQ(LoadKeyboard(path(kKdf + "none.kdf"), "pc", missing), kKdfNotOpened);
    EXPECT_EQ(ChooseLayout(missing, index), nullptr);
    EXPECT_EQ(LoadKeyboard(path(kKdf + "at102.kdf"), "IBM5250", wrongName), kKdfNoKeyboard);
}

}  // namespace
}  // namespace qrl
