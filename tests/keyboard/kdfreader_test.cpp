#include <gtest/gtest.h>

#include <boost/ptr_container/exception.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "keyboard/kdf.h"
#include "keyboard/kdfbytes.h"

using namespace qrl;
using namespace kdftest;

namespace {

int readBytes(const Bytes& bytes, const std::string& name, KbKeyboard& target, std::size_t length) {
    KbHdr header;
    KdfMemoryInput input(bytes.data.data(), length);
    return readKeyboard(header, input, name, target);
}

int readBytes(const Bytes& bytes, const std::string& name, KbKeyboard& target) {
    return readBytes(bytes, name, target, bytes.size());
}

KeySpec plainKey(int code, const std::string& label) {
    KeySpec k;
    k.code = code;
    k.width = 10;
    k.height = 10;
    k.shifts = {run(8, label, code)};
    return k;
}

// One keyboard of two layouts with attributes, a toggled key and a run-length table of every
// shape: the sample for the field checks and for truncation.
KeyboardSpec richKeyboard() {
    KeySpec toggled;
    toggled.code = 0x67;
    toggled.x = -5;        // negative: sign extension
    toggled.y = 0x7FFF;
    toggled.width = 40;
    toggled.height = 80;
    toggled.mask = 16;
    toggled.altCode = 0x24;
    toggled.value = 200;
    toggled.shifts = {run(1, "7", 0x67, 0, 9), run(1, "&", -2, 5), run(6, "x", 0x67)};
    toggled.altShifts = {run(2, "Home", 0x24), run(1, "", 0x24, 1)};  // states 3 to 7 left out

    KeySpec eightRuns = plainKey(0x41, "");
    eightRuns.shifts.clear();
    for (int s = 0; s < 8; ++s) {
        eightRuns.shifts.push_back(run(1, std::string(1, static_cast<char>('a' + s)), 0x41 + s));
    }
    eightRuns.closeShifts = false;  // eight runs end the table by themselves

    LayoutSpec first;
    first.name = "First";
    first.text1 = "one";
    first.text2 = "two";
    first.text3 = "three";
    first.keyUnit = -3;
    first.value2 = 7;
    first.attributes = {{255, "attr"}, {1, ""}};
    first.keys = {toggled, eightRuns, plainKey(0x20, "Space")};

    LayoutSpec second;
    second.name = "Second";
    second.keyUnit = 22;
    second.keys = {plainKey(0x0D, "<ret>")};

    return KeyboardSpec{"pc", "stored name", {first, second}, {}};
}

}  // namespace

TEST(KdfReader, ReadsEveryFieldOfKeyboardLayoutAndKey) {
    const Bytes bytes = file({KeyboardSpec{"other", "x", {}, {}}, richKeyboard()});
    KbKeyboard kb;
    ASSERT_EQ(readBytes(bytes, "pc", kb), kKdfOk);
    EXPECT_EQ(kb.Name, "stored name");  // the block's own name, not the directory's
    ASSERT_EQ(kb.Layouts.size(), 2u);

    const KbLayout& l = kb.Layouts[0];
    EXPECT_EQ(l.Name, "First");
    EXPECT_EQ(l.Text1, "one");
    EXPECT_EQ(l.Text2, "two");
    EXPECT_EQ(l.Text3, "three");
    EXPECT_EQ(l.KeyUnit, -3);
    EXPECT_EQ(l.LayoutValue2, 7);
    EXPECT_EQ(l.State, 0);
    ASSERT_EQ(l.Attributes.size(), 2u);
    EXPECT_EQ(l.Attributes[0].Value, 255u);
    EXPECT_EQ(l.Attributes[0].Text, "attr");
    EXPECT_EQ(l.Attributes[1].Text, "");
    ASSERT_EQ(l.Keys.size(), 3u);

    const KbKey& k = l.Keys[0];
    EXPECT_EQ(k.Code, 0x67);
    EXPECT_EQ(k.X, -5);
    EXPECT_EQ(k.Y, 0x7FFF);
    EXPECT_EQ(k.Width, 40);
    EXPECT_EQ(k.Height, 80);
    EXPECT_EQ(k.ModifierMask, 16);
    EXPECT_EQ(k.AltCode, 0x24);
    EXPECT_EQ(k.KeyValue, 200);
    EXPECT_EQ(k.UsesShiftCodes, 0);
    EXPECT_EQ(k.Shifts[0].Label, "7");
    EXPECT_EQ(k.Shifts[0].ShiftValue, 9);
    EXPECT_FALSE(k.Shifts[0].Inactive);
    EXPECT_EQ(k.Shifts[1].Label, "&");
    EXPECT_EQ(k.Shifts[1].Code, -2);
    EXPECT_TRUE(k.Shifts[1].Inactive);  // any non-zero byte
    for (int s = 2; s < 8; ++s) {
        EXPECT_EQ(k.Shifts[s].Label, "x") << s;
        EXPECT_EQ(k.Shifts[s].Code, 0x67) << s;
    }
    EXPECT_EQ(k.AltShifts[0].Label, "Home");
    EXPECT_EQ(k.AltShifts[1].Label, "Home");
    EXPECT_TRUE(k.AltShifts[2].Inactive);
    for (int s = 3; s < 8; ++s) {  // states no run covers stay empty
        EXPECT_EQ(k.AltShifts[s].Label, "") << s;
        EXPECT_EQ(k.AltShifts[s].Code, 0) << s;
        EXPECT_FALSE(k.AltShifts[s].Inactive) << s;
    }

    const KbKey& eight = l.Keys[1];
    for (int s = 0; s < 8; ++s) {
        EXPECT_EQ(eight.Shifts[s].Label, std::string(1, static_cast<char>('a' + s)));
        EXPECT_EQ(eight.Shifts[s].Code, 0x41 + s);
    }
    EXPECT_EQ(eight.AltShifts[0].Label, "");  // no AltCode, no second table
    // The key behind a table of eight runs is read in step.
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
    EXPECT_EQ(readBytes(Bytes{}, "pc", kb), kKdfShortRead);

    const Bytes good = file({richKeyboard()});
    EXPECT_EQ(readBytes(file({richKeyboard()}, 0x2271), "pc", kb), kKdfBadMagic);
    EXPECT_EQ(readBytes(file({richKeyboard()}, 0x7022), "pc", kb), kKdfBadMagic);  // byte order
    for (int version : {102, 104, 0}) {
        // The directory is not read: pointing it past the end changes nothing.
        Bytes bytes = file({richKeyboard()}, 8816, version);
        bytes.patchU32(4, 0xFFFFFFF0u);
        EXPECT_EQ(readBytes(bytes, "pc", kb), kKdfBadVersion) << version;
    }
    // Magic is tested before version.
    EXPECT_EQ(readBytes(file({richKeyboard()}, 1, 1), "pc", kb), kKdfBadMagic);
    EXPECT_TRUE(kb.Layouts.empty());
}

TEST(KdfReader, DirectoryLookupIsExactAndFirstEntryWins) {
    KeyboardSpec first = richKeyboard();
    KeyboardSpec second = richKeyboard();
    second.blockName = "second block";
    const Bytes bytes = file({first, second});
    {
        KbKeyboard kb;
        ASSERT_EQ(readBytes(bytes, "pc", kb), kKdfOk);
        EXPECT_EQ(kb.Name, "stored name");
    }
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
    {
        KbKeyboard whole;
        ASSERT_EQ(readBytes(bytes, "pc", whole), kKdfOk);
    }
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        KbKeyboard kb;
        ASSERT_EQ(readBytes(bytes, "pc", kb, length), kKdfShortRead) << "length " << length;
        // A layout is added before it is read and stays: the first layout is whole once the
        // second has been started.
        if (kb.Layouts.size() == 2) {
            EXPECT_EQ(kb.Layouts[0].Keys.size(), 3u);
            EXPECT_EQ(kb.Layouts[0].Keys[2].Shifts[0].Label, "Space");
        }
    }
}

TEST(KdfReader, ReadsFromAFileAndStopsAtItsEnd) {
    const Bytes bytes = file({richKeyboard()});
    const auto dir = std::filesystem::temp_directory_path() / "qrl_kdf_reader_test";
    std::filesystem::create_directories(dir);
    const auto path = dir / "cut.kdf";
    for (std::size_t length : {bytes.size(), bytes.size() - 1, bytes.size() / 2, std::size_t{9}}) {
        {
            std::ofstream out(path, std::ios::binary | std::ios::trunc);
            out.write(reinterpret_cast<const char*>(bytes.data.data()), static_cast<std::streamsize>(length));
        }
        std::FILE* f = std::fopen(path.string().c_str(), "rb");
        ASSERT_NE(f, nullptr);
        KbHdr header;
        KbKeyboard kb;
        const int result = readKeyboard(header, f, "pc", kb);
        std::fclose(f);
        EXPECT_EQ(result, length == bytes.size() ? kKdfOk : kKdfShortRead) << length;
    }
    std::filesystem::remove_all(dir);
    KbHdr header;
    KbKeyboard kb;
    EXPECT_EQ(readKeyboard(header, static_cast<std::FILE*>(nullptr), "pc", kb), kKdfShortRead);
}

TEST(KdfReader, CountsLargerThanTheFileEndInShortRead) {
    {
        KeyboardSpec k = richKeyboard();
        k.layoutCount = 0xFFFF;
        KbKeyboard kb;
        EXPECT_EQ(readBytes(file({k}), "pc", kb), kKdfShortRead);
        EXPECT_EQ(kb.Layouts.size(), 3u);  // two whole ones and the one that found the end
    }
    {
        KeyboardSpec k = richKeyboard();
        k.layouts[1].keyCount = 0xFFFF;
        KbKeyboard kb;
        EXPECT_EQ(readBytes(file({k}), "pc", kb), kKdfShortRead);
        EXPECT_EQ(kb.Layouts[1].Keys.size(), 2u);
    }
    {
        KeyboardSpec k = richKeyboard();
        k.layouts[1].attributeCount = 0xFFFF;
        KbKeyboard kb;
        EXPECT_EQ(readBytes(file({k}), "pc", kb), kKdfShortRead);
        EXPECT_TRUE(kb.Layouts[1].Keys.empty());  // keys are not read after a failed attribute
    }
    {
        Bytes bytes = file({richKeyboard()});
        bytes.data[8] = 0xFF;
        bytes.data[9] = 0xFF;  // 65535 directory entries
        KbKeyboard kb;
        EXPECT_EQ(readBytes(bytes, "pc", kb), kKdfShortRead);
    }
    for (std::uint32_t offset : {0xFFFFFFFFu, 0x80000000u, 0u}) {
        Bytes bytes = file({richKeyboard()});
        bytes.patchU32(10, offset);  // the entry's block offset
        KbKeyboard kb;
        EXPECT_NE(readBytes(bytes, "pc", kb), kKdfOk) << offset;
        bytes = file({richKeyboard()});
        bytes.patchU32(4, offset);  // the directory offset
        EXPECT_NE(readBytes(bytes, "pc", kb), kKdfOk) << offset;
    }
    {
        // A text longer than what is left of the file.
        Bytes bytes;
        bytes.u16(8816).u16(103).u32(10).u16(1).u32(22).str("pc").u16(1).u16(500).str("abc");
        KbKeyboard kb;
        EXPECT_EQ(readBytes(bytes, "pc", kb), kKdfShortRead);
        EXPECT_EQ(kb.Name, "");  // left as it was
    }
}

TEST(KdfReader, ShiftRunsPastTheTableAreDroppedAndTheFileStaysInStep) {
    KeySpec overflowing = plainKey(0x51, "");
    // 255 covers the table at once; the runs after it lie outside and are read, then dropped.
    overflowing.shifts = {run(255, "big", 1), run(3, "lost", 2), run(9, "lost too", 3)};
    KeySpec straddling = plainKey(0x52, "");
    straddling.shifts = {run(2, "a", 1), run(8, "b", 2)};  // the second run reaches state 9
    KeySpec full = plainKey(0x53, "");
    full.shifts = {run(8, "all", 1), run(1, "after", 2)};  // a run after all eight states are set
    KeySpec eightRunsOfTwo = plainKey(0x54, "");
    eightRunsOfTwo.shifts.clear();
    for (int r = 0; r < 8; ++r) {
        eightRunsOfTwo.shifts.push_back(run(2, "r" + std::to_string(r), r));
    }
    eightRunsOfTwo.closeShifts = false;
    eightRunsOfTwo.altCode = 0x55;
    eightRunsOfTwo.altShifts = {run(200, "alt", 9)};

    LayoutSpec l;
    l.name = "L";
    l.keys = {overflowing, straddling, full, eightRunsOfTwo, plainKey(0x99, "last")};
    const Bytes bytes = file({KeyboardSpec{"pc", "pc", {l}, {}}});
    KbKeyboard kb;
    ASSERT_EQ(readBytes(bytes, "pc", kb), kKdfOk);
    const auto& keys = kb.Layouts[0].Keys;
    ASSERT_EQ(keys.size(), 5u);
    for (int s = 0; s < 8; ++s) {
        EXPECT_EQ(keys[0].Shifts[s].Label, "big") << s;
        EXPECT_EQ(keys[2].Shifts[s].Label, "all") << s;
    }
    EXPECT_EQ(keys[1].Shifts[0].Label, "a");
    EXPECT_EQ(keys[1].Shifts[1].Label, "a");
    for (int s = 2; s < 8; ++s) {
        EXPECT_EQ(keys[1].Shifts[s].Label, "b") << s;
    }
    // Runs of two advance the position by two but count as one run each: four runs fill the
    // table, the other four fall outside it.
    EXPECT_EQ(keys[3].Shifts[0].Label, "r0");
    EXPECT_EQ(keys[3].Shifts[1].Label, "r0");
    EXPECT_EQ(keys[3].Shifts[7].Label, "r3");
    for (int s = 0; s < 8; ++s) {
        EXPECT_EQ(keys[3].AltShifts[s].Label, "alt") << s;
    }
    EXPECT_EQ(keys[4].Code, 0x99);
    EXPECT_EQ(keys[4].Shifts[3].Label, "last");
}

TEST(KdfReader, SecondTableIsReadOnlyForAKeyWithAnAltCode) {
    // A second table behind a key without AltCode is taken for the next key's record.
    KeySpec stray = plainKey(0x41, "a");
    stray.writeAlt = true;
    stray.altShifts = {run(1, "x", 0x0302)};
    LayoutSpec l;
    l.name = "L";
    l.keys = {stray, plainKey(0x42, "b")};
    l.keyCount = 2;
    const Bytes bytes = file({KeyboardSpec{"pc", "pc", {l}, {}}});
    KbKeyboard kb;
    readBytes(bytes, "pc", kb);
    ASSERT_EQ(kb.Layouts[0].Keys.size(), 2u);
    EXPECT_EQ(kb.Layouts[0].Keys[1].Code, 0x0001);    // run count 1, inactive 0
    EXPECT_EQ(kb.Layouts[0].Keys[1].X, 0x0302);       // the stray entry's code
}

TEST(KdfReader, TextsAreCutAtAZeroByteAndEmptyOnesLeaveTheTarget) {
    KeySpec k = plainKey(0x41, std::string("ab\0cd", 5));
    k.shifts = {run(1, std::string("ab\0cd", 5)), run(1, ""), run(6, std::string("\0z", 2))};
    LayoutSpec l;
    l.name = std::string("Lay\0out", 7);
    l.keys = {k};
    LayoutSpec empty;  // a layout without keys is valid
    const Bytes bytes = file({KeyboardSpec{"pc", "", {l, empty}, {}}});
    KbKeyboard kb;
    kb.Name = "before";
    ASSERT_EQ(readBytes(bytes, "pc", kb), kKdfOk);
    EXPECT_EQ(kb.Name, "before");  // a block name of length 0 changes nothing
    EXPECT_EQ(kb.Layouts[0].Name, "Lay");
    EXPECT_EQ(kb.Layouts[0].Keys[0].Shifts[0].Label, "ab");
    EXPECT_EQ(kb.Layouts[0].Keys[0].Shifts[1].Label, "");
    EXPECT_EQ(kb.Layouts[0].Keys[0].Shifts[2].Label, "");
    EXPECT_TRUE(kb.Layouts[1].Keys.empty());
    EXPECT_EQ(kb.Layouts[1].Name, "");
}

TEST(KdfModel, GraphicKeyboardGetsGraphicLayoutsAndKeys) {
    GKbHdr header;
    GKbKeyboard kb;
    const Bytes bytes = file({richKeyboard()});
    KdfMemoryInput whole(bytes.data.data(), bytes.size());
    ASSERT_EQ(readKeyboard(header, whole, "pc", kb), kKdfOk);
    for (auto& layout : kb.Layouts) {
        ASSERT_NE(dynamic_cast<GKbLayout*>(&layout), nullptr);
        for (auto& key : layout.Keys) {
            auto* g = dynamic_cast<GKbKey*>(&key);
            ASSERT_NE(g, nullptr);
            EXPECT_EQ(g->Owner, nullptr);  // set by the caller once the keyboard is whole
        }
    }
    kb.setOwners();
    EXPECT_EQ(kb.layout(1).key(0).Owner, &kb.layout(1));
    EXPECT_FALSE(kb.layout(0).Scaled);
    EXPECT_TRUE(header.Keyboards.empty());

    // The header deletes keyboards of either kind that it is given (the sanitizers watch this).
    header.Keyboards.push_back(header.newKeyboard("g"));
    KbHdr plainHeader;
    plainHeader.Keyboards.push_back(plainHeader.newKeyboard("p"));
    plainHeader.Keyboards.push_back(header.newKeyboard("g2"));
    EXPECT_NE(dynamic_cast<GKbKeyboard*>(&header.Keyboards[0]), nullptr);
    EXPECT_EQ(dynamic_cast<GKbKeyboard*>(&plainHeader.Keyboards[0]), nullptr);
    EXPECT_EQ(plainHeader.Keyboards[1].Name, "g2");
}

TEST(KdfModel, AFactoryThatGivesNothingRaisesThePointerContainersError) {
    struct NoLayouts : KbKeyboard {
        KbLayout* newLayout(const std::string&) override { return nullptr; }
    };
    struct NoKeys : KbLayout {
        NoKeys() : KbLayout("") {}
        KbKey* newKey(std::int32_t) override { return nullptr; }
    };
    struct KeylessLayouts : KbKeyboard {
        KbLayout* newLayout(const std::string&) override { return new NoKeys; }
    };
    const Bytes bytes = file({richKeyboard()});
    KbHdr header;
    {
        NoLayouts kb;
        KdfMemoryInput input(bytes.data.data(), bytes.size());
        EXPECT_THROW(readKeyboard(header, input, "pc", kb), boost::bad_pointer);
    }
    {
        KeylessLayouts kb;
        KdfMemoryInput input(bytes.data.data(), bytes.size());
        EXPECT_THROW(readKeyboard(header, input, "pc", kb), boost::bad_pointer);
        EXPECT_EQ(kb.Layouts.size(), 1u);  // owned, and released with the keyboard
    }
}
