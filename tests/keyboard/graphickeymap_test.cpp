#include <gtest/gtest.h>

#include "keyboard/graphickeymap.h"

using namespace qrl;

namespace {

const std::string kKdf = std::string(QRL_SOURCE_DIR) + "/samples/keyboards/";

std::u16string path(const std::string& file) { return std::u16string(file.begin(), file.end()); }

}  // namespace

TEST(GraphicKeymap, StatusLineAndButtonsForEachState) {
    using K = KeyMappingKind;
    struct Case {
        int32_t selection;
        bool current;
        uint32_t pcCode;
        K kind;
        const char16_t* text;
        bool map, remove;
    };
    const Case cases[] = {
        {0, false, 0, K::None, u"Select a key to show its mapping", false, false},
        {1, false, 0, K::EmulationKey, u"Press 'Map' to map EM to nothing", true, false},
        {1, false, 5, K::EmulationKey, u"Press 'Map' to map EM to PC 'PC'", true, false},
        {1, true, 0, K::EmulationKey, u"EM is not mapped", false, false},
        {1, true, 5, K::EmulationKey, u"EM is mapped to PC 'PC'", false, true},
        {2, false, 5, K::String, u"Press 'Map' to map PC 'PC' to EM", true, false},
        {2, true, 5, K::None, u"PC 'PC' is not mapped", false, false},
        {2, true, 5, K::GlobalString, u"PC 'PC' is mapped to EM", false, true},
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
    EXPECT_EQ(WithLayoutState(0x70, kStateAlt), 0x70u | kModAlt);
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

TEST(GraphicKeymap, MarksComeFromAllThreeLists) {
    TKeyData keys;
    keys.keyMap = {{13, 147}, {16397, 147}};
    keys.keyStrings = {{369, u"a"}};
    keys.globalKeyStrings = {{626, u"b"}};
    const TMappedMarks marks = MappedMarks(keys);
    EXPECT_EQ(marks.emulation, (std::vector<uint32_t>{147, 147}));
    EXPECT_EQ(marks.physical, (std::vector<uint32_t>{13, 16397, 626, 369}));
}

TEST(GraphicKeymap, KeyboardsLoadOrFallBack) {
    GKbKeyboard pc;
    ASSERT_EQ(LoadKeyboard(path(kKdf + "at102.kdf"), "pc", pc), kKdfOk);
    ASSERT_EQ(pc.Layouts.size(), 2u);
    EXPECT_EQ(pc.layout(1).key(0).Owner, &pc.layout(1));
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
