// Every error number of the reader, with the line and column it reports. Positions are those of
// the cursor when the reader gives up: just past the character that proved the text wrong (or
// where a literal failed to match). On the first line columns run one ahead, as the cursor starts
// at column 1.
#include <gtest/gtest.h>

#include <string>

#include "xml_testing.h"

using xmltest::Failure;
using xmltest::FailureOf;

namespace {

TEST(XmlReaderErrors, NumberLineAndColumn) {
    const struct Case { const char16_t* text; Failure expected; } cases[] = {
        {u"<a b=\"x", {1, 1, 8}},                  // end of text in a value
        {u"<a>\n  text", {1, 2, 6}},               // in content
        {u"<a>\x01</a>", {2, 1, 5}},               // control character
        {u"<a b='\x1f'/>", {2, 1, 8}},
        {u"<a>&#x10009;&#x10001;</a>", {2, 1, 22}}, // a character reference too, by its low 16 bits: 9 is a tab
        {u"<a b>", {3, 1, 6}},
        {u"<a b=c/>", {4, 1, 7}},
        {u"<a b=\"<\"/>", {5, 1, 8}},
        {u"<a>&amp</a>", {6, 1, 9}},
        {u"<a>& </a>", {6, 1, 6}},
        {u"<a>&#65</a>", {6, 1, 9}},
        {u"<a>&#xg;</a>", {7, 1, 8}},
        {u"<a>&#X41;</a>", {8, 1, 7}},             // only a lower-case x starts hexadecimal
        {u"<a>&Amp;</a>", {9, 1, 9}},
        {u"< a/>", {10, 1, 3}},
        {u"<a></ a>", {10, 1, 7}},
        {u"<a/ >", {11, 1, 5}},
        {u"<a b=\"1\"c=\"2\"/>", {12, 1, 10}},
        // Past attributes read in one stretch, with blanks, tabs, line ends and the other quote.
        {u"<a \tb = 'x\"y'\tc\t=\t\"\u00e9\" d", {3, 1, 24}},
        {u"<a b='1'\r\n c='2' d='3'\nx", {3, 3, 1}},
        {u"<a b='1'\r\n c='2\r\n' d='3&amp;' e=\"4\" f=", {4, 3, 21}},
        {u"<a b='1' c='2' d='3", {1, 1, 20}},
        {u"<a b=\"x&amp\" c=\"1\"/>", {6, 1, 13}},  // references in a value read in one stretch
        {u"<a b='x&#1;y'/>", {2, 1, 12}},
        {u"<a b=\"&#xd800;&bogus;\"/>", {9, 1, 22}},
        {u"<a b=\"&lt;&#65\"/>", {6, 1, 16}},
        // Past a line end and the indent of a tag, read in one stretch too.
        {u"<a>\r\n  <b>\n\t</c>", {13, 3, 4}},
        {u"<a>\r  \t<", {14, 2, 4}},
        {u"<a>\n\n  <b>\r\n<", {14, 4, 1}},
        {u"<a>\r\n<b/>\r\n   x\x01", {2, 3, 5}},
        {u"<a>\r\n  <b/>\r\n  <b/>\r\n  </c>", {13, 4, 5}},  // the indent of the sibling before
        {u"<a>\n\t<b/>\n\t<b/>\n\t<b/>\n\t<b/>\n\tx\x01", {2, 6, 3}},
        {u"<a></a b>", {12, 1, 9}},
        {u"<a", {12, 1, 3}},
        {u"<a></b>", {13, 1, 7}},
        {u"<a></A>", {13, 1, 7}},                  // case counts
        {u"<a></ab>", {13, 1, 8}},
        {u"<a><!x></a>", {14, 1, 6}},
        {u"<a>< b/></a>", {14, 1, 6}},
        {u"<a>]]></a>", {15, 1, 7}},
        {u"<a/>x", {43, 1, 6}},
        {u"<a/><b/>", {43, 1, 6}},
        {u"", {16, 1, 1}},
        {u" \r\n\t", {16, 2, 1}},
        {u"<?xml version=\"1.0\"?><!--c-->", {16, 1, 30}},
        {u"  text", {16, 1, 4}},
        {u"<?xml?><a/>", {17, 1, 6}},
        {u"<?xml-stylesheet href='x'?><a/>", {17, 1, 6}},  // "<?xml" is only tested as a literal
        {u"<?xml version=\"\"?><a/>", {17, 1, 17}},
        {u"<?xml version=\"1.0'?><a/>", {17, 1, 20}},
        {u"<?xml version=\"1.0\"><a/>", {18, 1, 20}},
        {u"<?xml version=\"1.0\" encoding=UTF-8?><a/>", {19, 1, 31}},
        {u"<?xml version=\"1.0\" encoding=\"8bit\"?><a/>", {20, 1, 32}},
        {u"<?xml version=\"1.0\" encoding=\"utf-8'?><a/>", {20, 1, 37}},
        {u"<?xml version=\"1.0\" standalone=yes?><a/>", {21, 1, 33}},
        {u"<?xml version=\"1.0\" standalone=\"maybe\"?><a/>", {22, 1, 33}},
        {u"<?xml version=\"1.0\" standalone=\"yes'?><a/>", {22, 1, 37}},
        {u"<a><!-- a -- b --></a>", {23, 1, 14}},
        {u"<a><!-- a ---></a>", {23, 1, 14}},
        {u"<a><!-- a", {2, 1, 10}},  // end of text in a comment counts as a control character
        {u"<a><![CDATA[x", {2, 1, 14}},
        {u"<a><?p x", {2, 1, 9}},
        {u"<a><? ?></a>", {24, 1, 7}},
        {u"<a><?XmL x?></a>", {25, 1, 9}},
        {u" <?xml version='1.0'?><a/>", {25, 1, 7}},  // a blank first: an instruction named xml
        {u"<a/><?xml version='1.0'?>", {25, 1, 10}},
        {u"<!DOCTYPE a [ <!-- c --> ]><a/>", {26, 1, 16}},  // comments are refused in the subset
        {u"<!DOCTYPEa><a/>", {26, 1, 10}},
        {u"<!DOCTYPE a [ ]<a/>", {26, 1, 17}},
        {u"<!DOCTYPE a [ %x ]><a/>", {27, 1, 18}},
        {u"<!DOCTYPE a [ % ]><a/>", {27, 1, 17}},
        {u"<!DOCTYPE a PUBLIC \"a\tb\" \"s\"><a/>", {28, 1, 23}},
        {u"<!DOCTYPE a [<!ELEMENT a FOO>]><a/>", {29, 1, 26}},
        {u"<!DOCTYPE a [<!ELEMENT a EMPTY x>]><a/>", {29, 1, 33}},
        {u"<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)>]><a/>", {30, 1, 37}},
        {u"<!DOCTYPE a [<!ELEMENT a (b|c,d)>]><a/>", {30, 1, 31}},
        {u"<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/>", {31, 1, 31}},
        {u"<!DOCTYPE a [<!ELEMENT a (b#c#d|e)>]><a/>", {31, 1, 33}},
        {u"<!DOCTYPE a [<!ELEMENT a ()>]><a/>", {32, 1, 28}},
        {u"<!DOCTYPE a [<!ELEMENT a (b,(c|))>]><a/>", {32, 1, 33}},
        {u"<!DOCTYPE a [<!ATTLIST>]><a/>", {33, 1, 23}},
        {u"<!DOCTYPE a [<!ATTLIST a b CDATA #IMPLIED #>]><a/>", {33, 1, 44}},
        {u"<!DOCTYPE a [<!ATTLIST a b CDATA #IMPLIED x>]><a/>", {34, 1, 44}},  // x starts a definition
        {u"<!DOCTYPE a [<!ATTLIST a b FOO #IMPLIED>]><a/>", {34, 1, 29}},
        {u"<!DOCTYPE a [<!ATTLIST a b CDATA x>]><a/>", {34, 1, 35}},
        {u"<!DOCTYPE a [<!ATTLIST a b NOTATION (x y)>]><a/>", {35, 1, 41}},
        {u"<!DOCTYPE a [<!ATTLIST a b (x|) #IMPLIED>]><a/>", {36, 1, 31}},
        {u"<!DOCTYPE a [<!ATTLIST a b CDATA #FIXED\"x\">]><a/>", {37, 1, 40}},
        {u"<!DOCTYPE a [<!ENTITY e x>]><a/>", {38, 1, 25}},
        {u"<!DOCTYPE a [<!ENTITY %e 'x'>]><a/>", {38, 1, 24}},
        {u"<!DOCTYPE a [<!ENTITY e SYSTEM \"s\" NDATA>]><a/>", {39, 1, 41}},
        {u"<!DOCTYPE a [<!ENTITY % e SYSTEM \"s\" NDATA n>]><a/>", {38, 1, 39}},  // no NDATA for %
        {u"<!DOCTYPE a [<!ENTITY e '&bad;'>]><a/>", {9, 1, 31}},
        {u"<!DOCTYPE a [<!ENTITY e 'x\x02'>]><a/>", {2, 1, 28}},
        {u"<!DOCTYPE a [<!ENTITY e 'x", {1, 1, 27}},
        {u"<!DOCTYPE a [<!NOTATION n FOO>]><a/>", {40, 1, 27}},
        {u"<!DOCTYPE a SYSTEM x><a/>", {41, 1, 21}},
        {u"<!DOCTYPE a PUBLIC \"p\"><a/>", {41, 1, 23}},
        {u"<!DOCTYPE a SYSTEM \"s", {1, 1, 22}},
        {u"<!DOCTYPE a [<!NOTATION n PUBLIC>]><a/>", {42, 1, 33}},
        {u"<!DOCTYPE a [<!NOTATION n PUBLIC x>]><a/>", {42, 1, 35}},
        // Lines count as the cursor counts them (every kind of line end, CR LF as one: its own test).
        {u"<a>\n<b>\n</c>", {13, 3, 3}},
        {u"<a\n  b='1'\n  c>", {3, 3, 4}},
        // A lone CR that the reader looks at after a name and puts back stays counted, and is counted
        // again when it is read: the cursor only takes back a line over an LF.
        {u"<a\r\n b>", {3, 2, 3}},
        {u"<a\r b>", {3, 3, 3}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FailureOf(c.text), c.expected) << testing::PrintToString(std::u16string(c.text));
    EXPECT_EQ(FailureOf(std::u16string_view{}).number, 16);  // no text at all, not even a buffer
    // Only the five predefined entities exist, whatever the declaration says.
    EXPECT_EQ(FailureOf(u"<!DOCTYPE a [<!ENTITY unknown \"x\">]><a>&unknown;</a>").number, 9);
    EXPECT_EQ(FailureOf(u"<!DOCTYPE a [<!ATTLIST a b CDATA '&bad;'>]><a/>").number, 9);
}

}  // namespace
