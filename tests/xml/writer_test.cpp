#include <gtest/gtest.h>

#include "xml_testing.h"

using namespace AdvXMLParser;
using xmltest::Parse;
using xmltest::Written;
using xmltest::WrittenCompact;

namespace {

const std::u16string kDecl = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST(XmlWriter, EmptyElementsAndEmptyText) {
    Element x(u"x");
    EXPECT_EQ(WrittenCompact(x), u"<x/>");
    x.AddText(u"");
    EXPECT_EQ(WrittenCompact(x), u"<x></x>");
    Element y(u"y");
    y.SetAttribute(u"a").SetText(u"");
    y.SetAttribute(u"b");
    EXPECT_EQ(WrittenCompact(y), u"<y a=\"\" b=\"\"/>");
}

TEST(XmlWriter, EscapesOnlyTheFiveCharacters) {
    Element e(u"e");
    e.AddText(u"<a href='x'>&\"\r\n\t\x01\u00e9</a>");
    EXPECT_EQ(WrittenCompact(e), u"<e>&lt;a href=&apos;x&apos;&gt;&amp;&quot;\r\n\t\x01\u00e9&lt;/a&gt;</e>");
    e.SetAttribute(u"v").SetText(u"\"'<>&");
    EXPECT_EQ(WrittenCompact(e.GetAttribute(u"v")), u"v=\"&quot;&apos;&lt;&gt;&amp;\"");
}

TEST(XmlWriter, References) {
    Element e(u"e");
    for (char16_t c : {u'A', u'\uabcd', u'\x0a', u'\0'}) e.Add(std::make_unique<CharRef>(c));  // code 0: no digits
    e.Add(std::make_unique<EntityRef>(u"lt"));
    EXPECT_EQ(WrittenCompact(e), u"<e>&#x41;&#xABCD;&#xA;&#x;&lt;</e>");
    // A reference in a value survives as a reference and is written by its name.
    auto doc = Parse(u"<a b=\"&lt;\" c='&#233;'/>");
    EXPECT_EQ(doc->Root()->GetAttribute(u"b").GetText(), u"<");
    EXPECT_EQ(Written(*doc), kDecl + u"<a b=\"&lt;\" c=\"&#xE9;\"/>");
}

TEST(XmlWriter, CommentsInstructionsAndCDataTakeLinesOfTheirOwn) {
    Document d;
    d.Add(std::make_unique<Comment>(u" top "));
    d.Add(std::make_unique<Element>(u"a"));
    d.Root()->Add(std::make_unique<Pi>(u"p", u""));
    d.Root()->Add(std::make_unique<Pi>(u"q", u"x y"));
    d.Root()->AddElement(u"b").AddText(u"t");
    d.Root()->Add(std::make_unique<CData>(u"<raw>"));
    d.Root()->Add(std::make_unique<Comment>(u"c"));
    EXPECT_EQ(Written(d), kDecl +
                              u"<!-- top -->\n"
                              u"<a>\n"
                              u"  <?p?>\n"
                              u"  <?q x y?>\n"
                              u"  <b>t</b>\n"
                              u"  <![CDATA[<raw>]]>\n"
                              u"  <!--c-->\n"
                              u"</a>");
}

TEST(XmlWriter, ParsedTextIsWrittenAsItStands) {
    // Text children are written as they are, also the white space between tags, so the writer's
    // own line breaks come in addition to them.
    auto doc = Parse(u"<?xml version=\"1.0\" encoding=\"utf-8\"?><a>\n <b>x</b>\n</a>");
    EXPECT_EQ(Written(*doc), u"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a>\n \n  <b>x</b>\n\n</a>");
    EXPECT_EQ(WrittenCompact(*doc), u"<?xml version=\"1.0\" encoding=\"utf-8\"?><a>\n <b>x</b>\n</a>");
}

TEST(XmlWriter, IndentAndFlagsOfTheState) {
    Document d(u"r");
    d.Root()->AddElement(u"s").AddElement(u"t");
    std::u16string out = u"old";
    WriterState tabs(out, 0, u"\t");
    d.Write(tabs);
    EXPECT_EQ(out, u"old" + kDecl + u"<r>\n\t<s>\n\t\t<t/>\n\t</s>\n</r>");  // Write appends
    EXPECT_EQ(tabs.GetDepth(), 0);
    WriteDocument(d, out);  // WriteDocument clears first
    EXPECT_EQ(out, kDecl + u"<r>\n  <s>\n    <t/>\n  </s>\n</r>");  // no line end after the last tag
    EXPECT_EQ(WrittenCompact(d), u"<?xml version=\"1.0\" encoding=\"UTF-8\"?><r><s><t/></s></r>");
}

}  // namespace
