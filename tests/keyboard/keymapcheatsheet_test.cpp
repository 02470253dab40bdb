#include <gtest/gtest.h>

#include "keyboard/keymapcheatsheet.h"
#include "keyboard/keymapsettings.h"
#include "platform/platform.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

#include <functional>

namespace qrl {
namespace {

using AdvXMLParser::Element;

// The sample request with its keyboards, and a string on a key of the picture that needs cutting.
std::string SampleSheet() {
    std::string bytes;
    EXPECT_TRUE(platform::readFile(std::string(QRL_SOURCE_DIR) + "/samples/keymap_request.xml", bytes));
    std::u16string request = utf8ToUtf16(bytes);
    const std::u16string from = u"samples\\keyboards";
    request.replace(request.find(from), from.size(), toU16(QRL_SOURCE_DIR "/samples/keyboards"));
    TConfigSession session;
    session.LoadRequestText(request);
    KeyDataOf(session).keyStrings.push_back({114, u"a <long> & winding string"});
    return CheatSheetFor(KeymapSettings(session));
}

void Walk(const Element& element, const std::function<void(const Element&)>& visit) {
    visit(element);
    for (std::size_t i = 0; i < element.GetChildCount(); ++i)
        if (const Element* child = element.GetChild(i).AsElement()) Walk(*child, visit);
}

TEST(CheatSheet, IsWellFormedSelfContainedAndNamesEveryMapping) {
    const std::string sheet = SampleSheet();
    const std::u16string text = utf8ToUtf16(sheet);
    std::unique_ptr<AdvXMLParser::Document> page;
    ASSERT_NO_THROW(page = AdvXMLParser::Parser().Parse(text.data(), text.size()));
    std::vector<std::u16string> rows, keyTexts;
    std::size_t pictures = 0;
    Walk(*page->Root(), [&](const Element& e) {
        EXPECT_NE(e.GetName(), u"script");
        EXPECT_TRUE(e.GetAttribute(u"src").GetText().empty() && e.GetAttribute(u"href").GetText().empty());
        if (e.GetName() == u"svg") ++pictures;
        if (e.GetName() == u"text") keyTexts.push_back(e.GetText());
        if (e.GetName() != u"tr") return;
        std::u16string row;
        for (std::size_t i = 0; i < e.GetChildCount(); ++i)
            if (e.GetChild(i).GetName() == u"td") row += e.GetChild(i).GetText() + u"|";
        if (!row.empty()) rows.push_back(row);
    });
    EXPECT_EQ(pictures, 2u);
    EXPECT_EQ(rows, (std::vector<std::u16string>{u"Enter|emulation key|Enter|", u"F1|emulation key|F1|",
                                                 u"F2|emulation key|F2|", u"Sh+F2|string|logoff|",
                                                 u"F3|string|a <long> & winding string|",
                                                 u"Ctrl+F3|global string|signon|", u"Keypad Enter|emulation key|Enter|"}));
    // On the PC picture F3 shows its string cut short; on the emulation picture Enter names its senders.
    for (const std::u16string label : {u"\"a <long\u2026", u"\"logoff\"", u"\"signon\"", u"Enter, Keypad\u2026"})
        EXPECT_NE(std::find(keyTexts.begin(), keyTexts.end(), label), keyTexts.end()) << utf16ToUtf8(label);
    EXPECT_NE(sheet.find("@page { size: A4 landscape"), std::string::npos);
}

}  // namespace
}  // namespace qrl
