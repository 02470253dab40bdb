#include "properties/printer.h"

#include <vector>

#include <gtest/gtest.h>

#include "properties/devmode.h"

using namespace qrl;

namespace {

uint32_t Le(const std::vector<uint8_t>& b, std::size_t offset, std::size_t width) {
    uint32_t v = 0;
    for (std::size_t i = width; i-- > 0;) v = (v << 8) | b.at(offset + i);
    return v;
}

// 32 numbers as a device mode holds them, with a negative short and a large four-byte field.
const std::u16string kNumbers =
    u"1025 1 220 3 16143 1 9 0 0 100 1 15 600 2 1 600 1 0 96 32 1920 1080 0 60 0 0 0 0 0 0 0 -2147483648";

TPrinterProperty SampleSetup() {
    TPrinterProperty p;
    p.driver = u"winspool";
    p.device = u"Laser 5";
    p.port = u"LPT1:";
    p.useDefault = false;
    p.deviceMode = u"Laser 5";
    p.formName = u"A4";
    p.modeNumbers = kNumbers;
    p.driverExtra = u"000300FF7A";
    return p;
}

}  // namespace

// Each text is read into the same property: reading starts from a fresh one.
TEST(PrinterProperty, ReadWrittenAgainAndShortText) {
    struct Case { std::u16string text, written, shortText; };
    const std::u16string full = u"Laser 5|LPT1:|winspool|0|Laser 5|A4|" + kNumbers + u"|000300FF7A|";
    const Case cases[] = {
        {u"", u"|||1|||||", u"Default printer"},
        {full, full, u"Laser 5 on LPT1:"},
        {u"Laser 5|LPT1:|winspool|1|", u"Laser 5|LPT1:|winspool|1|||||", u"Default printer"},  // useDefault wins
        {u"|LPT1:|winspool|0|", u"|LPT1:|winspool|0|||||", u"Default printer"},  // no device
        {u"Laser|LPT2:|", u"Laser|LPT2:||1|||||", u"Default printer"},  // useDefault not reached: stays on
        {u"Laser|LPT2:|drv|0", u"Laser|LPT2:|drv|0|||||", u"Laser on LPT2:"},  // the last field may lack its "|"
        {u"a|b|c|yes|", u"a|b|c|0|||||", u"a on b"},  // not a number: 0
        {u"a|b|c| 2|", u"a|b|c|1|||||", u"Default printer"},
        {u"1|2|3|0|5|6|7|8|9|10|", u"1|2|3|0|5|6|7|8|", u"1 on 2"},  // fields beyond eight are ignored
    };
    TPrinterProperty p;
    for (const Case& c : cases) {
        ParsePrinter(c.text, p);
        EXPECT_EQ(PrinterToText(p), c.written);
        EXPECT_EQ(PrinterShortText(p), c.shortText);
    }
    EXPECT_EQ(PrinterToText(SampleSetup()), full);
}

TEST(PrinterDeviceMode, BuiltFromTheTextAndReadBack) {
    const TPrinterProperty p = SampleSetup();
    const std::vector<uint8_t> dm = BuildDeviceMode(p);
    ASSERT_EQ(dm.size(), kDevModeSize + 3);
    EXPECT_EQ(Le(dm, 0, 2), u'L');
    EXPECT_EQ(Le(dm, 102, 2), u'A');
    EXPECT_EQ(Le(dm, 64, 2), 1025u);   // dmSpecVersion
    EXPECT_EQ(Le(dm, 68, 2), 220u);    // dmSize
    EXPECT_EQ(Le(dm, 70, 2), 3u);      // dmDriverExtra
    EXPECT_EQ(Le(dm, 72, 4), 16143u);  // dmFields
    EXPECT_EQ(Le(dm, 78, 2), 9u);      // dmPaperSize
    EXPECT_EQ(Le(dm, 166, 2), 96u);    // dmLogPixels
    EXPECT_EQ(Le(dm, 168, 4), 32u);    // dmBitsPerPel
    EXPECT_EQ(Le(dm, 216, 4), 0x80000000u);  // dmPanningHeight
    EXPECT_EQ(dm[220], 0x00);
    EXPECT_EQ(dm[222], 0x7A);

    // The private bytes and every number come back as they were stored.
    TPrinterProperty read;
    ReadDeviceMode(read, dm.data(), dm.size());
    EXPECT_EQ(read.deviceMode + u"|" + read.formName + u"|" + read.modeNumbers + u"|" + read.driverExtra,
              u"Laser 5|A4|" + kNumbers + u"|000300FF7A");

    TPrinterProperty none = p;
    none.modeNumbers.clear();
    EXPECT_TRUE(BuildDeviceMode(none).empty());
    ReadDeviceMode(none, nullptr, 0);
    EXPECT_EQ(none.deviceMode + none.driverExtra, u"");
}

TEST(PrinterDeviceMode, OddTextsKeepTheStoredSizeInABlockNothingReadsPast) {
    TPrinterProperty p;
    p.modeNumbers = u"1 2 999 7";  // a dmSize beyond the structure, a wrong dmDriverExtra, numbers missing
    p.driverExtra = u"0005AABB";   // five announced, two present
    p.deviceMode = std::u16string(40, u'D');
    const std::vector<uint8_t> dm = BuildDeviceMode(p);
    ASSERT_EQ(dm.size(), 999u + 2);  // zeros up to where the stated size and private bytes end
    EXPECT_EQ(Le(dm, 68, 2), 999u);
    EXPECT_EQ(Le(dm, 70, 2), 2u);
    EXPECT_EQ(Le(dm, 72, 4), 0u);
    EXPECT_EQ(Le(dm, 220, 2), 0xBBAAu);  // the private bytes follow the structure
    EXPECT_EQ(Le(dm, 62, 2), u'D');  // 32 characters fill the name without a terminator
    EXPECT_EQ(Le(dm, 64, 2), 1u);
    TPrinterProperty read;
    ReadDeviceMode(read, dm.data(), dm.size());
    EXPECT_EQ(read.deviceMode, std::u16string(32, u'D'));

    p.modeNumbers = u"1 2 156";  // an older, shorter structure
    p.driverExtra = u"zz";
    const std::vector<uint8_t> older = BuildDeviceMode(p);
    EXPECT_EQ(older.size(), kDevModeSize);
    EXPECT_EQ(Le(older, 68, 2), 156u);
}

TEST(PrinterDeviceMode, ReadingStaysInsideTheBlock) {
    std::vector<uint8_t> dm = BuildDeviceMode(SampleSetup());
    TPrinterProperty read;
    // A block cut short: what lies beyond reads as zero, the private bytes are cut.
    ReadDeviceMode(read, dm.data(), 221);
    EXPECT_EQ(read.driverExtra, u"000100");
    ReadDeviceMode(read, dm.data(), 70);
    std::u16string zeros;
    for (int i = 0; i < 29; ++i) zeros += u" 0";
    EXPECT_EQ(read.modeNumbers + u"|" + read.formName + u"|" + read.driverExtra, u"1025 1 220" + zeros + u"||0000");
    ReadDeviceMode(read, dm.data(), 1);
    EXPECT_EQ(read.deviceMode, u"");

    // A block whose dmSize is smaller than the structure: fields beyond it are not read, and the
    // private bytes are taken from where it says.
    dm[68] = 100;
    dm[69] = 0;
    ReadDeviceMode(read, dm.data(), dm.size());
    EXPECT_EQ(read.formName, u"");
    EXPECT_EQ(read.driverExtra.substr(0, 4), u"0003");
    // A dmSize beyond the block leaves no private bytes.
    dm[69] = 0x10;
    ReadDeviceMode(read, dm.data(), dm.size());
    EXPECT_EQ(read.driverExtra, u"0000");
}

TEST(PrinterDevNames, OffsetsInCharactersFromEight) {
    const TPrinterProperty p = SampleSetup();
    const std::vector<uint8_t> dn = BuildDevNames(p);
    EXPECT_EQ(Le(dn, 0, 2), 8u);
    EXPECT_EQ(Le(dn, 2, 2), 8u + 9);
    EXPECT_EQ(Le(dn, 4, 2), 8u + 9 + 8);
    EXPECT_EQ(Le(dn, 6, 2), 0u);  // not the default printer
    EXPECT_EQ(dn.size(), (8u + 9 + 8 + 6) * 2);

    TPrinterProperty read;
    ReadDevNames(read, dn.data(), dn.size());
    EXPECT_EQ(read.driver + u"|" + read.device + u"|" + read.port, u"winspool|Laser 5|LPT1:");

    // Cut inside the port: the name ends with the block. Cut before it: empty.
    ReadDevNames(read, dn.data(), dn.size() - 6);
    EXPECT_EQ(read.port, u"LPT");
    ReadDevNames(read, dn.data(), 40);
    EXPECT_EQ(read.port, u"");
    EXPECT_EQ(read.driver, u"winspool");
    read.driver = u"kept";
    ReadDevNames(read, dn.data(), 6);  // no block: the names stay
    EXPECT_EQ(read.driver, u"kept");

    TPrinterProperty def;
    EXPECT_EQ(Le(BuildDevNames(def), 6, 2), 1u);

    TPrinterProperty huge;
    huge.driver = std::u16string(70000, u'x');
    EXPECT_TRUE(BuildDevNames(huge).empty());
}
