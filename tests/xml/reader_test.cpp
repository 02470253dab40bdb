#include <gtest/gtest.h>

#include "xml_testing.h"

using namespace AdvXMLParser;
using xmltest::FailureOf;
using xmltest::Parse;

namespace {

TEST(XmlReader, PrologMiscAndRoot) {
    auto doc = Parse(
        u"<?xml version=\"1.1\" encoding='latin-1' standalone=\"no\" ?>\n"
        u"<!-- first -->\n<?app do this?>\n"
        u"<!DOCTYPE Config SYSTEM \"x.dtd\" [ <!ELEMENT Config ANY> ]>\n"
        u"<Config/>\n<!--last-->\n");
    EXPECT_EQ(doc->GetVersion(), u"1.1");
    EXPECT_EQ(doc->GetEncoding(), u"latin-1");  // stored, no effect
    EXPECT_FALSE(doc->IsStandalone());
    ASSERT_EQ(doc->GetChildCount(), 4u);  // white space of the prolog is not kept
    EXPECT_TRUE(doc->GetChild(0).IsOfType(kComment));
    EXPECT_EQ(doc->GetChild(0).GetText(), u" first ");
    EXPECT_TRUE(doc->GetChild(1).IsOfType(kPi));
    EXPECT_EQ(doc->GetChild(1).GetName(), u"app");
    EXPECT_EQ(doc->GetChild(1).GetText(), u"do this");
    ASSERT_NE(doc->Root(), nullptr);
    EXPECT_EQ(&doc->GetChild(2), doc->Root());
    EXPECT_EQ(doc->Root()->GetName(), u"Config");
    EXPECT_EQ(doc->Root()->GetOwner(), doc.get());
    EXPECT_EQ(doc->GetChild(3).GetText(), u"last");

    auto bare = Parse(u"<a/>");
    EXPECT_EQ(bare->GetVersion(), u"1.0");
    EXPECT_EQ(bare->GetEncoding(), u"UTF-8");
    EXPECT_TRUE(bare->IsStandalone());
    EXPECT_TRUE(Parse(u"<?xml version='1.0' standalone='yes'?><a/>")->IsStandalone());
}

TEST(XmlReader, AttributesKeepOrderAndFirstOfARepeatedNameWins) {
    auto doc = Parse(u"<a b=\"1\" c = '2'\n\td=\"\" b=\"2\"/>");
    const Element& a = *doc->Root();
    ASSERT_EQ(a.GetAttributeCount(), 4u);
    EXPECT_EQ(a.GetAttribute(u"b").GetText(), u"1");
    EXPECT_EQ(a.GetAttributeAt(3).GetText(), u"2");
    EXPECT_EQ(a.GetAttributeAt(1).GetName(), u"c");
    EXPECT_EQ(a.GetAttribute(u"c").GetOwner(), &a);
    EXPECT_EQ(a.GetAttribute(u"d").GetChildCount(), 0u);  // an empty value has no Text child
    EXPECT_EQ(a.GetAttribute(u"B").GetText(), u"");       // names compare exactly
    EXPECT_EQ(&a.GetAttribute(u"B"), &EmptyAttribute());
    EXPECT_EQ(a.GetChildCount(), 0u);
}

TEST(XmlReader, AttributeValuesAreTextAndReferenceChildren) {
    auto doc = Parse(u"<a b=\" x&amp;y&#x41;&#66;z \" c=\"plain\" q='say \"hi\"'/>");
    const Attribute& b = doc->Root()->GetAttribute(u"b");
    ASSERT_EQ(b.GetChildCount(), 6u);
    EXPECT_TRUE(b.GetChild(0).IsOfType(kText));
    EXPECT_EQ(b.GetChild(0).GetValue(), u" x");
    EXPECT_TRUE(b.GetChild(1).IsOfType(kReference));
    EXPECT_EQ(b.GetChild(1).GetName(), u"amp");
    EXPECT_EQ(b.GetChild(1).GetValue(), u"&");
    EXPECT_EQ(b.GetChild(3).GetValue(), u"A");
    EXPECT_EQ(b.GetChild(3).GetName(), u"");  // a character reference has no name
    EXPECT_EQ(b.GetChild(4).GetValue(), u"B");
    EXPECT_EQ(b.GetChild(5).GetValue(), u"z ");
    EXPECT_EQ(b.GetChild(5).GetOwner(), &b);
    EXPECT_EQ(b.GetText(), u"x&yABz");

    const Attribute& c = doc->Root()->GetAttribute(u"c");
    ASSERT_EQ(c.GetChildCount(), 1u);
    EXPECT_TRUE(c.GetChild(0).IsOfType(kText));
    EXPECT_EQ(c.GetChild(0).GetValue(), u"plain");
    EXPECT_EQ(c.GetChild(0).GetOwner(), &c);
    EXPECT_EQ(doc->Root()->GetAttribute(u"q").GetText(), u"say \"hi\"");
}

TEST(XmlReader, SlicesKeepTheLineEndsOfTheSource) {
    auto doc = Parse(u"<a b=\"x\r\ny\rz\">1\r\n2</a>");
    EXPECT_EQ(doc->Root()->GetAttribute(u"b").GetChild(0).GetValue(), u"x\r\ny\rz");
    EXPECT_EQ(doc->Root()->GetChild(0).GetValue(), u"1\r\n2");
}

TEST(XmlReader, ContentKeepsEveryKindOfChildInOrder) {
    auto doc = Parse(u"<a>t1<!--c--><b/>t2]x<![CDATA[<x>&amp;]]><?p  data ?>&lt;&#x263A;\n  <b></b></a>");
    const Element& a = *doc->Root();
    ASSERT_EQ(a.GetChildCount(), 10u);
    const int types[] = {kText, kComment, kElement, kText, kCData, kPi, kReference, kReference, kText, kElement};
    for (std::size_t i = 0; i < 10; ++i) EXPECT_TRUE(a.GetChild(i).IsOfType(types[i])) << i;
    EXPECT_EQ(a.GetChild(3).GetValue(), u"t2]x");  // a lone ] is text
    EXPECT_EQ(a.GetChild(4).GetValue(), u"<x>&amp;");
    EXPECT_EQ(a.GetChild(5).GetName(), u"p");
    EXPECT_EQ(a.GetChild(5).GetValue(), u"data ");
    EXPECT_EQ(a.GetChild(7).GetValue(), u"\u263A");
    EXPECT_EQ(a.GetChild(8).GetValue(), u"\n  ");  // white space between tags stays a Text child
    EXPECT_TRUE(a.GetChild(10).AsElement()->IsSharedEmpty());  // one past the end
    EXPECT_EQ(a.GetChild(2).GetOwner(), &a);
}

TEST(XmlReader, PredefinedEntitiesAndCharacterReferences) {
    auto doc = Parse(u"<a>&lt;&gt;&amp;&apos;&quot;&#x10041;&#9;&#xd800;</a>");
    EXPECT_EQ(doc->Root()->GetChild(0).GetValue(), u"<");
    std::u16string all;
    for (std::size_t i = 0; i < doc->Root()->GetChildCount(); ++i) all += doc->Root()->GetChild(i).GetValue();
    EXPECT_EQ(all, std::u16string(u"<>&'\"A\t") + char16_t(0xD800));
}

TEST(XmlReader, PreserveFlagFollowsXmlSpace) {
    auto doc = Parse(u"<a xml:space=\"preserve\"><b xml:space='default'/><c xml:space=' preserve '/></a>");
    EXPECT_TRUE(doc->Root()->IsPreserve());
    EXPECT_FALSE(doc->Root()->GetChild(0).AsElement()->IsPreserve());
    EXPECT_TRUE(doc->Root()->GetChild(1).AsElement()->IsPreserve());  // the value is read trimmed
    auto twice = Parse(u"<a xml:space='preserve' xml:space='x'/>");
    EXPECT_FALSE(twice->Root()->IsPreserve());  // each one sets the flag; lookup still finds the first
    EXPECT_EQ(twice->Root()->GetAttribute(u"xml:space").GetText(), u"preserve");
}

TEST(XmlReader, NameCharacters) {
    auto doc = Parse(u"<_x:y-z.1 a\u00b7\u00c0\u00f8\u4e00='1'/>");
    EXPECT_EQ(doc->Root()->GetName(), u"_x:y-z.1");
    EXPECT_EQ(doc->Root()->GetAttributeAt(0).GetName(), u"a\u00b7\u00c0\u00f8\u4e00");
    EXPECT_EQ(FailureOf(u"<\u00e9/>").number, 10);  // no non-ASCII first character
    EXPECT_EQ(FailureOf(u"<1/>").number, 10);
    EXPECT_EQ(FailureOf(u"<a\u00d7/>").number, 12);  // 215 ends the name
}

TEST(XmlReader, AcceptsAFullDocumentTypeDeclarationAndKeepsNothingOfIt) {
    auto doc = Parse(
        u"<!DOCTYPE r PUBLIC \"-//X//DTD r 1.0//EN\" 'r.dtd' [\n"
        u"  <!ELEMENT r (a, (b | c)*, d?)+>\n"
        u"  <!ELEMENT a (#PCDATA)>\n"
        u"  <!ELEMENT b (#PCDATA | a | c)* >\n"
        u"  <!ELEMENT c EMPTY>\n"
        u"  <!ELEMENT d ANY>\n"
        u"  <!ATTLIST r id ID #REQUIRED k CDATA #IMPLIED t (x|y|1z) 'x'\n"
        u"              n NOTATION (png | gif) #IMPLIED f CDATA #FIXED \"v&amp;w\">\n"
        u"  <!ENTITY e \"text %pe; &#65; &lt;\">\n"
        u"  <!ENTITY % pe SYSTEM \"pe.ent\">\n"
        u"  <!ENTITY img SYSTEM \"i.png\" NDATA png>\n"
        u"  <!ENTITY pub PUBLIC \"p\" \"s\">\n"
        u"  <!NOTATION png SYSTEM \"image/png\">\n"
        u"  <!NOTATION gif PUBLIC \"gif\">\n"
        u"  <!NOTATION jpg PUBLIC \"jpg\" \"jpg.exe\">\n"
        u"  %pe;\n"
        u"]>\n"
        u"<r/>");
    ASSERT_EQ(doc->GetChildCount(), 1u);
    EXPECT_EQ(doc->Root()->GetAttributeCount(), 0u);  // no defaults from the declaration
    EXPECT_EQ(Parse(u"<!DOCTYPE r><r/>")->GetChildCount(), 1u);
    EXPECT_EQ(Parse(u"<!DOCTYPE r [<!ELEMENT r (a#b#c)>]><r/>")->GetChildCount(), 1u);  // any separator
}

TEST(XmlReader, MiscAfterTheRootAndTheEndOfText) {
    auto doc = Parse(u"<a/> \r\n<!-- done -->\t");
    ASSERT_EQ(doc->GetChildCount(), 2u);
    EXPECT_EQ(FailureOf(u"<a/> <!-- done --> x").number, 43);
    // A 0 character is not the end of the text.
    EXPECT_EQ(FailureOf(std::u16string(u"<a/>\0", 5)).number, 43);
    EXPECT_EQ(FailureOf(std::u16string(u"<a>\0</a>", 8)).number, 2);
}

TEST(XmlReader, FailureLeavesNoTreeBehind) {
    // Run under the sanitizers: a failure deep inside a tree with heap-owned parts must free it all.
    std::u16string text = u"<r>";
    for (int i = 0; i < 200; ++i) text += u"<e a='1&amp;2' b='x'>text<!--c--><?p x?><![CDATA[d]]>";
    text += u"&bogus;";
    EXPECT_EQ(FailureOf(text).number, 9);
}

}  // namespace
