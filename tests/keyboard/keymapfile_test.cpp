#include <gtest/gtest.h>

#include "keyboard/keymapfile.h"
#include "text/textutil.h"

namespace qrl {
namespace {

// The three mappings on one line, for comparing maps whole.
std::u16string Dump(const TKeyData& keys) {
    std::u16string out = u"M";
    for (const KeyMapEntry& e : keys.keyMap) out += u" " + decimal(e.PKey) + u">" + decimal(e.EmKey);
    for (const auto& [tag, list] : {std::pair{u"; S", &keys.keyStrings}, std::pair{u"; G", &keys.globalKeyStrings}}) {
        out += tag;
        for (const KeyString& e : *list) out += u" " + decimal(e.PKey) + u":" + e.Text;
    }
    return out;
}

// A code with the top bit set, a duplicate and text that needs escaping all come back as they went.
TKeyData SampleMap() {
    return {.keyMap = {{112, 112}, {113 | kModShift, 147}, {0x80000001u, 5}, {112, 113}},
            .keyStrings = {{369, u"<logoff> & \"bye\"\u00e9"}},
            .globalKeyStrings = {{626, u"signon"}}};
}

TEST(KeyMapFile, ExportThenImportGivesBackTheSameMapAndKeyboards) {
    const TKeyData keys = SampleMap();
    const TKeyMapFileRead read = ReadKeyMapFile(WriteKeyMapFile(keys, u"at102", u"IBM5250"));
    ASSERT_TRUE(read.ok()) << KeyMapFileMessage(read).size();
    EXPECT_EQ(read.file.pcKeyboard, u"at102");
    EXPECT_EQ(read.file.emKeyboard, u"IBM5250");
    TKeyData imported;
    imported.keyMap = {{1, 1}};
    ImportKeyMap(imported, read.file, TKeyMapImport::Replace);
    EXPECT_EQ(Dump(imported), Dump(keys));
}

// The file's code 113 loses its global string and its old emulation key; other codes stay.
TEST(KeyMapFile, MergeLetsTheFileReplaceEveryEntryOfItsCodes) {
    TKeyData keys{.keyMap = {{112, 1}, {113, 2}, {113, 3}}, .globalKeyStrings = {{113, u"old"}, {114, u"kept"}}};
    const TKeyMapFile file{.keyMap = {{113, 9}}, .keyStrings = {{115, u"new"}}};
    ImportKeyMap(keys, file, TKeyMapImport::Merge);
    EXPECT_EQ(Dump(keys), u"M 112>1 113>9; S 115:new; G 114:kept");
}

TEST(KeyMapFile, AFileThatDoesNotReadSaysWhereAndWhy) {
    const struct {
        std::string text;
        std::u16string message;
    } cases[] = {
        {"<KeyMapFile version=\"1\">\n  <Item>\n</KeyMapFile>", u"line 3, column 12: the file is not well-formed XML (error 13)"},
        {"\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<Config version=\"1\"/>",
         u"line 2, column 1: the file is not a key map file (its root is not <KeyMapFile>)"},
        {"\n\n  <KeyMapFile version=\"2\"/>",
         u"line 3, column 3: the key map file has version \"2\"; this module reads version 1"},
        {"", u"line 1, column 1: the file is not well-formed XML (error 16)"},
        {"<KeyMapFile version=\"1\">\n", u"line 2, column 1: the file is not well-formed XML (error 1)"},
    };
    for (const auto& c : cases) {
        const TKeyMapFileRead read = ReadKeyMapFile(c.text);
        EXPECT_FALSE(read.ok()) << c.text;
        EXPECT_EQ(KeyMapFileMessage(read), c.message) << c.text;
        EXPECT_TRUE(read.file.keyMap.empty());
    }
}

}  // namespace
}  // namespace qrl
