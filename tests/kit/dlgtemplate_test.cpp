#include "kit/dlgtemplate.h"

#include <gtest/gtest.h>

#include <tuple>

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
    const auto fields = [](const TemplateItem& i) {
        return std::tuple(i.style, i.exStyle, i.x, i.y, i.cx, i.cy, i.id, i.className, i.caption);
    };
    ASSERT_EQ(back.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(fields(back[i]), fields(items[i])) << i;

    // Every item starts on a multiple of four.
    TemplateBytes out;
    const std::size_t countAt = PutDialogHeader(out, SampleDialog());
    EXPECT_EQ(countAt, 8u);
    for (const TemplateItem& item : items) EXPECT_EQ(PutItem(out, item) % 4, 0u);
}

// An extended template as the resource compiler writes one: a font with weight, italic and
// character set, and controls with creation data naming their class by name, or by ordinal (a
// class of one character here).
struct ExtendedItem {
    std::u16string_view className;
    std::vector<std::uint8_t> creation;
};

TemplateBytes ExtendedTemplate(const std::vector<ExtendedItem>& items) {
    TemplateBytes b;
    // version, signature, help id, extended style, style, count, place, no menu, standard class
    for (int w : {1, 0xFFFF, 7, 0, 0, 0, 0xC8, 0x80C8, static_cast<int>(items.size()), 0, 0, 120, 40, 0, 0})
        (void)PutWord(b, static_cast<std::uint16_t>(w));
    (void)PutString(b, u"Map");
    for (std::uint16_t w : {8, 700, 0x0101}) (void)PutWord(b, w);  // size, weight, italic and character set
    (void)PutString(b, u"MS Shell Dlg");
    for (const ExtendedItem& item : items) {
        (void)AlignToDword(b);
        // help id, extended style, style, place, id
        for (std::uint16_t w : {9, 0, 0x200, 0, 0, 0x5001, 4, 5, 60, 14, 1000, 0}) (void)PutWord(b, w);
        if (item.className.size() != 1) (void)PutString(b, item.className);
        else for (char16_t w : {char16_t{0xFFFF}, item.className[0]}) (void)PutWord(b, w);
        (void)PutString(b, u"&Ok");
        (void)PutWord(b, static_cast<std::uint16_t>(item.creation.size()));
        b.insert(b.end(), item.creation.begin(), item.creation.end());
    }
    return b;
}

std::u16string_view Versioned(std::u16string_view name, void*) {
    return name == u"Button" ? u"6.0!Button" : name == u"ComboBox" ? u"6.0!ComboBox" : u"";
}

// Only the classes change, whichever way they are named; every other byte is copied, in both
// layouts, and a template cut short anywhere gives nothing rather than a read past its end, to the
// renamer as to the reader.
TEST(DialogTemplate, RenamingClassesKeepsEverythingElse) {
    const TemplateBytes extended = ExtendedTemplate({{u"\x80", {}}, {u"\x82", {1, 2, 3}}, {u"SysTreeView32", {4, 5}}, {u"\x85", {}}});
    EXPECT_EQ(RenameControlClasses(extended.data(), extended.size(), Versioned, nullptr),
              ExtendedTemplate({{u"6.0!Button", {}}, {u"\x82", {1, 2, 3}}, {u"SysTreeView32", {4, 5}}, {u"6.0!ComboBox", {}}}));

    std::vector<TemplateItem> items{{0x10000000, 0, 0, 0, 10, 10, 5000, u"Static", u"label"},
                                    {0x10010000, 0, 0, 0, 10, 10, 1, u"Button", u"&Ok"}};
    const TemplateBytes plain = WriteTemplate(SampleDialog(), items);
    items[1].className = u"6.0!Button";
    EXPECT_EQ(RenameControlClasses(plain.data(), plain.size(), Versioned, nullptr), WriteTemplate(SampleDialog(), items));
    const TemplateBytes nothingToRename = WriteTemplate(SampleDialog(), {items[0]});
    EXPECT_TRUE(RenameControlClasses(nothingToRename.data(), nothingToRename.size(), Versioned, nullptr).empty());

    TemplateDialog d;
    std::vector<TemplateItem> back;
    EXPECT_FALSE(ReadTemplate(nullptr, 0, d, back));
    for (const TemplateBytes* whole : {&extended, &plain}) {
        for (std::size_t n = 0; n < whole->size(); ++n) {
            // A block of exactly n bytes, so that a sanitizer sees any read past it.
            const std::vector<std::uint8_t> shortCopy(whole->begin(), whole->begin() + static_cast<std::ptrdiff_t>(n));
            EXPECT_TRUE(RenameControlClasses(shortCopy.data(), n, Versioned, nullptr).empty()) << n;
            EXPECT_FALSE(whole == &plain && ReadTemplate(shortCopy.data(), n, d, back)) << n;  // the reader reads plain ones
        }
    }
}

}  // namespace
}  // namespace qrl
