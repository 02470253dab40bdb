#include "colours/paletteimport.h"

#include "platform/tempfolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace qrl {
namespace {

std::string Sample(const char* name) {
    std::ifstream in(std::string(QRL_SOURCE_DIR) + "/samples/palettes/" + name, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// Every three entries of a palette on one line, so that one comparison shows a whole import.
std::string Hex(const std::array<uint32_t, 16>& colours) {
    std::string text;
    char cell[8];
    for (uint32_t c : colours) {
        std::snprintf(cell, sizeof cell, "%06X ", c);
        text += cell;
    }
    return text;
}

// The sample scheme in a file of the three kinds gives the same sixteen colours and text colours.
TEST(PaletteImport, EachKindOfFileReadsItsSixteenColoursAndTextColours) {
    const std::string evening = "241A18 5850C8 60B070 58B0E0 C88858 C070A0 B8B058 CCC4C0 "
                                "786C68 8078E8 80D090 80D0F0 E8A880 E098C8 D8D080 FFFFFF ";
    for (const char* file : {"evening.itermcolors", "evening.Xresources"}) {
        SCOPED_TRACE(file);
        const TPaletteImport import = ReadPaletteFile(Sample(file));
        ASSERT_TRUE(import.ok()) << std::string(import.error.begin(), import.error.end());
        ASSERT_EQ(import.schemes.size(), 1u);
        EXPECT_EQ(Hex(import.schemes[0].ansi), evening);
        EXPECT_EQ(import.schemes[0].foreground, 0xCCC4C0u);
        EXPECT_EQ(import.schemes[0].background, 0x241A18u);
    }
    const TPaletteImport harbour = ReadPaletteFile(Sample("harbour.json"));
    ASSERT_TRUE(harbour.ok());
    EXPECT_EQ(harbour.schemes[0].name, u"Harbour");
    EXPECT_EQ(harbour.schemes[0].ansi[1], 0x4040D0u);  // "red"
    EXPECT_EQ(harbour.schemes[0].ansi[13], 0xE080C0u);  // "brightPurple"
}

TEST(PaletteImport, ASettingsFileOffersEveryScheme) {
    std::string one = Sample("harbour.json");
    std::string two = one;
    two.replace(two.find("Harbour"), 7, "Second");
    const TPaletteImport import =
        ReadPaletteFile("// settings\n{ \"profiles\": {}, /* kept */ \"schemes\": [" + one + "," + two + "] }");
    ASSERT_TRUE(import.ok());
    ASSERT_EQ(import.schemes.size(), 2u);
    EXPECT_EQ(import.schemes[1].name, u"Second");
}

// A file that does not read says why, and where when it can; every kind of colour text is read.
TEST(PaletteImport, BrokenFilesGiveTheirReason) {
    std::string wrongColour = Sample("harbour.json");
    wrongColour.replace(wrongColour.find("#D04040"), 7, "#D0404");
    std::string numberColour = Sample("harbour.json");
    numberColour.replace(numberColour.find("\"#D04040\""), 9, "[[1]]");
    std::string noGreen = Sample("harbour.json");
    noGreen.replace(noGreen.find("\"green\""), 7, "\"Green\"");
    std::string plist = Sample("evening.itermcolors");
    std::string noComponent = plist;
    noComponent.replace(noComponent.find("Red Component"), 3, "Rod");
    const struct { std::string file; const char16_t* message; } cases[] = {
        {"{\n  \"name\": \"x\",\n  oops }", u"line 3, column 3: the file is not valid JSON"},
        {"{}", u"no colour \"black\""},
        {"{ \"schemes\": [] }", u"the file holds no colour scheme"},
        {"{ \"schemes\": [1] }", u"a scheme is not an object"},
        {wrongColour, u"\"Harbour\": \"#D0404\" is not a colour (\"red\")"},
        {numberColour, u"\"Harbour\": \"array\" is not a colour (\"red\")"},
        {noGreen, u"\"Harbour\": no colour \"green\""},
        {"<plist><dict>\n<key>x</dict></plist>", u"line 2, column 12: the file is not valid XML (error 13)"},
        {"<plist><array/></plist>", u"the file is not a property list of colours"},
        {noComponent, u"\"dict\" is not a colour (\"Ansi 0 Color\")"},
        {plist.substr(0, plist.find("<key>Ansi 15")) + "</dict></plist>", u"no colour \"Ansi 15 Color\""},
        {"! nothing here\n", u"no colour \"color0\""},
        {"*color0: #000\n*color1:  rgb:1/22/333x\n", u"line 2, column 11: \"rgb:1/22/333x\" is not a colour (\"color1\")"},
        {"*background: #12345g", u"line 1, column 14: \"#12345g\" is not a colour (\"background\")"},
    };
    for (const auto& c : cases) {
        const TPaletteImport import = ReadPaletteFile(c.file);
        EXPECT_TRUE(import.schemes.empty()) << c.file;
        EXPECT_EQ(PaletteImportMessage(import), c.message) << c.file;
    }
    // Short and long channels scale as X11 scales them; a colour may be given twice, the last counts.
    std::string resources;
    for (int i = 0; i < 16; ++i) resources += "*color" + std::to_string(i) + ": #000000\n";
    resources += "*color1: rgb:f/80/ffff\ncolor2: #abc\n*color05: #ffffff\n*color16: #ffffff\n";
    const TPaletteImport scaled = ReadPaletteFile(resources);
    ASSERT_TRUE(scaled.ok());
    EXPECT_EQ(Hex(scaled.schemes[0].ansi).substr(0, 28), "000000 FF80FF CCBBAA 000000 ");
    EXPECT_EQ(scaled.schemes[0].ansi[5], 0u);  // "color05" and "color16" name no colour
}

TEST(PaletteExport, AnsiColoursGoByMeaningAndExportImportsBack) {
    TPalette palette{};
    for (uint32_t i = 0; i < kPaletteSize; ++i) palette[i] = i * 0x111111;
    // ANSI red is the palette's red (4), ANSI blue its blue (1).
    EXPECT_EQ(Hex(AnsiFromPalette(palette)), "000000 444444 222222 666666 111111 555555 333333 777777 "
                                             "888888 CCCCCC AAAAAA EEEEEE 999999 DDDDDD BBBBBB FFFFFF ");
    EXPECT_EQ(PaletteFromAnsi(AnsiFromPalette(palette)), palette);
    EXPECT_EQ(NearestPaletteIndex(palette, 0x121212), 1u);
    EXPECT_EQ(NearestPaletteIndex(palette, 0xFFFFFF), 15u);

    const std::string written = WriteTerminalScheme(u"Night \"1\"", palette, palette[7], palette[0]);
    const std::string head = "{\n    \"name\": \"Night \\\"1\\\"\",\n    \"foreground\": \"#777777\",\n"
                             "    \"background\": \"#000000\",\n    \"black\": \"#000000\",\n";
    EXPECT_EQ(written.substr(0, head.size()), head);
    const TPaletteImport back = ReadPaletteFile(written);
    ASSERT_TRUE(back.ok());
    EXPECT_EQ(back.schemes[0].name, u"Night \"1\"");
    EXPECT_EQ(PaletteFromAnsi(back.schemes[0].ansi), palette);
    EXPECT_EQ(WriteTerminalScheme(back.schemes[0].name, PaletteFromAnsi(back.schemes[0].ansi), palette[7], palette[0]),
              written);
}

}  // namespace
}  // namespace qrl
