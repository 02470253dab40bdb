// The sample keyboards that come with the sources: read back through the module's reader, they
// must give the boards they describe.
#include <gtest/gtest.h>

#include <cstdio>

#include "keyboard/kdf.h"

using namespace qrl;

namespace {

int readSample(const char* file, const std::string& name, KbKeyboard& keyboard) {
    const std::string path = std::string(QRL_SOURCE_DIR) + "/samples/keyboards/" + file;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (f == nullptr) {
        ADD_FAILURE() << "cannot open " << path;
        return 1;
    }
    KbHdr header;
    const int result = readKeyboard(header, f, name, keyboard);
    std::fclose(f);
    return result;
}

// The key of a code; a missing one fails the test rather than crashing it.
const KbKey& keyOf(const KbLayout& layout, int code) {
    for (const KbKey& key : layout.Keys) {
        if (key.Code == code) return key;
    }
    ADD_FAILURE() << layout.Name << ": no key " << code;
    static const KbKey none(0);
    return none;
}

const KbKey* keyAt(const KbLayout& layout, int x, int y) {
    for (const KbKey& key : layout.Keys) {
        if (key.X == x && key.Y == y) return &key;
    }
    return nullptr;
}

std::string names(const KbKeyboard& kb) {
    std::string out;
    for (const KbLayout& l : kb.Layouts) out += (out.empty() ? "" : "|") + l.Name;
    return out;
}

// The inactive flags of a key's eight states as 0 and 1.
std::string inactive(const KbKey& key) {
    std::string out;
    for (const KbKeyShift& s : key.Shifts) out += s.Inactive ? '1' : '0';
    return out;
}

// A picture drawn from the layout shows every key whole: none overlaps another.
void expectNoOverlap(const KbLayout& layout) {
    for (std::size_t i = 0; i < layout.Keys.size(); ++i) {
        const KbKey& a = layout.Keys[i];
        EXPECT_TRUE(a.Width > 0 && a.Height > 0 && a.X >= 0 && a.Y >= 0) << layout.Name << ": key " << a.Code;
        for (std::size_t j = i + 1; j < layout.Keys.size(); ++j) {
            const KbKey& b = layout.Keys[j];
            const bool apart = a.X + a.Width <= b.X || b.X + b.Width <= a.X ||
                               a.Y + a.Height <= b.Y || b.Y + b.Height <= a.Y;
            EXPECT_TRUE(apart) << layout.Name << ": keys " << a.Code << " and " << b.Code;
        }
    }
}

}  // namespace

TEST(SampleKeyboards, At102IsAnIsoPcKeyboardInTwoLayouts) {
    KbKeyboard kb;
    ASSERT_EQ(readSample("at102.kdf", "pc", kb), kKdfOk);
    EXPECT_EQ(kb.Name, "pc");
    ASSERT_EQ(names(kb), "United Kingdom|Deutschland");
    const KbLayout& uk = kb.Layouts[0];
    const KbLayout& de = kb.Layouts[1];
    for (const KbLayout* layout : {&uk, &de}) {
        EXPECT_EQ(layout->Keys.size(), 102u);
        EXPECT_EQ(layout->KeyUnit, 22);
        expectNoOverlap(*layout);
        for (const KbKey& key : layout->Keys) {
            for (const KbKeyShift& s : key.Shifts) EXPECT_TRUE(key.Code == 0x20 || !s.Label.empty()) << key.Code;
            EXPECT_EQ(inactive(key), "00000000") << key.Code;
        }
        // The big Enter key spans two rows; the keypad's + and Enter do too, 0 is double width.
        const KbKey& enter = keyOf(*layout, 0x0D);
        using V = std::vector<int>;
        EXPECT_EQ(V({enter.X, enter.Y, enter.Width, enter.Height}), V({570, 120, 48, 78}));
        EXPECT_EQ(keyOf(*layout, 0x6B).Height, 78);
        EXPECT_EQ(keyOf(*layout, 0x400D).Height, 78);
        EXPECT_EQ(keyOf(*layout, 0x60).Width, 78);
        EXPECT_EQ(keyOf(*layout, 0x20).Width, 278);
        EXPECT_EQ(keyOf(*layout, 0x90).ModifierMask, 16);
        EXPECT_EQ(keyOf(*layout, 0x4012).ModifierMask, 6);
        EXPECT_EQ(keyOf(*layout, 0x10).ModifierMask, 1);
        const KbKey& seven = keyOf(*layout, 0x67);
        EXPECT_EQ(seven.AltCode, 0x24);
        EXPECT_EQ(seven.Shifts[0].Label, "7");
        EXPECT_EQ(seven.AltShifts[0].Code, 0x24);
    }
    EXPECT_EQ(keyOf(uk, 0x67).AltShifts[3].Label, "Home");
    EXPECT_EQ(keyOf(de, 0x67).AltShifts[3].Label, "Pos1");
    // The same position carries Y in one layout and Z in the other, with the matching code.
    ASSERT_NE(keyAt(uk, 280, 120), nullptr);
    ASSERT_NE(keyAt(de, 280, 120), nullptr);
    EXPECT_EQ(keyAt(uk, 280, 120)->Code, 0x59);
    EXPECT_EQ(keyAt(uk, 280, 120)->Shifts[0].Label, "Y");
    EXPECT_EQ(keyAt(de, 280, 120)->Code, 0x5A);
    EXPECT_EQ(keyAt(de, 280, 120)->Shifts[0].Label, "Z");
    EXPECT_EQ(keyOf(uk, 0x33).Shifts[1].Label, "\xA3");  // narrow text: the pound sign
    EXPECT_EQ(keyOf(de, 0x33).Shifts[1].Label, "\xA7");
    EXPECT_EQ(keyOf(de, 0x33).Shifts[6].Label, "\xB3");  // Alt Gr
    EXPECT_EQ(keyOf(de, 0x51).Shifts[6].Label, "@");
    EXPECT_EQ(keyOf(de, 0x51).Shifts[5].Label, "Q");
    EXPECT_EQ(keyOf(de, 0xDB).Shifts[0].Label, "\xDF");
    EXPECT_EQ(keyOf(de, 0xDB).Shifts[6].Label, "\\");

    KbKeyboard wrongCase;
    EXPECT_EQ(readSample("at102.kdf", "PC", wrongCase), kKdfNoKeyboard);
}

TEST(SampleKeyboards, Ibm5250Has122KeysAndNoCtrlStates) {
    KbKeyboard kb;
    ASSERT_EQ(readSample("IBM5250.kdf", "IBM5250", kb), kKdfOk);
    ASSERT_EQ(names(kb), "US English|Deutsch");
    for (const KbLayout& layout : kb.Layouts) {
        EXPECT_EQ(layout.Keys.size(), 122u);
        expectNoOverlap(layout);
        for (int f = 0x70; f <= 0x87; ++f) keyOf(layout, f);  // F1 to F24 are there
        EXPECT_EQ(keyOf(layout, 0x94).Height, 78);  // Field Exit
        EXPECT_EQ(inactive(keyOf(layout, 0x41)), "00110011");
    }
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x94).Shifts[0].Label, "FldExit");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x94).Shifts[0].Label, "FeldEnde");
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x59).Shifts[0].Label, "Y");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x59).Shifts[0].Label, "Z");  // legends move, codes stay
}

TEST(SampleKeyboards, Tandem653xHasShiftedFunctionKeysAndNoAltStates) {
    KbKeyboard kb;
    ASSERT_EQ(readSample("T653X.kdf", "T653X", kb), kKdfOk);
    ASSERT_EQ(names(kb), "US ASCII|UK");
    for (const KbLayout& layout : kb.Layouts) {
        EXPECT_EQ(layout.Keys.size(), 108u);
        expectNoOverlap(layout);
        const KbKey& f1 = keyOf(layout, 0x70);
        EXPECT_EQ(f1.Shifts[0].Label + "|" + f1.Shifts[1].Label, "F1|SF1");
        EXPECT_TRUE(f1.Shifts[2].Inactive);
        EXPECT_EQ(keyOf(layout, 0xC3).ModifierMask, 2);  // Ctrl
        EXPECT_EQ(inactive(keyOf(layout, 0x41)), "00001111");
    }
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x33).Shifts[1].Label, "#");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x33).Shifts[1].Label, "\xA3");
}
