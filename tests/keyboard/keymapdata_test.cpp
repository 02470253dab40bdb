#include <gtest/gtest.h>

#include "keyboard/graphickeymap.h"
#include "keyboard/keymapdata.h"
#include "keyboard/keymaprules.h"
#include "keyboard/keymapsettings.h"
#include "request/reply.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/xml_testing.h"

namespace qrl {
namespace {

using xmltest::DataReply;

// A list item of the reply, each child on an indented line of its own.
std::u16string item(std::u16string_view name, std::initializer_list<std::u16string_view> children) {
    std::u16string out = u"    <Item Element=\"" + std::u16string(name) + (children.size() ? u"\">\n" : u"\"/>\n");
    for (std::u16string_view child : children) out += u"      " + std::u16string(child) + u"\n";
    return children.size() ? out + u"    </Item>\n" : out;
}

constexpr std::u16string_view kKeyDtd =
    u"<DTD>"
    u"<Element Name=\"PhysicalKeys\" Type=\"keylist\"/>"
    u"<Element Name=\"EmulationKeys\" Type=\"KEYLIST\"/>"
    u"<Element Name=\"GlobalKeyStrings\" Type=\"keystringlist\"/>"
    u"<Element Name=\"Map\" Type=\"keymaplist\"/>"
    u"<Element Name=\"keystrings\" Type=\"keystringlist\"/>"
    u"<Element Name=\"Spots\" Type=\"hotspots\"/>"
    u"<Element Name=\"numpad\" Type=\"int\" Default=\"0\"/>"
    u"</DTD>";

std::u16string request(std::u16string_view data) {
    return u"<Config ModuleType=\"KeyMap\">" + std::u16string(kKeyDtd) + u"<Data>" + std::u16string(data) +
           u"</Data></Config>";
}

// The five lists on one line: physical keys, emulation keys, map, strings, global strings.
std::u16string dump(const TKeyData& k) {
    const auto num = [](auto n) { return latin1ToUtf16(std::to_string(n)); };
    std::u16string out;
    for (const auto& [tag, keys] : {std::pair{u"P", &k.physicalKeys}, std::pair{u"; E", &k.emulationKeys}}) {
        out += tag;
        for (const KeyName& n : *keys) out += u" " + n.Name + u"/" + num(n.Id) + u"/" + num(n.Shift);
    }
    out += u"; M";
    for (const KeyMapEntry& e : k.keyMap) out += u" " + num(e.PKey) + u">" + num(e.EmKey);
    for (const auto& [tag, texts] : {std::pair{u"; S", &k.keyStrings}, std::pair{u"; G", &k.globalKeyStrings}}) {
        out += tag;
        for (const KeyString& e : *texts) out += u" " + num(e.PKey) + u":" + e.Text;
    }
    return out;
}

TEST(KeyMapData, FullRequestLoadsAndWritesItsWholeReply) {
    TConfigSession s;
    s.LoadRequestText(request(
        u"<Item Element=\"physicalkeys\">"
        u"<Key Name=\"F1\" Id=\"112\" Shift=\"1792\"/><KEY Name=\"Enter\" Id=\"16397\" Shift=\"256\"/>"
        u"<Other Name=\"skipped\"/><Key Name=\"NoId\"/>"
        u"</Item>"
        u"<Item Element=\"EmulationKeys\"><Key Name=\"PF1\" Id=\"7\"/><Key Name=\"Send\" Id=\"9\"/></Item>"
        u"<Item Element=\"Map\"><Map pkey=\"112\" emkey=\"7\"/><map pkey=\"112\" emkey=\"9\"/>"
        u"<Map pkey=\"-1\" emkey=\"x\"/><Key pkey=\"5\"/></Item>"
        u"<Item Element=\"KeyStrings\"><Map pkey=\"368\" string=\"{Enter}abc\"/><Map pkey=\"16397\"/></Item>"
        u"<Item Element=\"GlobalKeyStrings\"><Map pkey=\"624\" string=\"a&amp;b &lt;c&gt; &quot;d&quot;\"/></Item>"
        u"<Item Element=\"Spots\"><Item Element=\"FileName\" Value=\"sets.hsp\"/>"
        u"<Item Element=\"directory\" Value=\"C:\\hs\"/><Item Element=\"emulation\" Value=\"IBM5250.2\"/>"
        u"<Item Element=\"other\" Value=\"x\"/><Key/></Item>"
        u"<Item Element=\"numpad\" Value=\"1\"/>"));

    // Other tags and a missing Id are skipped or read as 0; map entries are kept twice.
    EXPECT_EQ(dump(KeyDataOf(std::as_const(s))),
              u"P F1/112/1792 Enter/16397/256 NoId/0/0; E PF1/7/0 Send/9/0; M 112>7 112>9 4294967295>0; "
              u"S 368:{Enter}abc 16397:; G 624:a&b <c> \"d\"");
    EXPECT_TRUE(s.keyDataPresent && s.hotspotDataPresent);
    EXPECT_EQ(s.hotspotFile + u"|" + s.hotspotDirectory + u"|" + s.hotspotEmulation, u"sets.hsp|C:\\hs|IBM5250.2");
    ASSERT_EQ(s.dataValues.size(), 1u);  // only the plain value
    EXPECT_EQ(s.dataValues[0].name, u"numpad");

    // Settings travel back through the element values (the sent value alone is not answered); the
    // lists in the order of the definitions, the map always as "KeyMap", key lists never.
    KeymapSettings settings(s);
    settings.writeBack();
    EXPECT_EQ(WriteDataReply(s, false),
              DataReply(item(u"GlobalKeyStrings", {u"<Map pkey=\"624\" string=\"a&amp;b &lt;c&gt; &quot;d&quot;\"/>"}) +
                        item(u"KeyMap", {u"<Map pkey=\"112\" emkey=\"7\"/>", u"<Map pkey=\"112\" emkey=\"9\"/>",
                                         u"<Map pkey=\"-1\" emkey=\"0\"/>"}) +
                        item(u"KeyStrings", {u"<Map pkey=\"368\" string=\"{Enter}abc\"/>",
                                             u"<Map pkey=\"16397\" string=\"\"/>"}) +
                        item(u"Hotspots", {u"<Item Element=\"filename\" Value=\"sets.hsp\"/>"}) +
                        u"    <Item Element=\"numpad\" Value=\"1\"/>\n"));
}

TEST(KeyMapData, OneKeyItemBringsTheOtherMapsAlongEmptyAndNoneBringsNone) {
    TConfigSession s;
    s.LoadRequestText(request(u"<Item Element=\"KeyStrings\"><Map pkey=\"65\" string=\"A\"/></Item>"));
    EXPECT_TRUE(s.keyDataPresent);
    EXPECT_EQ(WriteDataReply(s, true),
              DataReply(item(u"GlobalKeyStrings", {}) + item(u"KeyMap", {}) +
                        item(u"KeyStrings", {u"<Map pkey=\"65\" string=\"A\"/>"}) +
                        u"    <Item Element=\"numpad\" Value=\"0\"/>\n"));

    // Without key items no map is written.
    TConfigSession none;
    none.LoadRequestText(request(u"<Item Element=\"PhysicalKeys\"><Key Name=\"A\" Id=\"65\"/></Item>"
                                 u"<Item Element=\"numpad\" Value=\"0\"/>"));
    EXPECT_FALSE(none.keyDataPresent);  // a key list sets nothing
    KeyDataOf(none).keyMap.push_back(KeyMapEntry{65, 1});
    EXPECT_EQ(WriteDataReply(none, true), DataReply(u""));
}

TEST(KeyMapData, ItemsOfOtherNamesAndEarlyItems) {
    TConfigSession s;
    s.LoadRequestText(
        u"<Config>"
        u"<Data><Item Element=\"KeyStrings\" Value=\"v\"><Map pkey=\"1\" string=\"lost\"/></Item></Data>"
        u"<DTD><Element Name=\"KeyStrings\" Type=\"keystringlist\"/><Element Name=\"Odd\" Type=\"keystringlist\"/>"
        u"<Element Name=\"OddKeys\" Type=\"keylist\"/></DTD>"
        u"<Data><Item Element=\"Odd\"><Map pkey=\"2\" string=\"x\"/></Item>"
        u"<Item Element=\"OddKeys\"><Key Name=\"A\" Id=\"65\"/></Item></Data></Config>");
    // Before its definition the item was a plain value and its children are gone.
    ASSERT_EQ(s.dataValues.size(), 1u);
    EXPECT_EQ(s.dataValues[0].value, u"v");
    // A keystringlist of another name sets the flag and reads nothing; a keylist of another name
    // reads nothing.
    EXPECT_TRUE(s.keyDataPresent);
    EXPECT_EQ(dump(KeyDataOf(std::as_const(s))), u"P; E; M; S; G");
    EXPECT_EQ(WriteDataReply(s, false), DataReply(item(u"KeyStrings", {})));
}

TEST(KeymapSettings, ReadsSentValuesAndWritesBackOnlyDefinedOnes) {
    TConfigSession s;
    s.LoadRequestText(
        u"<Config><DTD><Element Name=\"NumpadShift\" Type=\"bool\"/><Element Name=\"capslock\" Type=\"int\"/>"
        u"<Element Name=\"UseOldKeymap\" Type=\"bool\" Default=\"1\"/><Element Name=\"Keyboard\"/></DTD>"
        u"<Data><Item Element=\"numpadshift\" Value=\"Yes\"/><Item Element=\"CAPSLOCK\" Value=\"2\"/>"
        u"<Item Element=\"UseOldKeymap\" Value=\"true\"/><Item Element=\"KdfPath\" Value=\"C:\\kdf\"/>"
        u"<Item Element=\"EmName\" Value=\"IBM5250\"/><Item Element=\"PCKbLang\" Value=\"3x\"/>"
        u"<Item Element=\"EmKbLang\" Value=\"1\"/><Item Element=\"EmKbLang\" Value=\"4\"/></Data></Config>");
    KeymapSettings settings(s);
    // A Boolean value: "yes" counts, but UseOldKeymap is read as a number ("true" is 0); numpad is not
    // sent; of two EmKbLang the first, as every reader of Data; no keys to select.
    EXPECT_EQ(std::vector<int>({settings.numpadshift, settings.UseOldKeymap, settings.capslock, settings.numpad,
                                settings.PCKbLang, settings.EmKbLang, settings.PhysKey, settings.EmIndex}),
              std::vector<int>({1, 0, kCapsOff, kNumpadNumeric, 3, 1, -1, -1}));
    EXPECT_EQ(settings.KdfPath + u"|" + settings.EmName + u"|" + PcKeyboardStem(settings), u"C:\\kdf|IBM5250|at102");

    settings.Keyboard = u"mine";
    settings.numpadshift = false;
    settings.writeBack();
    EXPECT_EQ(PcKeyboardStem(settings), u"mine");
    EXPECT_EQ(s.FindElement(u"numpadshift")->value + u"|" + s.FindElement(u"capslock")->value + u"|" +
                  s.FindElement(u"UseOldKeymap")->value,
              u"0|2|0");
    EXPECT_EQ(s.FindElement(u"Keyboard")->value, u"");  // never written back
    EXPECT_EQ(s.FindElement(u"numpad"), nullptr);       // no definition: nothing made
}

// Which editor ran shows in what it changed: the graphic one adds to the map at once, the settings
// of either are stored only on OK.
TEST(KeymapSettings, TheJobRunsTheChosenEditorAndStoresOnlyOnOk) {
    static int answer = 0;
    const TKeymapEditor graphic = [](void*, KeymapSettings& settings) {
        settings.numpad = kNumpadCursor;
        KeyDataOf(settings.session()).keyMap.push_back(KeyMapEntry{65, 3});
        return answer;
    };
    const TKeymapEditor classic = [](void*, KeymapSettings& settings) {
        settings.capslock = kCapsOn;
        return answer;
    };
    const std::u16string text =
        u"<Config><DTD><Element Name=\"numpad\" Type=\"int\" Default=\"0\"/><Element Name=\"capslock\" Default=\"0\"/>"
        u"<Element Name=\"UseOldKeymap\" Type=\"bool\"/><Element Name=\"KeyMap\" Type=\"keymaplist\"/></DTD>"
        u"<Data><Item Element=\"KeyMap\"/><Item Element=\"UseOldKeymap\" Value=\"";

    TConfigSession s;
    s.LoadRequestText(text + u"0\"/></Data></Config>");
    answer = 2;
    EXPECT_EQ(RunKeymapEditor(s, nullptr, graphic, classic), 2);
    EXPECT_EQ(s.FindElement(u"numpad")->value, u"0");  // cancelled: nothing stored
    answer = 1;
    EXPECT_EQ(RunKeymapEditor(s, nullptr, graphic, classic), 1);
    EXPECT_EQ(WriteDataReply(s, false),
              DataReply(u"    <Item Element=\"numpad\" Value=\"1\"/>\n    <Item Element=\"capslock\" Value=\"0\"/>\n"
                        u"    <Item Element=\"UseOldKeymap\" Value=\"0\"/>\n" +
                        item(u"KeyMap", {u"<Map pkey=\"65\" emkey=\"3\"/>", u"<Map pkey=\"65\" emkey=\"3\"/>"})));

    TConfigSession old;
    old.LoadRequestText(text + u"1\"/></Data></Config>");
    EXPECT_EQ(RunKeymapEditor(old, nullptr, graphic, classic), 1);
    EXPECT_EQ(old.FindElement(u"capslock")->value, u"1");
    EXPECT_EQ(old.FindElement(u"UseOldKeymap")->value, u"1");
    EXPECT_EQ(RunKeymapEditor(old, nullptr, graphic, nullptr), 2);
}

constexpr uint32_t kF1 = 112;
constexpr uint32_t kShiftF1 = kF1 | kModShift;

TEST(KeyMapRules, PrecedenceIsGlobalThenStringThenMap) {
    TKeyData keys{.keyMap = {{kF1, 7}, {kShiftF1, 8}}, .keyStrings = {{kF1, u"s"}}};
    EXPECT_EQ(MappingKindOf(keys, kF1), KeyMappingKind::String);  // the map entry stays behind it
    EXPECT_EQ(MappingKindOf(keys, kShiftF1), KeyMappingKind::EmulationKey);
    EXPECT_EQ(MappingKindOf(keys, 5), KeyMappingKind::None);
    keys.globalKeyStrings = {{kF1, u"g"}};
    EXPECT_EQ(MappingKindOf(keys, kF1), KeyMappingKind::GlobalString);
}

TEST(KeyMapRules, StringsUpdateTheFirstEntryAndDropOnlyWhatTheRuleSays) {
    TKeyData keys{.keyMap = {{kF1, 7}}, .keyStrings = {{kF1, u"one"}, {kF1, u"two"}},
                  .globalKeyStrings = {{kF1, u"g1"}, {kF1, u"g2"}}};
    MapToGlobalString(keys, kF1, u"G");  // first entry updated, nothing else touched
    EXPECT_EQ(dump(keys), u"P; E; M 112>7; S 112:one 112:two; G 112:G 112:g2");
    MapToString(keys, kF1, u"S");  // drops the first global only, keeps the map
    EXPECT_EQ(dump(keys), u"P; E; M 112>7; S 112:S 112:two; G 112:g2");
    MapToString(keys, kShiftF1, u"new");  // appended for a code without an entry
    EXPECT_EQ(dump(keys), u"P; E; M 112>7; S 112:S 112:two 368:new; G 112:g2");
}

TEST(KeyMapRules, GraphicMappingReplacesEveryEntryOfTheShownCode) {
    TKeyData keys{.keyMap = {{kF1, 7}, {9, 7}, {kF1, 8}}, .keyStrings = {{kF1, u"s"}},
                  .globalKeyStrings = {{kF1, u"g"}}};
    MapToEmulationKeyReplacing(keys, kF1, kF1, 5);
    EXPECT_EQ(dump(keys), u"P; E; M 9>7 112>5; S; G");
    // From the emulation side: the PC key that stood against the key is replaced by another one.
    MapToEmulationKeyReplacing(keys, kShiftF1, kF1, 5);
    EXPECT_EQ(dump(keys), u"P; E; M 9>7 368>5; S; G");
    // An emulation code of 0, or no PC code, only removes.
    MapToEmulationKeyReplacing(keys, kShiftF1, kShiftF1, 0);
    MapToEmulationKeyReplacing(keys, 0, 9, 7);
    EXPECT_EQ(dump(keys), u"P; E; M; S; G");
}

// Map in the graphic editor on a code with two global strings: the first goes, once, and only
// after a Yes; setting a global string asks nothing.
TEST(KeyMapRules, GraphicMapLosesOneGlobalStringAfterTheQuestion) {
    const struct { TMapTarget to; const char16_t* text; bool yes; TMapResult result; const char16_t* left; } cases[] = {
        {TMapTarget::String, u"s", true, TMapResult::Mapped, u"P; E; M 112>7; S 112:s; G 112:g2"},
        {TMapTarget::EmulationKey, u"", true, TMapResult::Mapped, u"P; E; M 112>5; S; G 112:g2"},
        {TMapTarget::String, u"", true, TMapResult::Blank, u"P; E; M 112>7; S; G 112:g2"},  // the Yes stands
        {TMapTarget::EmulationKey, u"", false, TMapResult::Refused, u"P; E; M 112>7; S; G 112:g1 112:g2"},
        {TMapTarget::GlobalString, u"G", false, TMapResult::Mapped, u"P; E; M 112>7; S; G 112:G 112:g2"},
    };
    for (const auto& c : cases) {
        TKeyData keys{.keyMap = {{kF1, 7}}, .globalKeyStrings = {{kF1, u"g1"}, {kF1, u"g2"}}};
        int asked = 0;
        const auto answer = [&] { return ++asked, c.yes; };
        EXPECT_EQ(MapPcCode(keys, c.to, kF1, kF1, 5, c.text, answer), c.result);
        EXPECT_EQ(dump(keys), c.left);
        EXPECT_EQ(asked, c.to == TMapTarget::GlobalString ? 0 : 1);
    }
}

TEST(KeyMapRules, ClassicMappingChangesTheFirstEntryInPlace) {
    TKeyData keys{.keyMap = {{9, 1}, {kF1, 7}, {kF1, 8}}, .keyStrings = {{kF1, u"s"}}};
    MapToEmulationKeyInPlace(keys, kF1, 0xFFFFFFFFu);  // nothing chosen stores -1
    MapToEmulationKeyInPlace(keys, 20, 3);
    EXPECT_EQ(dump(keys), u"P; E; M 9>1 112>4294967295 112>8 20>3; S; G");
    // Not mapped removes the first entry of each list, in turn.
    keys.globalKeyStrings = {{kF1, u"g"}};
    keys.keyStrings = {{kF1, u"s"}};
    UnmapKey(keys, kF1);
    EXPECT_EQ(dump(keys), u"P; E; M 9>1 112>8 20>3; S; G");
    EXPECT_FALSE(RemoveKeyString(keys.keyStrings, kF1));
}

TEST(KeyMapRules, PhysicalCodesOfAnEmulationKeyStopAtTheLimit) {
    std::vector<KeyMapEntry> map;
    for (uint32_t i = 1; i <= 25; ++i) map.push_back({i, i % 2 ? 7u : 8u});
    // The limit counts codes found, not entries looked at.
    EXPECT_EQ(PhysicalCodesFor(map, 7, 20), (std::vector<uint32_t>{1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25}));
    map.assign(30, KeyMapEntry{4, 7});
    EXPECT_EQ(PhysicalCodesFor(map, 7, 20).size(), 20u);
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
    TKeyData keys{.physicalKeys = {{u"F1", 112, 0x700}}, .emulationKeys = {{u"PF1", 7, 0}}};
    EXPECT_EQ(ReplacementQuestion(keys, kF1), u"");
    // One mapping's question is in the classic editor's test.
    keys.keyStrings = {{kF1, u"abc"}};
    keys.globalKeyStrings = {{kF1, u"g"}};
    keys.keyMap = {{kF1, 9}};
    EXPECT_EQ(ReplacementQuestion(keys, kF1),
              u"Physical key \"F1\" is already mapped to\r\nglobal string \"g\"\r\nstring \"abc\"\r\n"
              u"emulation key \"Unknown key (9)\"\r\n\r\nThese mappings will be removed. Proceed?");
}

}  // namespace
}  // namespace qrl
