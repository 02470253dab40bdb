#include <gtest/gtest.h>

#include "xml_testing.h"

using namespace AdvXMLParser;
using xmltest::Attributes;
using xmltest::Children;
using xmltest::Parse;
using xmltest::WrittenCompact;

namespace {

TEST(XmlNodes, TextOfElementsCollapsesWhiteSpaceUnlessPreservedAndOfAttributesIsTrimmed) {
    auto attributes = Parse(u"<a b=\"  x  y  \" c=\" \t\r\n \" d=\" &#32;x&#32; \"/>");
    EXPECT_EQ(Attributes(*attributes->Root()), u"b=x  y|c=|d=x");  // the inner run stays; trimmed after joining
    EXPECT_EQ(attributes->Root()->GetAttribute(u"b").GetValue(), u"x  y");

    const struct Case { const char16_t* xml; const char16_t* text; } cases[] = {
        {u"<a> x   y </a>", u"x y"},
        {u"<a xml:space=\"preserve\"> x   y </a>", u" x   y "},
        {u"<a>\r\n\tx\r\n</a>", u"x"},
        {u"<a>  </a>", u""},
        // A child element gives its own finished text: its trimmed ends no longer separate words.
        {u"<a>x<b> y </b></a>", u"xy"},
        {u"<a>x <b xml:space='preserve'> y  </b></a>", u"x y"},
        // Every child counts, comments and instructions too; attributes do not.
        {u"<a k='v'>x<!--c-->y<?p q?>&amp;<![CDATA[ z ]]></a>", u"xcyq& z"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Parse(c.xml)->Root()->GetText(), c.text) << testing::PrintToString(c.xml);
    EXPECT_EQ(Parse(u"<a>x</a>")->Root()->GetValue(), u"");
    auto doc = Parse(u"<!--  c  --><a xml:space='preserve'> x  y </a>");
    EXPECT_EQ(doc->GetText(), u"c x y");  // a document always collapses
    EXPECT_EQ(doc->GetValue(), u"");
}

TEST(XmlNodes, SharedEmptyNodesReadEmptyAndNeverChange) {
    auto doc = Parse(u"<a/>");
    const Element& root = *doc->Root();
    // Lookups past the end chain safely down to an empty text.
    EXPECT_EQ(root.GetChild(3).AsElement()->GetChild(0).AsElement()->GetAttribute(u"x").GetText(), u"");
    EXPECT_EQ(&root.GetAttributeAt(7), &EmptyAttribute());

    Element& empty = EmptyElement();
    EXPECT_EQ(&empty.AddElement(u"x"), &empty);
    EXPECT_EQ(&empty.SetAttribute(u"y"), &EmptyAttribute());
    empty.Add(std::make_unique<Text>(u"z"));
    empty.AddText(u"w");
    EmptyAttribute().SetText(u"v");
    EmptyAttribute().AddText(u"v");
    EXPECT_EQ(empty.GetChildCount() + empty.GetAttributeCount() + EmptyAttribute().GetChildCount(), 0u);
    EXPECT_EQ(EmptyAttribute().GetText(), u"");
    EXPECT_EQ(EmptyComment().GetText() + EmptyPi().GetText() + EmptyCData().GetText(), u"");
}

TEST(XmlNodes, AddTextJoinsOnlyADirectlyPrecedingText) {
    Element e(u"e");
    e.AddText(u"a");
    e.AddText(u"bc");
    e.Add(std::make_unique<Comment>(u"x"));
    e.AddText(u"d");
    e.Add(std::make_unique<Text>(u"e"));  // an added Text is the last text again
    e.AddText(u"f");
    EXPECT_EQ(Children(e), u"3#text=abc|8#comment=x|3#text=d|3#text=ef");

    std::u16string expected;
    Element big(u"big");
    for (int i = 0; i < 300; ++i) {  // grows through several capacities
        const std::u16string piece(static_cast<std::size_t>(i % 7), static_cast<char16_t>(u'a' + i % 26));
        big.AddText(piece);
        expected += piece;
    }
    EXPECT_EQ(Children(big), u"3#text=" + expected);
}

TEST(XmlNodes, SetAttributeReusesTheNameAndSetTextReplaces) {
    Element e(u"e");
    e.SetAttribute(u"k").SetText(u"1");
    e.SetAttribute(u"k").SetText(u"2");
    Attribute& other = e.SetAttribute(u"m");
    for (char16_t c = u'a'; c < u'a' + 20; ++c) e.SetAttribute(u"n" + std::u16string(1, c));
    other.SetText(u"still valid");  // references stay good while the list grows
    EXPECT_EQ(Attributes(e).substr(0, 22), u"k=2|m=still valid|na=|");
    EXPECT_EQ(e.GetAttributeCount(), 22u);
    EXPECT_EQ(e.GetAttribute(u"k").GetChildCount(), 1u);
}

TEST(XmlNodes, CloneIsDeepAndIndependentOfTheSource) {
    std::unique_ptr<Node> copy;
    std::unique_ptr<Node> docCopy;
    Element holder(u"holder");
    {
        auto doc = Parse(u"<?xml version='1.1' encoding='x'?><!--c--><a xml:space='preserve' b='1&lt;2' c='v'>"
                         u"<b>t</b><?p q?><![CDATA[c]]>&#66;<!--m--></a>");
        copy = doc->Root()->Clone(&holder);
        docCopy = doc->Clone(nullptr);
        EXPECT_EQ(WrittenCompact(*copy), WrittenCompact(*doc->Root()));
    }  // the source is gone: the copies own everything they show
    EXPECT_EQ(copy->GetOwner(), &holder);
    Element& a = *copy->AsElement();
    EXPECT_TRUE(a.IsPreserve());
    EXPECT_EQ(Children(a.GetAttribute(u"b")), u"3#text=1|5lt=<|3#text=2");
    EXPECT_EQ(Children(a), u"1b=|7p=q|4#cdata-section=c|5=B|8#comment=m");
    a.SetAttribute(u"c").SetText(u"changed");
    EXPECT_EQ(WrittenCompact(a), u"<a xml:space=\"preserve\" b=\"1&lt;2\" c=\"changed\"><b>t</b><?p q?>"
                                 u"<![CDATA[c]]>&#x42;<!--m--></a>");

    const Document& d = static_cast<const Document&>(*docCopy);
    EXPECT_EQ(d.GetVersion(), u"1.1");
    EXPECT_EQ(d.GetEncoding(), u"x");
    EXPECT_EQ(Children(d), u"8#comment=c|1a=");
    EXPECT_EQ(d.Root(), &d.GetChild(1));
    holder.Add(std::move(copy));
    EXPECT_EQ(holder.GetChild(0).GetName(), u"a");
}

TEST(XmlNodes, ParsedTreesCanBeChanged) {
    // Changing a parsed tree gives arena nodes heap parts; the sanitizer build checks that the
    // document frees them and nothing else.
    auto doc = Parse(u"<r a='1' b='x&amp;y'><e>t</e>text</r>");
    Element& r = *doc->Root();
    r.SetAttribute(u"a").SetText(u"2");
    r.SetAttribute(u"c").SetText(u"3");
    r.GetChild(0).AsElement()->AddElement(u"f").SetAttribute(u"g").AddText(u"h");
    r.AddText(u" more");
    EXPECT_EQ(r.GetAttribute(u"b").GetChild(0).GetValue(), u"x");
    EXPECT_EQ(WrittenCompact(r), u"<r a=\"2\" b=\"x&amp;y\" c=\"3\"><e>t<f g=\"h\"/></e>text more</r>");
    r.GetChild(0).AsElement()->Clear();
    EXPECT_EQ(r.GetChild(0).AsElement()->GetChildCount(), 0u);
    EXPECT_EQ(r.GetAttributeCount(), 3u);  // Clear leaves the attributes
    doc->Add(std::make_unique<Comment>(u"end"));
    EXPECT_EQ(doc->GetChildCount(), 2u);
}

}  // namespace
