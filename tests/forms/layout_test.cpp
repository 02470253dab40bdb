#include "forms/layout.h"

#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl {
namespace {

TRect Sized(int w, int h) { return TRect{0, 0, w, h}; }

// What the layout gives a control it leaves out.
constexpr TRect kAbsent{-1, -1, -1, -1};

TEST(FormLayout, WhereEachControlGoes) {
    const ControlRects editors{
        {IDC_VALUE_FRAME, Sized(400, 60)},  {IDC_VALUE_LABEL, Sized(1000, 13)},  {IDC_VALUE_EDIT, Sized(300, 20)},
        {IDC_FILE_BROWSE, Sized(60, 20)},   {IDC_MACRO_ASSIST, Sized(60, 20)},   {IDC_VALUE_COMBO, Sized(300, 20)},
        {IDC_SSH_IMPORT, Sized(60, 20)},    {IDC_VALUE_CHECK, Sized(300, 16)},   {IDC_PRINTER_TEXT, Sized(300, 20)},
        {IDC_PRINTER_EDIT, Sized(60, 20)},  {IDC_PRINTER_DEFAULT, Sized(75, 20)}};
    ControlRects language = editors;
    language[IDC_LANG_ADD] = Sized(54, 20);
    language[IDC_LANG_DELETE] = Sized(54, 20);
    const struct Case {
        const char* name;
        TRect client;
        ControlRects controls, expected;
    } cases[] = {
        // bottom = 390, buttons from x 10, 4 apart, bottoms aligned; h = 28, y = 390 - 28 - 8 = 354;
        // margin 27: right edge 473
        {"buttons, frame and tree stack from the bottom",
         {0, 0, 500, 400},
         {{IDC_FORM_OK, Sized(75, 26)}, {IDC_FORM_CANCEL, Sized(75, 26)}, {IDC_MODULE_SELECT, Sized(100, 28)},
          {IDC_VALUE_FRAME, Sized(400, 60)}, {IDC_TREE, Sized(150, 150)}},
         {{IDC_FORM_OK, {10, 364, 85, 390}}, {IDC_FORM_CANCEL, {89, 364, 164, 390}},
          {IDC_MODULE_SELECT, {168, 362, 268, 390}}, {IDC_CONNECT, kAbsent},
          {IDC_VALUE_FRAME, {10, 294, 473, 354}}, {IDC_TREE, {10, 10, 473, 280}}}},
        // The frame 6 taller: 8 + 23 > 12 + 13; the edit where it stands without Reset.
        {"Reset at the frame's top right grows the frame, not the editors' row",
         {0, 0, 500, 400},
         {{IDC_VALUE_FRAME, Sized(400, 60)}, {IDC_VALUE_LABEL, Sized(1000, 13)}, {IDC_VALUE_EDIT, Sized(300, 20)},
          {IDC_VALUE_CHECK, Sized(1000, 16)}, {IDC_RESET_VALUE, Sized(60, 23)}},
         {{IDC_VALUE_FRAME, {10, 324, 473, 390}}, {IDC_RESET_VALUE, {386, 332, 446, 355}},
          {IDC_VALUE_LABEL, {30, 336, 382, 349}}, {IDC_VALUE_CHECK, {30, 340, 382, 356}},
          {IDC_VALUE_EDIT, {30, 359, 330, 379}}}},
        {"a small client keeps the bottom at 200, no buttons means no gap",
         {0, 0, 300, 50},
         {{IDC_VALUE_FRAME, Sized(100, 50)}},
         {{IDC_VALUE_FRAME, {10, 150, 273, 200}}}},
        // No buttons: y = 390, R = 446; the edit 30+300 < 402; the printer's text limit 348,
        // button limit 392, default limit 446.
        {"editors inside the frame",
         {0, 0, 500, 400},
         editors,
         {{IDC_VALUE_FRAME, {10, 330, 473, 390}}, {IDC_VALUE_LABEL, {30, 342, 446, 355}},
          {IDC_VALUE_EDIT, {30, 359, 330, 379}}, {IDC_FILE_BROWSE, {334, 359, 394, 379}},
          {IDC_MACRO_ASSIST, {334, 359, 394, 379}}, {IDC_VALUE_CHECK, {30, 346, 330, 362}},
          {IDC_PRINTER_TEXT, {30, 359, 330, 379}}, {IDC_PRINTER_EDIT, {334, 359, 392, 379}},
          {IDC_PRINTER_DEFAULT, {396, 359, 446, 379}}}},
        // The language buttons narrow the drop-down once more: limit 446 - 8 - 108 = 330.
        {"language buttons",
         {0, 0, 500, 400},
         language,
         {{IDC_VALUE_COMBO, {30, 359, 330, 379}}, {IDC_LANG_ADD, {334, 359, 388, 379}},
          {IDC_LANG_DELETE, {392, 359, 446, 379}}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const ControlRects out = LayoutBuiltInForm(c.client, 17, c.controls);
        for (const auto& [id, rect] : c.expected) EXPECT_EQ(out.count(id) ? out.at(id) : kAbsent, rect) << id;
    }
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
