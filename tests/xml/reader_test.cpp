#include <gtest/gtest.h>

#include "text/textutil.h"
#include "xml_testing.h"

using namespace AdvXMLParser;
using xmltest::Attributes;
using xmltest::Children;
using xmltest::FailureOf;
using xmltest::Parse;
using xmltest::WrittenCompact;

namespace {

TEST(XmlReader, PrologMiscAndRoot) {
    auto doc = Parse(u"<?xml version=\"1.1\" encoding='latin-1' standalone=\"no\" ?>\n<!-- first -->\n<?app do this?>\n"
                     u"<!DOCTYPE Config SYSTEM \"x.dtd\" [ <!ELEMENT Config ANY> ]>\n<Config/>\n<!--last-->\n");
    // The white space of the prolog is not kept.
    EXPECT_EQ(Children(*doc), u"8#comment= first |7app=do this|1Config=|8#comment=last");
    EXPECT_EQ(doc->Root(), &doc->GetChild(2));
    EXPECT_EQ(doc->GetVersion(), u"1.1");
    EXPECT_EQ(doc->GetEncoding(), u"latin-1");  // stored, no effect
    EXPECT_FALSE(doc->IsStandalone());

    auto bare = Parse(u"<a/>");
    EXPECT_EQ(bare->GetVersion(), u"1.0");
    EXPECT_EQ(bare->GetEncoding(), u"UTF-8");
    EXPECT_TRUE(bare->IsStandalone());
    EXPECT_TRUE(Parse(u"<?xml version='1.0' standalone='yes'?><a/>")->IsStandalone());
}

TEST(XmlReader, AttributesKeepOrderAndFirstOfARepeatedNameWins) {
    auto doc = Parse(u"<a b=\"1\" c = '2'\n\td=\"\" b=\"2\"/>");
    const Element& a = *doc->Root();
    EXPECT_EQ(Attributes(a), u"b=1|c=2|d=|b=2");
    EXPECT_EQ(a.GetAttribute(u"b").GetText(), u"1");
    EXPECT_EQ(a.GetAttribute(u"d").GetChildCount(), 0u);  // an empty value has no Text child
    EXPECT_EQ(&a.GetAttribute(u"B"), &EmptyAttribute());  // names compare exactly
    EXPECT_EQ(a.GetChildCount(), 0u);
}

// Each element of a name is read expecting the attribute names of the one before it; every way of
// differing from them must still give the names as written.
TEST(XmlReader, AttributeNamesDifferingFromThoseOfThePreviousElementOfItsName) {
    const struct Row { const char16_t* source; const char16_t* read; } rows[] = {
        {u"a='1' bb='2' c='3'", u"a=1|bb=2|c=3"},
        {u"a='1' bb='2' c='3'", u"a=1|bb=2|c=3"},
        {u"a='1' bx='2' xbbb='3'", u"a=1|bx=2|xbbb=3"},  // as long
        {u"a='1' b='2' bbb='3' c='4'", u"a=1|b=2|bbb=3|c=4"},  // shorter, longer
        {u"a='1' bbc='2' bb\u00e9='3' bb.='4'", u"a=1|bbc=2|bb\u00e9=3|bb.=4"},  // the expected name plus more
        {u"bb='1' a='2'", u"bb=1|a=2"},
        {u"a ='1'  bb\t=\t'2' c\n='3'", u"a=1|bb=2|c=3"},
        {u"", u""},
        {u"a='1' bb='2' c='3' d='4' e='5' f='6' g='7' h='8' i='9' j='10' k='11' l='12' m='13' n='14'",
         u"a=1|bb=2|c=3|d=4|e=5|f=6|g=7|h=8|i=9|j=10|k=11|l=12|m=13|n=14"},
        {u"a='1' bb='2' c='3' d='4' e='5' f='6' g='7' h='8' i='9' j='10' k='11' l='12' m='13' o='14'",
         u"a=1|bb=2|c=3|d=4|e=5|f=6|g=7|h=8|i=9|j=10|k=11|l=12|m=13|o=14"},
    };
    std::u16string text = u"<r>";
    for (const Row& row : rows) text += std::u16string(u"<e ") + row.source + u"/><f a='0'/>";
    auto doc = Parse(text + u"</r>");
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(Attributes(*doc->Root()->GetChild(2 * i).AsElement()), rows[i].read) << "row " << i;
}

TEST(XmlReader, AttributeValuesAreTextAndReferenceChildrenSlicedFromTheSource) {
    auto doc = Parse(u"<a b=\" x&amp;y&#x41;&#66;z \" c=\"plain\" q='say \"hi\"'/>");
    const Attribute& b = doc->Root()->GetAttribute(u"b");
    EXPECT_EQ(Children(b), u"3#text= x|5amp=&|3#text=y|5=A|5=B|3#text=z ");  // a character reference has no name
    EXPECT_EQ(b.GetText(), u"x&yABz");
    EXPECT_EQ(Children(doc->Root()->GetAttribute(u"c")), u"3#text=plain");
    EXPECT_EQ(doc->Root()->GetAttribute(u"q").GetText(), u"say \"hi\"");
    // Slices keep the line ends of the source.
    auto lines = Parse(u"<a b=\"x\r\ny\rz\">1\r\n2</a>");
    EXPECT_EQ(lines->Root()->GetAttribute(u"b").GetChild(0).GetValue(), u"x\r\ny\rz");
    EXPECT_EQ(lines->Root()->GetChild(0).GetValue(), u"1\r\n2");
}

// Values are narrowed to a byte a character eight at a time: one wide character anywhere, or none,
// in values of one to two blocks and a tail, with wide text right after the closing quote.
TEST(XmlReader, AttributeValuesOfEveryLengthKeepEveryCharacter) {
    for (std::size_t length = 1; length <= 20; ++length) {
        for (std::size_t wide = 0; wide <= length; ++wide) {
            std::u16string value;
            for (std::size_t i = 0; i < length; ++i) value.push_back(i == wide ? char16_t(0x100 + i) : char16_t(u'a' + i));
            auto doc = Parse(u"<a v=\"" + value + u"\" w=\"\u0101\u0102\"/>");
            EXPECT_EQ(doc->Root()->GetAttribute(u"v").GetText(), value) << length << " " << wide;
        }
    }
}

TEST(XmlReader, ContentKeepsEveryKindOfChildInOrder) {
    auto doc = Parse(u"<a>t1<!--c--><b/>t2]x<![CDATA[<x>&amp;]]><?p  data ?>&lt;&#x263A;\n  <b></b></a>");
    // A lone ] is text, and so is the white space between tags.
    EXPECT_EQ(Children(*doc->Root()), u"3#text=t1|8#comment=c|1b=|3#text=t2]x|4#cdata-section=<x>&amp;|7p=data |"
                                      u"5lt=<|5=\u263A|3#text=\n  |1b=");
    EXPECT_TRUE(doc->Root()->GetChild(10).AsElement()->IsSharedEmpty());  // one past the end
    // Indents like and unlike the one before.
    EXPECT_EQ(Children(*Parse(u"<a>\r\n  <b/>\r\n  <b/>\n  <b/>\r\n   <b/>\r\n\t<b/>\r\n  x<b/></a>")->Root()),
              u"3#text=\r\n  |1b=|3#text=\r\n  |1b=|3#text=\n  |1b=|3#text=\r\n   |1b=|3#text=\r\n\t|1b=|"
              u"3#text=\r\n  x|1b=");
    // The five predefined entities; character references keep only the low 16 bits.
    EXPECT_EQ(Children(*Parse(u"<a>&lt;&gt;&amp;&apos;&quot;&#x10041;&#9;&#xd800;</a>")->Root()),
              u"5lt=<|5gt=>|5amp=&|5apos='|5quot=\"|5=A|5=\t|5=" + std::u16string(1, char16_t(0xD800)));
}

// Children wait in blocks of a fixed size until their end tag: lists that cross blocks, nested
// inside one another, and end where a block ends.
TEST(XmlReader, LongChildListsCrossingBlocksStayInOrder) {
    for (const int inner : {127, 128, 129, 300}) {
        std::u16string text = u"<r>";
        for (int i = 0; i < 300; ++i) {
            std::u16string children = i % 100 == 99 ? u"" : u"t";
            for (int j = 0; i % 100 == 99 && j < inner; ++j) children += u"<f n=\"" + qrl::decimal(j) + u"\"/>";
            text += u"<e n=\"" + qrl::decimal(i) + u"\">" + children + u"</e>";
        }
        text += u"</r>";
        EXPECT_EQ(WrittenCompact(*Parse(text)->Root()), text) << inner;
    }
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
    EXPECT_EQ(Attributes(*doc->Root()), u"a\u00b7\u00c0\u00f8\u4e00=1");
    EXPECT_EQ(FailureOf(u"<\u00e9/>").number, 10);  // no non-ASCII first character
    EXPECT_EQ(FailureOf(u"<a\u00d7/>").number, 12);  // 215 ends the name
}

TEST(XmlReader, AcceptsAFullDocumentTypeDeclarationAndKeepsNothingOfIt) {
    auto doc = Parse(u"<!DOCTYPE r PUBLIC \"-//X//DTD r 1.0//EN\" 'r.dtd' [\n"
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
    EXPECT_EQ(Children(*doc), u"1r=");
    EXPECT_EQ(doc->Root()->GetAttributeCount(), 0u);  // no defaults from the declaration
    EXPECT_EQ(Children(*Parse(u"<!DOCTYPE r><r/>")), u"1r=");
    EXPECT_EQ(Children(*Parse(u"<!DOCTYPE r [<!ELEMENT r (a#b#c)>]><r/>")), u"1r=");  // any separator
}

TEST(XmlReader, MiscAfterTheRootAndTheEndOfText) {
    EXPECT_EQ(Children(*Parse(u"<a/> \r\n<!-- done -->\t")), u"1a=|8#comment= done ");
    // A 0 character is not the end of the text.
    EXPECT_EQ(FailureOf(std::u16string(u"<a/>\0", 5)).number, 43);
    EXPECT_EQ(FailureOf(std::u16string(u"<a>\0</a>", 8)).number, 2);
}

TEST(XmlReader, FailureLeavesNoTreeBehind) {
    // Run under the sanitizers: a failure deep inside a tree with heap-owned parts must free it all.
    std::u16string text = u"<r>";
    for (int i = 0; i < 200; ++i) text += u"<e a='1&amp;2' b='x'>text<!--c--><?p x?><![CDATA[d]]>";
    EXPECT_EQ(FailureOf(text + u"&bogus;").number, 9);
}

// An attribute value keeps its references as written until a caller asks for its children; every
// way of reading it must see the children that the same text gives as element content.
TEST(XmlReader, ValuesWithReferencesReadAsContentDoes) {
    const std::u16string_view values[] = {
        u"&lt;", u"a&amp;", u"&#65;&#x42;c", u"&#x10041;&#4294967361;", u"&#9;x&quot;&apos;y&gt;", u"\r\n&#xd800;",
        u"\u00ff&lt;", u"\u00ff&amp;\u0100",  // stored a byte a character, and not
        u"12345678", u"\u00ff2&#51;45", u"123456789", u"\u01002",  // short values sit in the attribute itself
    };
    for (const std::u16string_view v : values) {
        SCOPED_TRACE(testing::Message() << "value " << (&v - values));
        const std::u16string text = u"<a v=\"" + std::u16string(v) + u"\">" + std::u16string(v) + u"</a>";
        auto doc = Parse(text);
        const Element& a = *doc->Root();
        const Attribute& attr = a.GetAttribute(u"v");
        const std::u16string content = Children(a);
        EXPECT_EQ(attr.GetChildCount(), a.GetChildCount());
        EXPECT_EQ(a.Clone(nullptr)->AsElement()->GetAttribute(u"v").GetText(), attr.GetText());
        const std::u16string written = WrittenCompact(a);
        EXPECT_EQ(Children(attr), content);
        EXPECT_EQ(WrittenCompact(a), written);  // the same before and after the split
    }
}

}  // namespace
