#include "forms/layout.h"

#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TRect Sized(int w, int h) { return TRect{0, 0, w, h}; }

TEST(FormLayout, ButtonsFrameAndTreeStackFromTheBottom) {
    ControlRects c;
    c[IDC_FORM_OK] = Sized(75, 26);
    c[IDC_FORM_CANCEL] = Sized(75, 26);
    c[IDC_MODULE_SELECT] = Sized(100, 28);
    c[IDC_VALUE_FRAME] = Sized(400, 60);
    c[IDC_TREE] = Sized(150, 150);
    const ControlRects out = LayoutBuiltInForm(TRect{0, 0, 500, 400}, 17, c);
    // bottom = 390, buttons from x 10, 4 apart, bottoms aligned
    EXPECT_EQ(out.at(IDC_FORM_OK), (TRect{10, 364, 85, 390}));
    EXPECT_EQ(out.at(IDC_FORM_CANCEL), (TRect{89, 364, 164, 390}));
    EXPECT_EQ(out.at(IDC_MODULE_SELECT), (TRect{168, 362, 268, 390}));
    EXPECT_EQ(out.count(IDC_CONNECT), 0u);
    // h = 28, y = 390 - 28 - 8 = 354; margin 27: right edge 473
    EXPECT_EQ(out.at(IDC_VALUE_FRAME), (TRect{10, 294, 473, 354}));
    EXPECT_EQ(out.at(IDC_TREE), (TRect{10, 10, 473, 280}));
}

TEST(FormLayout, ResetAtTheFramesTopRightGrowsTheFrameNotTheEditorsRow) {
    ControlRects c;
    c[IDC_VALUE_FRAME] = Sized(400, 60);
    c[IDC_VALUE_LABEL] = Sized(1000, 13);
    c[IDC_VALUE_EDIT] = Sized(300, 20);
    c[IDC_VALUE_CHECK] = Sized(1000, 16);
    c[IDC_RESET_VALUE] = Sized(60, 23);
    const ControlRects out = LayoutBuiltInForm(TRect{0, 0, 500, 400}, 17, c);
    EXPECT_EQ(out.at(IDC_VALUE_FRAME), (TRect{10, 324, 473, 390}));  // 6 taller: 8 + 23 > 12 + 13
    EXPECT_EQ(out.at(IDC_RESET_VALUE), (TRect{386, 332, 446, 355}));
    EXPECT_EQ(out.at(IDC_VALUE_LABEL), (TRect{30, 336, 382, 349}));
    EXPECT_EQ(out.at(IDC_VALUE_CHECK), (TRect{30, 340, 382, 356}));
    EXPECT_EQ(out.at(IDC_VALUE_EDIT), (TRect{30, 359, 330, 379}));  // where it stands without Reset
}

TEST(FormLayout, SmallClientKeepsBottomAt200AndNoButtonsMeansNoGap) {
    ControlRects c;
    c[IDC_VALUE_FRAME] = Sized(100, 50);
    const ControlRects out = LayoutBuiltInForm(TRect{0, 0, 300, 50}, 17, c);
    EXPECT_EQ(out.at(IDC_VALUE_FRAME), (TRect{10, 150, 273, 200}));
}

TEST(FormLayout, EditorsInsideTheFrame) {
    ControlRects c;
    c[IDC_VALUE_FRAME] = Sized(400, 60);
    c[IDC_VALUE_LABEL] = Sized(1000, 13);
    c[IDC_VALUE_EDIT] = Sized(300, 20);
    c[IDC_FILE_BROWSE] = Sized(60, 20);
    c[IDC_MACRO_ASSIST] = Sized(60, 20);
    c[IDC_VALUE_COMBO] = Sized(300, 20);
    c[IDC_SSH_IMPORT] = Sized(60, 20);
    c[IDC_VALUE_CHECK] = Sized(300, 16);
    c[IDC_PRINTER_TEXT] = Sized(300, 20);
    c[IDC_PRINTER_EDIT] = Sized(60, 20);
    c[IDC_PRINTER_DEFAULT] = Sized(75, 20);
    const ControlRects out = LayoutBuiltInForm(TRect{0, 0, 500, 400}, 17, c);
    // No buttons: y = 390; frame {10, 330, 473, 390}; R = 446
    const TRect frame = out.at(IDC_VALUE_FRAME);
    ASSERT_EQ(frame, (TRect{10, 330, 473, 390}));
    EXPECT_EQ(out.at(IDC_VALUE_LABEL), (TRect{30, 342, 446, 355}));
    EXPECT_EQ(out.at(IDC_VALUE_EDIT), (TRect{30, 359, 330, 379}));  // 30+300 < 402
    EXPECT_EQ(out.at(IDC_FILE_BROWSE), (TRect{334, 359, 394, 379}));
    EXPECT_EQ(out.at(IDC_MACRO_ASSIST), out.at(IDC_FILE_BROWSE));
    EXPECT_EQ(out.at(IDC_VALUE_CHECK), (TRect{30, 346, 330, 362}));
    // printer: text limit 348, button limit 392, default limit 446
    EXPECT_EQ(out.at(IDC_PRINTER_TEXT), (TRect{30, 359, 330, 379}));
    EXPECT_EQ(out.at(IDC_PRINTER_EDIT), (TRect{334, 359, 392, 379}));
    EXPECT_EQ(out.at(IDC_PRINTER_DEFAULT), (TRect{396, 359, 446, 379}));

    // The language buttons narrow the drop-down once more.
    c[IDC_LANG_ADD] = Sized(54, 20);
    c[IDC_LANG_DELETE] = Sized(54, 20);
    const ControlRects lang = LayoutBuiltInForm(TRect{0, 0, 500, 400}, 17, c);
    EXPECT_EQ(lang.at(IDC_VALUE_COMBO), (TRect{30, 359, 330, 379}));  // limit 446 - 8 - 108 = 330
    EXPECT_EQ(lang.at(IDC_LANG_ADD), (TRect{334, 359, 388, 379}));
    EXPECT_EQ(lang.at(IDC_LANG_DELETE), (TRect{392, 359, 446, 379}));
}

TEST(FormSize, StoredTextReadsOnlyAsTwoPositiveSides) {
    EXPECT_EQ(ParseWindowSize(u"640,480"), (TWindowSize{640, 480}));
    for (const char16_t* broken : {u"640, 480", u"640", u"0,480", u"-5,480", u"99999,480", u"640,480,1", u""})
        EXPECT_FALSE(ParseWindowSize(broken)) << std::string(broken, broken + std::char_traits<char16_t>::length(broken));
    EXPECT_EQ(WindowSizeText({640, 480}), u"640,480");
    EXPECT_EQ(ScaleWindowSize({640, 481}, 96, 144), (TWindowSize{960, 722}));  // rounded
    EXPECT_EQ(ScaleWindowSize({960, 722}, 144, 96), (TWindowSize{640, 481}));
}

}  // namespace
}  // namespace qrl
