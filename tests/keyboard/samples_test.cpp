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

const KbKey* keyOf(const KbLayout& layout, int code) {
    for (const KbKey& key : layout.Keys) {
        if (key.Code == code) {
            return &key;
        }
    }
    return nullptr;
}

const KbKey* keyAt(const KbLayout& layout, int x, int y) {
    for (const KbKey& key : layout.Keys) {
        if (key.X == x && key.Y == y) {
            return &key;
        }
    }
    return nullptr;
}

// A picture drawn from the layout shows every key whole: none overlaps another.
void expectNoOverlap(const KbLayout& layout) {
    for (std::size_t i = 0; i < layout.Keys.size(); ++i) {
        const KbKey& a = layout.Keys[i];
        EXPECT_GT(a.Width, 0);
        EXPECT_GT(a.Height, 0);
        EXPECT_GE(a.X, 0);
        EXPECT_GE(a.Y, 0);
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
    ASSERT_EQ(kb.Layouts.size(), 2u);
    const KbLayout& uk = kb.Layouts[0];
    const KbLayout& de = kb.Layouts[1];
    EXPECT_EQ(uk.Name, "United Kingdom");
    EXPECT_EQ(de.Name, "Deutschland");
    for (const KbLayout* layout : {&uk, &de}) {
        EXPECT_EQ(layout->Keys.size(), 102u);
        EXPECT_EQ(layout->KeyUnit, 22);
        expectNoOverlap(*layout);
        for (const KbKey& key : layout->Keys) {
            for (int s = 0; s < 8; ++s) {
                EXPECT_TRUE(key.Code == 0x20 || !key.Shifts[s].Label.empty()) << key.Code;
                EXPECT_FALSE(key.Shifts[s].Inactive);
            }
        }
        // The big Enter key spans two rows; the keypad's + and Enter do too, 0 is double width.
        const KbKey* enter = keyOf(*layout, 0x0D);
        ASSERT_NE(enter, nullptr);
        EXPECT_EQ(enter->X, 570);
        EXPECT_EQ(enter->Y, 120);
        EXPECT_EQ(enter->Width, 48);
        EXPECT_EQ(enter->Height, 78);
        EXPECT_EQ(keyOf(*layout, 0x6B)->Height, 78);
        EXPECT_EQ(keyOf(*layout, 0x400D)->Height, 78);
        EXPECT_EQ(keyOf(*layout, 0x60)->Width, 78);
        EXPECT_EQ(keyOf(*layout, 0x20)->Width, 278);
        EXPECT_EQ(keyOf(*layout, 0x90)->ModifierMask, 16);
        EXPECT_EQ(keyOf(*layout, 0x4012)->ModifierMask, 6);
        EXPECT_EQ(keyOf(*layout, 0x10)->ModifierMask, 1);
        const KbKey* seven = keyOf(*layout, 0x67);
        EXPECT_EQ(seven->AltCode, 0x24);
        EXPECT_EQ(seven->Shifts[0].Label, "7");
        EXPECT_EQ(seven->AltShifts[0].Code, 0x24);
    }
    EXPECT_EQ(keyOf(uk, 0x67)->AltShifts[3].Label, "Home");
    EXPECT_EQ(keyOf(de, 0x67)->AltShifts[3].Label, "Pos1");
    // The same position carries Y in one layout and Z in the other, with the matching code.
    EXPECT_EQ(keyAt(uk, 280, 120)->Code, 0x59);
    EXPECT_EQ(keyAt(uk, 280, 120)->Shifts[0].Label, "Y");
    EXPECT_EQ(keyAt(de, 280, 120)->Code, 0x5A);
    EXPECT_EQ(keyAt(de, 280, 120)->Shifts[0].Label, "Z");
    EXPECT_EQ(keyOf(uk, 0x33)->Shifts[1].Label, "\xA3");  // narrow text: the pound sign
    EXPECT_EQ(keyOf(de, 0x33)->Shifts[1].Label, "\xA7");
    EXPECT_EQ(keyOf(de, 0x33)->Shifts[6].Label, "\xB3");  // Alt Gr
    EXPECT_EQ(keyOf(de, 0x51)->Shifts[6].Label, "@");
    EXPECT_EQ(keyOf(de, 0x51)->Shifts[5].Label, "Q");
    EXPECT_EQ(keyOf(de, 0xDB)->Shifts[0].Label, "\xDF");
    EXPECT_EQ(keyOf(de, 0xDB)->Shifts[6].Label, "\\");

    KbKeyboard wrongCase;
    EXPECT_EQ(readSample("at102.kdf", "PC", wrongCase), kKdfNoKeyboard);
}

TEST(SampleKeyboards, Ibm5250Has122KeysAndNoCtrlStates) {
    KbKeyboard kb;
    ASSERT_EQ(readSample("IBM5250.kdf", "IBM5250", kb), kKdfOk);
    ASSERT_EQ(kb.Layouts.size(), 2u);
    EXPECT_EQ(kb.Layouts[0].Name, "US English");
    EXPECT_EQ(kb.Layouts[1].Name, "Deutsch");
    for (const KbLayout& layout : kb.Layouts) {
        EXPECT_EQ(layout.Keys.size(), 122u);
        expectNoOverlap(layout);
        for (int f = 0x70; f <= 0x87; ++f) {  // F1 to F24
            ASSERT_NE(keyOf(layout, f), nullptr) << f;
        }
        const KbKey* fieldExit = keyOf(layout, 0x94);
        EXPECT_EQ(fieldExit->Height, 78);
        const KbKey* a = keyOf(layout, 0x41);
        EXPECT_FALSE(a->Shifts[1].Inactive);
        EXPECT_FALSE(a->Shifts[4].Inactive);
        EXPECT_TRUE(a->Shifts[2].Inactive);
        EXPECT_TRUE(a->Shifts[7].Inactive);
    }
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x94)->Shifts[0].Label, "FldExit");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x94)->Shifts[0].Label, "FeldEnde");
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x59)->Shifts[0].Label, "Y");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x59)->Shifts[0].Label, "Z");  // legends move, codes stay
}

TEST(SampleKeyboards, Tandem653xHasShiftedFunctionKeysAndNoAltStates) {
    KbKeyboard kb;
    ASSERT_EQ(readSample("T653X.kdf", "T653X", kb), kKdfOk);
    ASSERT_EQ(kb.Layouts.size(), 2u);
    EXPECT_EQ(kb.Layouts[0].Name, "US ASCII");
    EXPECT_EQ(kb.Layouts[1].Name, "UK");
    for (const KbLayout& layout : kb.Layouts) {
        EXPECT_EQ(layout.Keys.size(), 108u);
        expectNoOverlap(layout);
        const KbKey* f1 = keyOf(layout, 0x70);
        EXPECT_EQ(f1->Shifts[0].Label, "F1");
        EXPECT_EQ(f1->Shifts[1].Label, "SF1");
        EXPECT_TRUE(f1->Shifts[2].Inactive);
        const KbKey* ctrl = keyOf(layout, 0xC3);
        EXPECT_EQ(ctrl->ModifierMask, 2);
        EXPECT_FALSE(keyOf(layout, 0x41)->Shifts[3].Inactive);
        EXPECT_TRUE(keyOf(layout, 0x41)->Shifts[4].Inactive);
    }
    EXPECT_EQ(keyOf(kb.Layouts[0], 0x33)->Shifts[1].Label, "#");
    EXPECT_EQ(keyOf(kb.Layouts[1], 0x33)->Shifts[1].Label, "\xA3");
}
