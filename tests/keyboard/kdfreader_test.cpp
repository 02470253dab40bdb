#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "keyboard/graphickeymap.h"
#include "keyboard/kdf.h"
#include "platform/tempfolder.h"

namespace qrl {
namespace {

// Builds .kdf images byte by byte for the reader's tests, including broken ones: every count can
// be overridden and every table can leave out its closing byte.
class Bytes {
public:
    Bytes& u8(int v) {
        data.push_back(static_cast<std::uint8_t>(v & 0xFF));
        return *this;
    }
    Bytes& u16(int v) { return u8(v).u8(v >> 8); }
    Bytes& u32(std::uint32_t v) { return u16(static_cast<int>(v & 0xFFFF)).u16(static_cast<int>(v >> 16)); }
    Bytes& str(const std::string& s) { return u16(static_cast<int>(s.size())).raw(s.begin(), s.end()); }
    Bytes& append(const Bytes& other) { return raw(other.data.begin(), other.data.end()); }
    template <class It>
    Bytes& raw(It begin, It end) {
        data.insert(data.end(), begin, end);
        return *this;
    }
    void patchU32(std::size_t at, std::uint32_t v) {
        for (std::size_t i = 0; i < 4; ++i) data[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
    }
    std::size_t size() const { return data.size(); }

    std::vector<std::uint8_t> data;
};

struct Run {
    int count = 1;
    std::string label;
    int code = 0, inactive = 0, value = 0;
};

struct KeySpec {
    int code = 0, x = 0, y = 0, width = 0, height = 0, mask = 0, altCode = 0, value = 0;
    std::vector<Run> shifts;
    bool closeShifts = true;  // write the zero run count after the runs
    std::vector<Run> altShifts;
    bool closeAlt = true;
};

struct LayoutSpec {
    std::string name, text1, text2, text3;
    int keyUnit = 0, value2 = 0;
    std::vector<std::pair<int, std::string>> attributes;
    std::optional<int> attributeCount;
    std::vector<KeySpec> keys;
    std::optional<int> keyCount;
};

struct KeyboardSpec {
    std::string directoryName, blockName;
    std::vector<LayoutSpec> layouts;
    std::optional<int> layoutCount;
};

void table(Bytes& b, const std::vector<Run>& runs, bool close) {
    for (const Run& r : runs) b.u8(r.count).u8(r.inactive).u16(r.code).u8(r.value).str(r.label);
    if (close) b.u8(0);
}

Bytes key(const KeySpec& k) {
    Bytes b;
    b.u16(k.code).u16(k.x).u16(k.y).u16(k.width).u16(k.height).u16(k.mask).u16(k.altCode).u8(k.value);
    table(b, k.shifts, k.closeShifts);
    if (k.altCode != 0) table(b, k.altShifts, k.closeAlt);
    return b;
}

Bytes layout(const LayoutSpec& l) {
    Bytes b;
    b.str(l.name).str(l.text1).str(l.text2).str(l.text3).u16(l.keyUnit).u16(l.value2);
    b.u16(l.attributeCount.value_or(static_cast<int>(l.attributes.size())));
    for (const auto& [value, text] : l.attributes) b.u8(value).str(text);
    b.u16(l.keyCount.value_or(static_cast<int>(l.keys.size())));
    for (const KeySpec& k : l.keys) b.append(key(k));
    return b;
}

Bytes block(const KeyboardSpec& k) {
    Bytes b;
    b.u16(k.layoutCount.value_or(static_cast<int>(k.layouts.size()))).str(k.blockName);
    for (const LayoutSpec& l : k.layouts) b.append(layout(l));
    return b;
}

// Header, then the directory, then the blocks in order: a cut anywhere in a block leaves the
// directory whole, so truncation reaches every part of the reader.
Bytes file(const std::vector<KeyboardSpec>& keyboards, int magic = 8816, int version = 103) {
    Bytes directory;
    std::vector<Bytes> blocks;
    std::size_t directorySize = 0;
    for (const KeyboardSpec& k : keyboards) {
        directorySize += 4 + 2 + k.directoryName.size();
        blocks.push_back(block(k));
    }
    std::uint32_t offset = static_cast<std::uint32_t>(10 + directorySize);
    for (std::size_t i = 0; i < keyboards.size(); ++i) {
        directory.u32(offset).str(keyboards[i].directoryName);
        offset += static_cast<std::uint32_t>(blocks[i].size());
    }
    Bytes b;
    b.u16(magic).u16(version).u32(10).u16(static_cast<int>(keyboards.size())).append(directory);
    for (const Bytes& blockBytes : blocks) b.append(blockBytes);
    return b;
}

int readBytes(const Bytes& bytes, const std::string& name, KbKeyboard& target, std::size_t length = SIZE_MAX) {
    KbHdr header;
    KdfMemoryInput input(bytes.data.data(), std::min(length, bytes.size()));
    return readKeyboard(header, input, name, target);
}

KeySpec plainKey(int code, const std::string& label) {
    return KeySpec{.code = code, .width = 10, .height = 10, .shifts = {{8, label, code}}};
}

Bytes oneLayout(const std::vector<KeySpec>& keys) {
    return file({KeyboardSpec{"pc", "pc", {LayoutSpec{.name = "L", .keys = keys}}, {}}});
}

// A whole table on one line, entries joined by '|': each label, with its code and a '!' when inactive.
std::string entries(const KbShiftTable& t, bool withCodes = true) {
    std::string out;
    for (int i = 0; i < kShiftStates; ++i) {
        out += (i ? "|" : "") + t[i].Label;
        if (withCodes) out += "/" + std::to_string(t[i].Code) + (t[i].Inactive ? "!" : "");
    }
    return out;
}
std::string labels(const KbShiftTable& t) { return entries(t, false); }

// One keyboard of two layouts with attributes, a toggled key and a run-length table of every
// shape: the sample for the field checks and for truncation.
KeyboardSpec richKeyboard() {
    const KeySpec toggled{.code = 0x67, .x = -5, .y = 0x7FFF, .width = 40, .height = 80, .mask = 16, .altCode = 0x24,
                          .value = 200, .shifts = {{1, "7", 0x67, 0, 9}, {1, "&", -2, 5}, {6, "x", 0x67}},
                          .altShifts = {{2, "Home", 0x24}, {1, "", 0x24, 1}}};  // states 3 to 7 left out
    KeySpec eightRuns{.code = 0x41, .width = 10, .height = 10, .closeShifts = false};  // eight runs end the table
    for (char s = 0; s < 8; ++s) eightRuns.shifts.push_back({1, std::string(1, char('a' + s)), 0x41 + s});
    const LayoutSpec first{.name = "First", .text1 = "one", .text2 = "two", .text3 = "three", .keyUnit = -3,
                           .value2 = 7, .attributes = {{255, "attr"}, {1, ""}},
                           .keys = {toggled, eightRuns, plainKey(0x20, "Space")}};
    const LayoutSpec second{.name = "Second", .keyUnit = 22, .keys = {plainKey(0x0D, "<ret>")}};
    return KeyboardSpec{"pc", "stored name", {first, second}, {}};
}

TEST(KdfReader, ReadsEveryFieldOfKeyboardLayoutAndKey) {
    KbKeyboard kb;
    ASSERT_EQ(readBytes(file({KeyboardSpec{"other", "x", {}, {}}, richKeyboard()}), "pc", kb), kKdfOk);
    EXPECT_EQ(kb.Name, "stored name");  // the block's own name, not the directory's
    ASSERT_EQ(kb.Layouts.size(), 2u);

    const KbLayout& l = kb.Layouts[0];
    EXPECT_EQ(l.Name + "|" + l.Text1 + "|" + l.Text2 + "|" + l.Text3, "First|one|two|three");
    EXPECT_EQ(std::vector<int>({l.KeyUnit, l.LayoutValue2}), std::vector<int>({-3, 7}));
    ASSERT_EQ(l.Attributes.size(), 2u);
    EXPECT_EQ(std::to_string(l.Attributes[0].Value) + l.Attributes[0].Text + "|" + l.Attributes[1].Text, "255attr|");
    ASSERT_EQ(l.Keys.size(), 3u);

    const KbKey& k = l.Keys[0];  // x is negative: sign extension
    EXPECT_EQ(std::vector<int>({k.Code, k.X, k.Y, k.Width, k.Height, k.ModifierMask, k.AltCode, k.KeyValue,
                                k.UsesShiftCodes, k.Shifts[0].ShiftValue}),
              std::vector<int>({0x67, -5, 0x7FFF, 40, 80, 16, 0x24, 200, 0, 9}));
    // Any non-zero byte is inactive; states no run covers stay empty.
    EXPECT_EQ(entries(k.Shifts), "7/103|&/-2!|x/103|x/103|x/103|x/103|x/103|x/103");
    EXPECT_EQ(entries(k.AltShifts), "Home/36|Home/36|/36!|/0|/0|/0|/0|/0");

    EXPECT_EQ(entries(l.Keys[1].Shifts), "a/65|b/66|c/67|d/68|e/69|f/70|g/71|h/72");
    EXPECT_EQ(labels(l.Keys[1].AltShifts), "|||||||");  // no AltCode, no second table
    // The key behind a table of eight runs, and no second table, is read in step.
    EXPECT_EQ(l.Keys[2].Code, 0x20);
    EXPECT_EQ(l.Keys[2].Shifts[7].Label, "Space");
    EXPECT_EQ(kb.Layouts[1].Name, "Second");
    EXPECT_EQ(kb.Layouts[1].Keys[0].Shifts[5].Label, "<ret>");
}

TEST(KdfReader, HeaderIsReadWholeBeforeItIsJudged) {
    KbKeyboard kb;
    Bytes shortWrongMagic;
    shortWrongMagic.u16(0x1234).u16(103).u32(10).u8(0);  // 9 bytes
    EXPECT_EQ(readBytes(shortWrongMagic, "pc", kb), kKdfShortRead);
    EXPECT_EQ(readBytes(file({richKeyboard()}, 0x2271), "pc", kb), kKdfBadMagic);
    for (int version : {102, 104, 0}) {
        // The directory is not read: pointing it past the end changes nothing.
        Bytes bytes = file({richKeyboard()}, 8816, version);
        bytes.patchU32(4, 0xFFFFFFF0u);
        EXPECT_EQ(readBytes(bytes, "pc", kb), kKdfBadVersion) << version;
    }
    EXPECT_EQ(readBytes(file({richKeyboard()}, 1, 1), "pc", kb), kKdfBadMagic);  // magic before version
    EXPECT_TRUE(kb.Layouts.empty());
}

TEST(KdfReader, DirectoryLookupIsExactAndFirstEntryWins) {
    KeyboardSpec second = richKeyboard();
    second.blockName = "second block";
    const Bytes bytes = file({richKeyboard(), second});
    KbKeyboard first;
    ASSERT_EQ(readBytes(bytes, "pc", first), kKdfOk);
    EXPECT_EQ(first.Name, "stored name");
    for (const char* name : {"PC", "Pc", "pc ", "p", ""}) {
        KbKeyboard kb;
        EXPECT_EQ(readBytes(bytes, name, kb), kKdfNoKeyboard) << name;
        EXPECT_TRUE(kb.Layouts.empty());
    }
    // A directory that breaks after the wanted entry still fails: all entries are read first.
    KbKeyboard kb;
    Bytes cut;
    cut.u16(8816).u16(103).u32(10).u16(2).u32(100).str("pc").u32(200);  // second entry cut short
    EXPECT_EQ(readBytes(cut, "pc", kb), kKdfShortRead);
}

TEST(KdfReader, EveryTruncationGivesShortReadAndKeepsWhatWasRead) {
    const Bytes bytes = file({richKeyboard()});
    KbKeyboard whole;
    ASSERT_EQ(readBytes(bytes, "pc", whole), kKdfOk);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        KbKeyboard kb;
        ASSERT_EQ(readBytes(bytes, "pc", kb, length), kKdfShortRead) << "length " << length;
        // A layout is added before it is read and stays: the first is whole once the second began.
        if (kb.Layouts.size() == 2) {
            EXPECT_EQ(kb.Layouts[0].Keys.size(), 3u);
            EXPECT_EQ(kb.Layouts[0].Keys[2].Shifts[0].Label, "Space");
        }
    }
}

TEST(KdfReader, ReadsFromAFileAndStopsAtItsEnd) {
    const Bytes bytes = file({richKeyboard()});
    const test::TempFolder dir;
    for (std::size_t length : {bytes.size(), bytes.size() - 1, bytes.size() / 2, std::size_t{9}}) {
        dir.write("cut.kdf", std::string(bytes.data.begin(), bytes.data.begin() + static_cast<std::ptrdiff_t>(length)));
        std::FILE* f = std::fopen((dir.path() / "cut.kdf").string().c_str(), "rb");
        ASSERT_NE(f, nullptr);
        KbHdr header;
        KbKeyboard kb;
        const int result = readKeyboard(header, f, "pc", kb);
        std::fclose(f);
        EXPECT_EQ(result, length == bytes.size() ? kKdfOk : kKdfShortRead) << length;
    }
    KbHdr header;
    KbKeyboard kb;
    EXPECT_EQ(readKeyboard(header, static_cast<std::FILE*>(nullptr), "pc", kb), kKdfShortRead);
}

TEST(KdfReader, CountsLargerThanTheFileEndInShortRead) {
    const auto readChanged = [](const std::function<void(KeyboardSpec&)>& change, KbKeyboard& kb) {
        KeyboardSpec k = richKeyboard();
        change(k);
        return readBytes(file({k}), "pc", kb);
    };
    KbKeyboard layouts, keys, attributes;
    EXPECT_EQ(readChanged([](KeyboardSpec& k) { k.layoutCount = 0xFFFF; }, layouts), kKdfShortRead);
    EXPECT_EQ(layouts.Layouts.size(), 3u);  // two whole ones and the one that found the end
    EXPECT_EQ(readChanged([](KeyboardSpec& k) { k.layouts[1].keyCount = 0xFFFF; }, keys), kKdfShortRead);
    EXPECT_EQ(keys.Layouts[1].Keys.size(), 2u);
    EXPECT_EQ(readChanged([](KeyboardSpec& k) { k.layouts[1].attributeCount = 0xFFFF; }, attributes), kKdfShortRead);
    EXPECT_TRUE(attributes.Layouts[1].Keys.empty());  // keys are not read after a failed attribute

    KbKeyboard kb;
    Bytes bytes = file({richKeyboard()});
    bytes.data[8] = bytes.data[9] = 0xFF;  // 65535 directory entries
    EXPECT_EQ(readBytes(bytes, "pc", kb), kKdfShortRead);
    for (std::uint32_t offset : {0xFFFFFFFFu, 0x80000000u, 0u}) {
        for (std::size_t at : {10, 4}) {  // the entry's block offset, the directory offset
            bytes = file({richKeyboard()});
            bytes.patchU32(at, offset);
            EXPECT_NE(readBytes(bytes, "pc", kb), kKdfOk) << offset << " at " << at;
        }
    }
    // A text longer than what is left of the file.
    Bytes longText;
    longText.u16(8816).u16(103).u32(10).u16(1).u32(22).str("pc").u16(1).u16(500).str("abc");
    KbKeyboard untouched;
    EXPECT_EQ(readBytes(longText, "pc", untouched), kKdfShortRead);
    EXPECT_EQ(untouched.Name, "");  // left as it was
}

TEST(KdfReader, ShiftRunsPastTheTableAreDroppedAndTheFileStaysInStep) {
    // 255 covers the table at once; the runs after it lie outside and are read, then dropped.
    KeySpec overflowing{.code = 0x51, .shifts = {{255, "big", 1}, {3, "lost", 2}, {9, "lost too", 3}}};
    KeySpec straddling{.code = 0x52, .shifts = {{2, "a", 1}, {8, "b", 2}}};  // the second reaches state 9
    KeySpec full{.code = 0x53, .shifts = {{8, "all", 1}, {1, "after", 2}}};  // a run after all eight are set
    KeySpec eightRunsOfTwo{.code = 0x54, .altCode = 0x55, .closeShifts = false, .altShifts = {{200, "alt", 9}}};
    for (int r = 0; r < 8; ++r) eightRunsOfTwo.shifts.push_back({2, "r" + std::to_string(r), r});

    KbKeyboard kb;
    ASSERT_EQ(readBytes(oneLayout({overflowing, straddling, full, eightRunsOfTwo, plainKey(0x99, "last")}), "pc", kb),
              kKdfOk);
    const auto& keys = kb.Layouts[0].Keys;
    ASSERT_EQ(keys.size(), 5u);
    EXPECT_EQ(labels(keys[0].Shifts), "big|big|big|big|big|big|big|big");
    EXPECT_EQ(labels(keys[1].Shifts), "a|a|b|b|b|b|b|b");
    EXPECT_EQ(labels(keys[2].Shifts), "all|all|all|all|all|all|all|all");
    // Runs of two advance the position by two but count as one run each: four runs fill the
    // table, the other four fall outside it.
    EXPECT_EQ(labels(keys[3].Shifts), "r0|r0|r1|r1|r2|r2|r3|r3");
    EXPECT_EQ(labels(keys[3].AltShifts), "alt|alt|alt|alt|alt|alt|alt|alt");
    EXPECT_EQ(keys[4].Code, 0x99);
    EXPECT_EQ(keys[4].Shifts[3].Label, "last");
}

TEST(KdfReader, TextsAreCutAtAZeroByteAndEmptyOnesLeaveTheTarget) {
    KeySpec k{.code = 0x41, .shifts = {{1, std::string("ab\0cd", 5)}, {1, ""}, {6, std::string("\0z", 2)}}};
    const LayoutSpec l{.name = std::string("Lay\0out", 7), .keys = {k}};
    KbKeyboard kb;
    kb.Name = "before";
    ASSERT_EQ(readBytes(file({KeyboardSpec{"pc", "", {l, LayoutSpec{}}, {}}}), "pc", kb), kKdfOk);
    EXPECT_EQ(kb.Name, "before");  // a block name of length 0 changes nothing
    EXPECT_EQ(kb.Layouts[0].Name, "Lay");
    EXPECT_EQ(labels(kb.Layouts[0].Keys[0].Shifts), "ab|||||||");
    EXPECT_TRUE(kb.Layouts[1].Keys.empty());  // a layout without keys is valid
    EXPECT_EQ(kb.Layouts[1].Name, "");
}

// The header deletes keyboards of either kind that it is given (the sanitizers watch this).
TEST(KdfModel, HeadersMakeAndDeleteKeyboardsOfTheirKind) {
    GKbHdr header;
    header.Keyboards.push_back(header.newKeyboard("g"));
    KbHdr plainHeader;
    plainHeader.Keyboards.push_back(plainHeader.newKeyboard("p"));
    plainHeader.Keyboards.push_back(header.newKeyboard("g2"));
    EXPECT_NE(dynamic_cast<GKbKeyboard*>(&header.Keyboards[0]), nullptr);
    EXPECT_EQ(dynamic_cast<GKbKeyboard*>(&plainHeader.Keyboards[0]), nullptr);
    EXPECT_EQ(plainHeader.Keyboards[0].Name + plainHeader.Keyboards[1].Name, "pg2");
}

std::string names(const KbKeyboard& kb) {
    std::string out;
    for (const KbLayout& l : kb.Layouts) out += (out.empty() ? "" : "|") + l.Name;
    return out;
}

// A picture drawn from the layout shows every key whole: none overlaps another. The reader made
// graphic keys, each owned by its layout.
void expectWholeKeys(const KbLayout& layout) {
    for (std::size_t i = 0; i < layout.Keys.size(); ++i) {
        const KbKey& a = layout.Keys[i];
        const auto* graphic = dynamic_cast<const GKbKey*>(&a);
        ASSERT_NE(graphic, nullptr);
        EXPECT_EQ(graphic->Owner, &layout);
        EXPECT_TRUE(a.Width > 0 && a.Height > 0 && a.X >= 0 && a.Y >= 0) << layout.Name << ": key " << a.Code;
        for (std::size_t j = i + 1; j < layout.Keys.size(); ++j) {
            const KbKey& b = layout.Keys[j];
            const bool apart = a.X + a.Width <= b.X || b.X + b.Width <= a.X ||
                               a.Y + a.Height <= b.Y || b.Y + b.Height <= a.Y;
            EXPECT_TRUE(apart) << layout.Name << ": keys " << a.Code << " and " << b.Code;
        }
    }
}

// The sample keyboards that come with the sources load as graphic keyboards that give the boards
// they describe.
TEST(SampleKeyboards, EachLoadsWholeWithItsLayoutsAndNoOverlappingKeys) {
    const struct { const char* file; const char* name; const char* layouts; std::size_t keys; } samples[] = {
        {"at102.kdf", "pc", "United Kingdom|Deutschland", 102},
        {"IBM5250.kdf", "IBM5250", "US English|Deutsch", 122},
        {"T653X.kdf", "T653X", "US ASCII|UK", 108},
    };
    for (const auto& sample : samples) {
        SCOPED_TRACE(sample.file);
        const std::string path = std::string(QRL_SOURCE_DIR) + "/samples/keyboards/" + sample.file;
        GKbKeyboard kb;
        ASSERT_EQ(LoadKeyboard(std::u16string(path.begin(), path.end()), sample.name, kb), kKdfOk);
        EXPECT_EQ(names(kb), sample.layouts);
        for (const KbLayout& layout : kb.Layouts) {
            ASSERT_NE(dynamic_cast<const GKbLayout*>(&layout), nullptr);
            EXPECT_EQ(layout.Keys.size(), sample.keys);
            expectWholeKeys(layout);
        }
    }
}

TEST(JoinPath, AbsoluteNamesStandAndOthersGoUnderTheFolder) {
    struct Case { std::u16string directory, name, expected; };
    const Case cases[] = {
        {u"C:\\kdf", u"at102.kdf", u"C:\\kdf\\at102.kdf"},
        {u"C:\\kdf\\", u"at102.kdf", u"C:\\kdf\\at102.kdf"},
        {u"C:/kdf/", u"at102.kdf", u"C:/kdf/at102.kdf"},
        {u"", u"at102.kdf", u"at102.kdf"},
        {u"C:\\kdf", u"", u"C:\\kdf\\"},
        {u"C:\\kdf", u"\\\\server\\share\\x.kdf", u"\\\\server\\share\\x.kdf"},
        {u"C:\\kdf", u"D:\\x.kdf", u"D:\\x.kdf"},
        {u"C:\\kdf", u"/x.kdf", u"/x.kdf"},
        // A drive with nothing or anything but a slash behind it is relative.
        {u"C:\\kdf", u"D:", u"C:\\kdf\\D:"},
        {u"C:\\kdf", u"D:x.kdf", u"C:\\kdf\\D:x.kdf"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(joinPath(c.directory, c.name), c.expected)
            << std::string(c.directory.begin(), c.directory.end()) << " + "
            << std::string(c.name.begin(), c.name.end());
    }
}

}  // namespace
}  // namespace qrl
