// Nesting is limited by memory only: reading, writing, cloning, text and destruction keep their own
// stacks, also for trees changed after parsing. A million levels would overflow any thread's stack
// at one frame per level.
#include <gtest/gtest.h>

#include "xml_testing.h"

using namespace AdvXMLParser;
using xmltest::Parse;
using xmltest::WrittenCompact;

namespace {

constexpr std::size_t kDepth = 1000000;

std::u16string Nested(std::size_t depth) {
    std::u16string text;
    text.reserve(depth * 7 + 8);
    for (std::size_t i = 0; i < depth; ++i) text += u"<a>";
    text += u"x";
    for (std::size_t i = 0; i < depth; ++i) text += u"</a>";
    return text;
}

TEST(XmlDeep, AMillionLevelsParseWriteCloneAndFree) {
    const std::u16string text = Nested(kDepth);
    auto doc = Parse(text);
    std::size_t depth = 1;
    Element* deepest = doc->Root();
    while (deepest->GetChild(0).AsElement()) {
        deepest = deepest->GetChild(0).AsElement();
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    EXPECT_EQ(deepest->GetChild(0).GetValue(), u"x");

    const std::u16string decl = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    EXPECT_TRUE(WrittenCompact(*doc) == decl + text);
    EXPECT_EQ(doc->Root()->GetText(), u"x");

    std::unique_ptr<Node> copy = doc->Root()->Clone(nullptr);  // a heap tree as deep
    // A heap part in the parsed tree: its destruction has to visit every node.
    deepest->SetAttribute(u"k").SetText(u"v");
    doc.reset();
    EXPECT_TRUE(WrittenCompact(*copy) == text);
    copy.reset();
}

TEST(XmlDeep, NestedGroupsOfAnElementDeclaration) {
    std::u16string text = u"<!DOCTYPE a [<!ELEMENT a ";
    text.append(kDepth, u'(');
    text += u"b";
    text.append(kDepth, u')');
    text += u">]><a/>";
    EXPECT_EQ(Parse(text)->GetChildCount(), 1u);
}

}  // namespace
