#include <gtest/gtest.h>

#include "keyboard/keymapcheck.h"
#include "text/textutil.h"

namespace qrl {
namespace {

// A map with one of every finding; F5 stands on the PC keyboard's picture only.
TKeyData MapWithEveryFinding() {
    return {.physicalKeys = {{u"F1", 112, 1792}, {u"F2", 113, 1792}, {u"F3", 114, 1792}, {u"Enter", 13, 0}},
            .emulationKeys = {{u"PF1", 112, 0}, {u"PF3", 114, 0}, {u"Enter", 147, 0}, {u"Field Exit", 150, 0}},
            .keyMap = {{113, 112}, {113, 147}, {114 | kModCtrl, 114}, {13, 147}, {116, 999}, {9 | kModAlt, 112},
                       {8193, 147}},
            .keyStrings = {{114 | kModCtrl, u"a string longer than twenty-four characters"}},
            .globalKeyStrings = {{114 | kModCtrl, u"signon"}, {13, u"one"}, {13, u"two"}}};
}

TEST(KeyMapCheck, ListsEveryKindOfFindingInOrder) {
    const std::vector<KeyMapFinding> findings = CheckKeyMap(MapWithEveryFinding(), {116});
    std::vector<std::u16string> texts;
    for (const KeyMapFinding& finding : findings) texts.push_back(finding.text);
    const std::vector<std::u16string> expected = {
        u"Enter: global string \"one\", emulation key Enter",
        u"Ctrl+F3: global string \"signon\", string \"a string longer than tw\u2026\", emulation key PF3",
        u"Enter: 2 entries in the global strings; only the first is shown and edited",
        u"F2: 2 entries in the key map; only the first is shown and edited",
        u"Alt+Tab: the code is on no PC keyboard and not in the PC key list",
        u"key 8193: the code is on no PC keyboard and not in the PC key list",
        u"key 116: emulation key 999 is not in the emulation key list",
        u"Alt+Tab: Windows keeps this key; the mapping never runs",
        u"PF3: no PC key sends it",
        u"Field Exit: no PC key sends it",
    };
    EXPECT_EQ(texts, expected);
    // Go to needs the code of each row: the PC code, or the emulation key for a key nobody sends.
    EXPECT_EQ(findings[1].pcCode, 114u | kModCtrl);
    EXPECT_EQ(findings.back().pcCode, 0u);
    EXPECT_EQ(findings.back().emCode, 150u);
}

TEST(KeyMapCheck, KeysWindowsKeepsWhateverTheOtherModifiers) {
    const std::pair<uint32_t, bool> cases[] = {
        {9 | kModAlt, true},           {9 | kModAlt | kModShift, true}, {9, false},
        {27 | kModCtrl, true},         {27 | kModAlt, true},            {27 | kModShift, false},
        {32 | kModAlt, true},          {32 | kModCtrl, false},          {46 | kModCtrl | kModAlt, true},
        {0x402E | kModCtrl | kModAlt, true}, {0x402E | kModCtrl, false}, {0x405B, true},
        {92 | kModShift, true},        {0x4109, false},  // an extended key that only ends in 0x09
    };
    for (const auto& [code, kept] : cases) EXPECT_EQ(IsKeptByWindows(code), kept) << code;
    EXPECT_EQ(CheckKeyName({}, 0x402E | kModCtrl | kModAlt), u"Alt+Ctrl+Del");
}

TEST(KeyMapCheck, RemovingDuplicatesKeepsEachCodesFirstEntryInOrder) {
    TKeyData keys = MapWithEveryFinding();
    ASSERT_EQ(CountDuplicates(keys), 2u);
    EXPECT_EQ(RemoveDuplicates(keys), 2u);
    ASSERT_EQ(keys.keyMap.size(), 6u);
    EXPECT_EQ(keys.keyMap[0].EmKey, 112u);
    EXPECT_EQ(keys.keyMap[1].PKey, 114u | kModCtrl);
    ASSERT_EQ(keys.globalKeyStrings.size(), 2u);
    EXPECT_EQ(keys.globalKeyStrings[1].Text, u"one");
    EXPECT_EQ(CountDuplicates(keys), 0u);
}

}  // namespace
}  // namespace qrl
