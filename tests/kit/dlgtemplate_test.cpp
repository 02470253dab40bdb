#include "kit/dlgtemplate.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TemplateDialog SampleDialog() {
    TemplateDialog d;
    d.style = 0x90C800C0;
    d.x = 1;
    d.y = 2;
    d.cx = 300;
    d.cy = 170;
    d.title = u"Configure";
    d.fontSize = 8;
    d.fontName = u"Helv";
    return d;
}

TEST(DialogTemplate, HeaderFieldsSitWhereTheDialogManagerReadsThem) {
    TemplateDialog d = SampleDialog();
    const TemplateBytes b = WriteTemplate(d, {});
    // style, exStyle, count, x, y, cx, cy = 18 bytes, then menu 0, class 0, title, size, font
    ASSERT_GE(b.size(), 18u);
    EXPECT_EQ(b[0], 0xC0);
    EXPECT_EQ(b[3], 0x90);
    EXPECT_EQ(b[8], 0);  // no controls
    EXPECT_EQ(b[14] | (b[15] << 8), 300);
    EXPECT_EQ(b[18] | b[19], 0);  // no menu
    EXPECT_EQ(b[20] | b[21], 0);  // standard class
    EXPECT_EQ(b[22], 'C');
    const std::size_t afterTitle = 22 + (9 + 1) * 2;
    EXPECT_EQ(b[afterTitle], 8);  // point size
    EXPECT_EQ(b[afterTitle + 2], 'H');
    EXPECT_EQ(b.size(), afterTitle + 2 + (4 + 1) * 2);

    // Without DS_SETFONT no font fields are written.
    d.style = 0x90C80080;
    EXPECT_EQ(WriteTemplate(d, {}).size(), afterTitle);
}

TEST(DialogTemplate, ItemsAreDwordAlignedAndRoundTrip) {
    std::vector<TemplateItem> items(3);
    items[0] = {0x10010001, 0, 8, 150, 50, 16, 1, u"BUTTON", u"&Ok"};
    items[1] = {0x10810080, 0, -5, 0, 200, 14, 3000, u"EDIT", u""};
    items[2] = {0x10000000, 0, 0, 0, 100, 14, 3004, u"qrsample", u"x"};
    const TemplateBytes b = WriteTemplate(SampleDialog(), items);

    TemplateDialog d;
    std::vector<TemplateItem> back;
    ASSERT_TRUE(ReadTemplate(b.data(), b.size(), d, back));
    EXPECT_EQ(d.title, u"Configure");
    EXPECT_EQ(d.fontName, u"Helv");
    ASSERT_EQ(back.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(back[i].style, items[i].style);
        EXPECT_EQ(back[i].x, items[i].x);
        EXPECT_EQ(back[i].cx, items[i].cx);
        EXPECT_EQ(back[i].id, items[i].id);
        EXPECT_EQ(back[i].className, items[i].className);
        EXPECT_EQ(back[i].caption, items[i].caption);
    }

    // Every item starts on a multiple of four.
    TemplateBytes out;
    const std::size_t countAt = PutDialogHeader(out, SampleDialog());
    EXPECT_EQ(countAt, 8u);
    for (const TemplateItem& item : items) EXPECT_EQ(PutItem(out, item) % 4, 0u);
}

TEST(DialogTemplate, ReaderStopsAtTheEndOfShortInput) {
    std::vector<TemplateItem> items(2);
    items[0] = {0x10000000, 0, 0, 0, 10, 10, 5000, u"STATIC", u"label"};
    items[1] = {0x10000000, 0, 0, 0, 10, 10, 5001, u"STATIC", u"other"};
    const TemplateBytes b = WriteTemplate(SampleDialog(), items);
    TemplateDialog d;
    std::vector<TemplateItem> back;
    for (std::size_t n = 0; n < b.size(); ++n) {
        // Copy into a block of exactly n bytes so that a sanitizer sees any read past it.
        std::vector<std::uint8_t> shortCopy(b.begin(), b.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_FALSE(ReadTemplate(shortCopy.data(), shortCopy.size(), d, back)) << n;
    }
    EXPECT_FALSE(ReadTemplate(nullptr, 0, d, back));
}

// An extended template as the resource compiler writes one: a font with weight, italic and
// character set, controls naming their class by ordinal or by name, and creation data.
struct ExtendedItem {
    std::uint16_t ordinal;  // 0 for a class given by name
    std::u16string_view className, caption;
    std::vector<std::uint8_t> creation;
};

TemplateBytes ExtendedTemplate(const std::vector<ExtendedItem>& items) {
    TemplateBytes b;
    for (std::uint16_t w : {1, 0xFFFF, 7, 0, 0, 0, 0x00C8, 0x80C8}) (void)PutWord(b, w);  // help id 7
    (void)PutWord(b, static_cast<std::uint16_t>(items.size()));
    for (std::uint16_t w : {0, 0, 120, 40, 0, 0}) (void)PutWord(b, w);  // place, no menu, standard class
    (void)PutString(b, u"Map");
    for (std::uint16_t w : {8, 700, 0x0101}) (void)PutWord(b, w);  // size, weight, italic and character set
    (void)PutString(b, u"MS Shell Dlg");
    std::uint32_t id = 1000;
    for (const ExtendedItem& item : items) {
        (void)AlignToDword(b);
        for (std::uint32_t d : {9u, 0x200u, 0x50010000u}) (void)PutDword(b, d);
        for (std::uint16_t w : {4, 5, 60, 14}) (void)PutWord(b, w);
        (void)PutDword(b, id++);
        if (item.ordinal) {
            (void)PutWord(b, 0xFFFF);
            (void)PutWord(b, item.ordinal);
        } else {
            (void)PutString(b, item.className);
        }
        (void)PutString(b, item.caption);
        (void)PutWord(b, static_cast<std::uint16_t>(item.creation.size()));
        b.insert(b.end(), item.creation.begin(), item.creation.end());
    }
    return b;
}

std::u16string_view Versioned(std::u16string_view name, void*) {
    if (name == u"Button") return u"6.0!Button";
    if (name == u"ComboBox") return u"6.0!ComboBox";
    return {};
}

// Only the classes change, whichever way they are named; every other byte is copied, in both
// layouts, and a template cut short anywhere gives nothing rather than a read past its end.
TEST(DialogTemplate, RenamingClassesKeepsEverythingElse) {
    const TemplateBytes extended = ExtendedTemplate({{0x80, u"", u"&Ok", {}},
                                                     {0x82, u"", u"label", {1, 2, 3}},
                                                     {0, u"SysTreeView32", u"", {4, 5}},
                                                     {0x85, u"", u"", {}}});
    const TemplateBytes extendedRenamed = ExtendedTemplate({{0, u"6.0!Button", u"&Ok", {}},
                                                            {0x82, u"", u"label", {1, 2, 3}},
                                                            {0, u"SysTreeView32", u"", {4, 5}},
                                                            {0, u"6.0!ComboBox", u"", {}}});
    EXPECT_EQ(RenameControlClasses(extended.data(), extended.size(), Versioned, nullptr), extendedRenamed);

    std::vector<TemplateItem> items(2);
    items[0] = {0x10000000, 0, 0, 0, 10, 10, 5000, u"Static", u"label"};
    items[1] = {0x10010000, 0, 0, 0, 10, 10, 1, u"Button", u"&Ok"};
    const TemplateBytes plain = WriteTemplate(SampleDialog(), items);
    items[1].className = u"6.0!Button";
    EXPECT_EQ(RenameControlClasses(plain.data(), plain.size(), Versioned, nullptr), WriteTemplate(SampleDialog(), items));

    items.resize(1);
    const TemplateBytes nothingToRename = WriteTemplate(SampleDialog(), items);
    EXPECT_TRUE(RenameControlClasses(nothingToRename.data(), nothingToRename.size(), Versioned, nullptr).empty());

    for (const TemplateBytes* whole : {&extended, &plain}) {
        for (std::size_t n = 0; n < whole->size(); ++n) {
            const std::vector<std::uint8_t> shortCopy(whole->begin(), whole->begin() + static_cast<std::ptrdiff_t>(n));
            EXPECT_TRUE(RenameControlClasses(shortCopy.data(), n, Versioned, nullptr).empty()) << n;
        }
    }
}

}  // namespace
}  // namespace qrl
