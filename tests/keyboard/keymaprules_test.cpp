#include <gtest/gtest.h>

#include "keyboard/keymaprules.h"

namespace qrl {
namespace {

constexpr uint32_t kF1 = 112;
constexpr uint32_t kShiftF1 = kF1 | kModShift;

std::vector<uint32_t> mapCodes(const TKeyData& keys) {
    std::vector<uint32_t> out;
    for (const KeyMapEntry& e : keys.keyMap) out.push_back(e.PKey * 1000 + e.EmKey);
    return out;
}

TEST(KeyMapRules, PrecedenceIsGlobalThenStringThenMap) {
    TKeyData keys;
    keys.keyMap = {{kF1, 7}, {kShiftF1, 8}};
    keys.keyStrings = {{kF1, u"s"}};
    EXPECT_EQ(MappingKindOf(keys, kF1), KeyMappingKind::String);  // the map entry stays behind it
    EXPECT_EQ(MappingKindOf(keys, kShiftF1), KeyMappingKind::EmulationKey);
    EXPECT_EQ(MappingKindOf(keys, 5), KeyMappingKind::None);
    keys.globalKeyStrings = {{kF1, u"g"}};
    EXPECT_EQ(MappingKindOf(keys, kF1), KeyMappingKind::GlobalString);
}

TEST(KeyMapRules, StringsUpdateTheFirstEntryAndDropOnlyWhatTheRuleSays) {
    TKeyData keys;
    keys.keyMap = {{kF1, 7}};
    keys.keyStrings = {{kF1, u"one"}, {kF1, u"two"}};
    keys.globalKeyStrings = {{kF1, u"g1"}, {kF1, u"g2"}};

    MapToGlobalString(keys, kF1, u"G");  // first entry updated, nothing else touched
    ASSERT_EQ(keys.globalKeyStrings.size(), 2u);
    EXPECT_EQ(keys.globalKeyStrings[0].Text, u"G");
    EXPECT_EQ(keys.globalKeyStrings[1].Text, u"g2");
    EXPECT_EQ(keys.keyStrings.size(), 2u);

    MapToString(keys, kF1, u"S");  // drops the first global only, keeps the map
    ASSERT_EQ(keys.globalKeyStrings.size(), 1u);
    EXPECT_EQ(keys.globalKeyStrings[0].Text, u"g2");
    EXPECT_EQ(keys.keyStrings[0].Text, u"S");
    EXPECT_EQ(keys.keyMap.size(), 1u);

    MapToString(keys, kShiftF1, u"new");  // appended for a code without an entry
    ASSERT_EQ(keys.keyStrings.size(), 3u);
    EXPECT_EQ(keys.keyStrings[2].PKey, kShiftF1);
}

TEST(KeyMapRules, GraphicMappingReplacesEveryEntryOfTheShownCode) {
    TKeyData keys;
    keys.keyMap = {{kF1, 7}, {9, 7}, {kF1, 8}};
    keys.keyStrings = {{kF1, u"s"}};
    keys.globalKeyStrings = {{kF1, u"g"}};
    MapToEmulationKeyReplacing(keys, kF1, kF1, 5);
    EXPECT_TRUE(keys.keyStrings.empty());
    EXPECT_TRUE(keys.globalKeyStrings.empty());
    EXPECT_EQ(mapCodes(keys), (std::vector<uint32_t>{9007, kF1 * 1000 + 5}));

    // From the emulation side: the PC key that stood against the key is replaced by another one.
    MapToEmulationKeyReplacing(keys, kShiftF1, kF1, 5);
    EXPECT_EQ(mapCodes(keys), (std::vector<uint32_t>{9007, kShiftF1 * 1000 + 5}));

    // An emulation code of 0, or no PC code, only removes.
    MapToEmulationKeyReplacing(keys, kShiftF1, kShiftF1, 0);
    MapToEmulationKeyReplacing(keys, 0, 9, 7);
    EXPECT_TRUE(keys.keyMap.empty());
}

TEST(KeyMapRules, ClassicMappingChangesTheFirstEntryInPlace) {
    TKeyData keys;
    keys.keyMap = {{9, 1}, {kF1, 7}, {kF1, 8}};
    keys.keyStrings = {{kF1, u"s"}};
    MapToEmulationKeyInPlace(keys, kF1, 0xFFFFFFFFu);  // nothing chosen stores -1
    EXPECT_TRUE(keys.keyStrings.empty());
    EXPECT_EQ(keys.keyMap[1].EmKey, 0xFFFFFFFFu);
    EXPECT_EQ(keys.keyMap[2].EmKey, 8u);
    MapToEmulationKeyInPlace(keys, 20, 3);
    EXPECT_EQ(keys.keyMap.back().PKey, 20u);

    // Not mapped removes the first entry of each list, in turn.
    keys.globalKeyStrings = {{kF1, u"g"}};
    keys.keyStrings = {{kF1, u"s"}};
    UnmapKey(keys, kF1);
    EXPECT_TRUE(keys.globalKeyStrings.empty());
    EXPECT_TRUE(keys.keyStrings.empty());
    EXPECT_EQ(mapCodes(keys), (std::vector<uint32_t>{9001, kF1 * 1000 + 8, 20003}));
    EXPECT_FALSE(RemoveKeyString(keys.keyStrings, kF1));
}

TEST(KeyMapRules, PhysicalCodesOfAnEmulationKeyStopAtTheLimit) {
    TKeyData keys;
    for (uint32_t i = 1; i <= 25; ++i) keys.keyMap.push_back({i, i % 2 ? 7u : 8u});
    const std::vector<uint32_t> codes = PhysicalCodesFor(keys.keyMap, 7, 20);
    ASSERT_EQ(codes.size(), 13u);
    EXPECT_EQ(codes.front(), 1u);
    EXPECT_EQ(codes.back(), 25u);
    keys.keyMap.assign(30, KeyMapEntry{4, 7});
    EXPECT_EQ(PhysicalCodesFor(keys.keyMap, 7, 20).size(), 20u);
}

TEST(KeyMapRules, CodesOfKeysAndPresses) {
    EXPECT_EQ(MappedCode(kF1 | kModAlt, kModShift | kModCtrl), kF1 | kModShift | kModCtrl);
    EXPECT_EQ(MappedCode(kF1, 0x80 | kModAlt), kF1 | kModAlt);  // only bits 8 to 10 are modifiers
    // The classic editor lets a key carry only the modifiers of its mask.
    EXPECT_EQ(ClassicMappedCode(KeyName{u"F1", 112, 0}, kModMask), 112u);
    EXPECT_EQ(ClassicMappedCode(KeyName{u"F1", 112, 0x300}, kModAlt | kModCtrl), 112u | kModCtrl);

    constexpr uint64_t kExtended = uint64_t{1} << 24;
    EXPECT_EQ(PhysicalCodeOfKeyPress(13, kExtended | 0x1C0001), 13u + kExtendedKey);
    EXPECT_EQ(PhysicalCodeOfKeyPress(13, 0x1C0001), 13u);
    EXPECT_EQ(PhysicalCodeOfKeyPress(kNumLockKey, kExtended), kNumLockKey);
    EXPECT_EQ(PhysicalCodeOfKeyPress(0, kExtended), 0u);
}

TEST(KeyMapRules, NamesOfMappedKeys) {
    const std::vector<KeyName> pc{{u"Enter", 0x400D, 0x700}, {u"F1", 112, 0x700}};
    const std::vector<KeyName> em{{u"PF1", 7, 0}, {u"Minus", -1, 0}};
    const uint32_t all = kF1 | kModMask;
    EXPECT_EQ(GraphicKeyName(pc, all), u"Sh+Alt+Ctrl+F1");
    EXPECT_EQ(GraphicKeyName(pc, 0x400D | kModCtrl), u"Ctrl+Enter");
    EXPECT_EQ(GraphicKeyName(pc, 99 | kModShift), u"");
    EXPECT_EQ(ClassicKeyName(pc, all), u"F1 + Ctrl + Shift + Alt");
    EXPECT_EQ(ClassicKeyName(pc, kF1), u"F1");
    EXPECT_EQ(ClassicKeyName(pc, 99 | kModShift), u"unknown key (355)");
    EXPECT_EQ(ClassicEmulationKeyName(em, 7), u"PF1");
    EXPECT_EQ(ClassicEmulationKeyName(em, 0xFFFFFFFFu), u"Minus");
    EXPECT_EQ(ClassicEmulationKeyName(em, 7 | kModShift), u"Unknown key (263)");  // exact code only
}

TEST(KeyMapRules, ReplacementQuestionNamesWhatWillGo) {
    TKeyData keys;
    keys.physicalKeys = {{u"F1", 112, 0x700}};
    keys.emulationKeys = {{u"PF1", 7, 0}};
    EXPECT_EQ(ReplacementQuestion(keys, kF1), u"");
    keys.keyStrings = {{kF1, u"abc"}};
    EXPECT_EQ(ReplacementQuestion(keys, kF1),
              u"Physical key \"F1\" is already mapped to\r\nstring \"abc\"\r\n\r\n"
              u"This mapping will be removed. Proceed?");
    keys.globalKeyStrings = {{kF1, u"g"}};
    keys.keyMap = {{kF1, 9}};
    EXPECT_EQ(ReplacementQuestion(keys, kF1),
              u"Physical key \"F1\" is already mapped to\r\nglobal string \"g\"\r\nstring \"abc\"\r\n"
              u"emulation key \"Unknown key (9)\"\r\n\r\nThese mappings will be removed. Proceed?");
}

}  // namespace
}  // namespace qrl
