#include <gtest/gtest.h>

#include "keyboard/kdf.h"

using qrl::joinPath;

TEST(JoinPath, AbsoluteNamesStandAndOthersGoUnderTheFolder) {
    struct Case {
        std::u16string directory, name, expected;
    };
    const Case cases[] = {
        {u"C:\\kdf", u"at102.kdf", u"C:\\kdf\\at102.kdf"},
        {u"C:\\kdf\\", u"at102.kdf", u"C:\\kdf\\at102.kdf"},
        {u"C:/kdf/", u"at102.kdf", u"C:/kdf/at102.kdf"},
        {u"", u"at102.kdf", u"at102.kdf"},
        {u"", u"", u""},
        {u"C:\\kdf", u"", u"C:\\kdf\\"},
        {u"C:\\kdf", u"\\\\server\\share\\x.kdf", u"\\\\server\\share\\x.kdf"},
        {u"C:\\kdf", u"D:\\x.kdf", u"D:\\x.kdf"},
        {u"C:\\kdf", u"D:/x.kdf", u"D:/x.kdf"},
        {u"C:\\kdf", u"\\x.kdf", u"\\x.kdf"},
        {u"C:\\kdf", u"/x.kdf", u"/x.kdf"},
        {u"C:\\kdf", u"/", u"/"},
        {u"C:\\kdf", u"\\", u"\\"},
        // A drive with nothing or anything but a slash behind it is relative.
        {u"C:\\kdf", u"D:", u"C:\\kdf\\D:"},
        {u"C:\\kdf", u"D:x.kdf", u"C:\\kdf\\D:x.kdf"},
        {u"C:\\kdf", u"sub\\x.kdf", u"C:\\kdf\\sub\\x.kdf"},
        {u"C:\\kdf", u"x", u"C:\\kdf\\x"},
        {u"C:", u"x", u"C:\\x"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(joinPath(c.directory, c.name), c.expected)
            << std::string(c.directory.begin(), c.directory.end()) << " + "
            << std::string(c.name.begin(), c.name.end());
    }
}
