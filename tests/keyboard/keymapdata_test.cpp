#include <gtest/gtest.h>

#include "keyboard/keymapdata.h"
#include "keyboard/keymapsettings.h"
#include "request/reply.h"
#include "request/session.h"

namespace qrl {
namespace {

constexpr std::u16string_view kHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n";

std::u16string dataReply(std::u16string_view items) {
    std::u16string text(kHead);
    text += items.empty() ? u"  <Data/>\n</Config>" : u"  <Data>\n" + std::u16string(items) + u"  </Data>\n</Config>";
    return text;
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

    const TKeyData& keys = KeyDataOf(std::as_const(s));
    ASSERT_EQ(keys.physicalKeys.size(), 3u);
    EXPECT_EQ(keys.physicalKeys[0].Name, u"F1");
    EXPECT_EQ(keys.physicalKeys[0].Id, 112);
    EXPECT_EQ(keys.physicalKeys[0].Shift, 0x700);
    EXPECT_EQ(keys.physicalKeys[1].Id, 0x400D);
    EXPECT_EQ(keys.physicalKeys[2].Name, u"NoId");
    EXPECT_EQ(keys.physicalKeys[2].Id, 0);
    ASSERT_EQ(keys.emulationKeys.size(), 2u);
    EXPECT_EQ(keys.emulationKeys[1].Name, u"Send");
    ASSERT_EQ(keys.keyMap.size(), 3u);  // duplicates kept
    EXPECT_EQ(keys.keyMap[1].EmKey, 9u);
    EXPECT_EQ(keys.keyMap[2].PKey, 0xFFFFFFFFu);
    EXPECT_EQ(keys.keyMap[2].EmKey, 0u);
    ASSERT_EQ(keys.keyStrings.size(), 2u);
    EXPECT_EQ(keys.keyStrings[1].Text, u"");
    ASSERT_EQ(keys.globalKeyStrings.size(), 1u);
    EXPECT_EQ(keys.globalKeyStrings[0].Text, u"a&b <c> \"d\"");
    EXPECT_TRUE(s.keyDataPresent);
    EXPECT_TRUE(s.hotspotDataPresent);
    EXPECT_EQ(s.hotspotFile, u"sets.hsp");
    EXPECT_EQ(s.hotspotDirectory, u"C:\\hs");
    EXPECT_EQ(s.hotspotEmulation, u"IBM5250.2");
    ASSERT_EQ(s.dataValues.size(), 1u);  // only the plain value
    EXPECT_EQ(s.dataValues[0].name, u"numpad");

    // Settings travel back through the element values; the lists in the order of the definitions,
    // key lists never.
    KeymapSettings settings(s);
    EXPECT_EQ(settings.numpad, 1);
    settings.numpad = 2;
    settings.writeBack();
    EXPECT_EQ(WriteDataReply(s, false),
              dataReply(u"    <Item Element=\"GlobalKeyStrings\">\n"
                        u"      <Map pkey=\"624\" string=\"a&amp;b &lt;c&gt; &quot;d&quot;\"/>\n"
                        u"    </Item>\n"
                        u"    <Item Element=\"KeyMap\">\n"
                        u"      <Map pkey=\"112\" emkey=\"7\"/>\n"
                        u"      <Map pkey=\"112\" emkey=\"9\"/>\n"
                        u"      <Map pkey=\"-1\" emkey=\"0\"/>\n"
                        u"    </Item>\n"
                        u"    <Item Element=\"KeyStrings\">\n"
                        u"      <Map pkey=\"368\" string=\"{Enter}abc\"/>\n"
                        u"      <Map pkey=\"16397\" string=\"\"/>\n"
                        u"    </Item>\n"
                        u"    <Item Element=\"Hotspots\">\n"
                        u"      <Item Element=\"filename\" Value=\"sets.hsp\"/>\n"
                        u"    </Item>\n"
                        u"    <Item Element=\"numpad\" Value=\"2\"/>\n"));

    // The reply reads back into the same lists where the map's definition bears the reply's name.
    std::u16string dtd(kKeyDtd);
    dtd.replace(dtd.find(u"\"Map\""), 5, u"\"KeyMap\"");
    TConfigSession again;
    again.LoadRequestText(u"<Config>" + dtd + WriteDataReply(s, false).substr(kHead.size() + 2));
    const TKeyData& back = KeyDataOf(std::as_const(again));
    ASSERT_EQ(back.keyMap.size(), 3u);
    EXPECT_EQ(back.keyMap[2].PKey, 0xFFFFFFFFu);
    EXPECT_EQ(back.globalKeyStrings[0].Text, keys.globalKeyStrings[0].Text);
    EXPECT_EQ(back.keyStrings.size(), 2u);
}

TEST(KeyMapData, OneKeyItemBringsTheOtherMapsAlongEmpty) {
    TConfigSession s;
    s.LoadRequestText(request(u"<Item Element=\"KeyStrings\"><Map pkey=\"65\" string=\"A\"/></Item>"));
    EXPECT_TRUE(s.keyDataPresent);
    EXPECT_EQ(WriteDataReply(s, true),
              dataReply(u"    <Item Element=\"GlobalKeyStrings\"/>\n"
                        u"    <Item Element=\"KeyMap\"/>\n"
                        u"    <Item Element=\"KeyStrings\">\n"
                        u"      <Map pkey=\"65\" string=\"A\"/>\n"
                        u"    </Item>\n"
                        u"    <Item Element=\"numpad\" Value=\"0\"/>\n"));
}

TEST(KeyMapData, WithoutKeyItemsNoMapIsWritten) {
    TConfigSession s;
    s.LoadRequestText(request(u"<Item Element=\"PhysicalKeys\"><Key Name=\"A\" Id=\"65\"/></Item>"
                              u"<Item Element=\"numpad\" Value=\"0\"/>"));
    EXPECT_FALSE(s.keyDataPresent);  // a key list sets nothing
    KeyDataOf(s).keyMap.push_back(KeyMapEntry{65, 1});
    EXPECT_EQ(WriteDataReply(s, true), dataReply(u""));
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
    const TKeyData& keys = KeyDataOf(std::as_const(s));
    EXPECT_TRUE(keys.keyStrings.empty());
    EXPECT_TRUE(keys.globalKeyStrings.empty());
    EXPECT_TRUE(keys.physicalKeys.empty());
    EXPECT_EQ(WriteDataReply(s, false), dataReply(u"    <Item Element=\"KeyStrings\"/>\n"));
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
    EXPECT_TRUE(settings.numpadshift);     // a Boolean value: "yes" counts
    EXPECT_FALSE(settings.UseOldKeymap);   // read by _wtoi: "true" is 0
    EXPECT_EQ(settings.capslock, kCapsOff);
    EXPECT_EQ(settings.numpad, kNumpadNumeric);  // not sent
    EXPECT_EQ(settings.PCKbLang, 3);
    EXPECT_EQ(settings.EmKbLang, 1);             // the first of two, as every reader of Data
    EXPECT_EQ(settings.KdfPath, u"C:\\kdf");
    EXPECT_EQ(settings.EmName, u"IBM5250");
    EXPECT_EQ(PcKeyboardStem(settings), u"at102");
    EXPECT_EQ(settings.PhysKey, -1);  // no physical keys to select
    EXPECT_EQ(settings.EmIndex, -1);

    settings.Keyboard = u"mine";
    settings.numpadshift = false;
    settings.writeBack();
    EXPECT_EQ(PcKeyboardStem(settings), u"mine");
    EXPECT_EQ(s.FindElement(u"numpadshift")->value, u"0");
    EXPECT_EQ(s.FindElement(u"capslock")->value, u"2");
    EXPECT_EQ(s.FindElement(u"UseOldKeymap")->value, u"0");
    EXPECT_EQ(s.FindElement(u"Keyboard")->value, u"");  // never written back
    EXPECT_EQ(s.FindElement(u"numpad"), nullptr);       // no definition: nothing made
}

TEST(KeymapSettings, TheJobRunsTheChosenEditorAndStoresOnlyOnOk) {
    static int lastEditor = 0;
    static int answer = 0;
    const TKeymapEditor graphic = [](void*, KeymapSettings& settings) {
        lastEditor = 1;
        settings.numpad = kNumpadCursor;
        KeyDataOf(settings.session()).keyMap.push_back(KeyMapEntry{65, 3});
        return answer;
    };
    const TKeymapEditor classic = [](void*, KeymapSettings& settings) {
        lastEditor = 2;
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
    EXPECT_EQ(lastEditor, 1);
    EXPECT_EQ(s.FindElement(u"numpad")->value, u"0");  // cancelled: nothing stored
    answer = 1;
    EXPECT_EQ(RunKeymapEditor(s, nullptr, graphic, classic), 1);
    EXPECT_EQ(WriteDataReply(s, false),
              dataReply(u"    <Item Element=\"numpad\" Value=\"1\"/>\n"
                        u"    <Item Element=\"capslock\" Value=\"0\"/>\n"
                        u"    <Item Element=\"UseOldKeymap\" Value=\"0\"/>\n"
                        u"    <Item Element=\"KeyMap\">\n"
                        u"      <Map pkey=\"65\" emkey=\"3\"/>\n"
                        u"      <Map pkey=\"65\" emkey=\"3\"/>\n"
                        u"    </Item>\n"));

    TConfigSession old;
    old.LoadRequestText(text + u"1\"/></Data></Config>");
    EXPECT_EQ(RunKeymapEditor(old, nullptr, graphic, classic), 1);
    EXPECT_EQ(lastEditor, 2);
    EXPECT_EQ(old.FindElement(u"capslock")->value, u"1");
    EXPECT_EQ(old.FindElement(u"UseOldKeymap")->value, u"1");
    EXPECT_EQ(RunKeymapEditor(old, nullptr, graphic, nullptr), 2);
}

}  // namespace
}  // namespace qrl
