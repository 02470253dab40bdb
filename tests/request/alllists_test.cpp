// One request that carries every list kind at once: each model's reader must take its own items
// and leave the others alone, and the all-values reply must put every block in definition order.
#include <gtest/gtest.h>

#include <string>

#include "colours/colourhooks.h"
#include "keyboard/keymapdata.h"
#include "mouse/mousehooks.h"
#include "request/reply.h"
#include "request/session.h"
#include "xml/xml_testing.h"

namespace qrl {
namespace {

constexpr char16_t kEveryList[] =
    u"<Config ModuleType=\"KeyMap\">"
    u"<DTD>"
    u"<Element Name=\"Host\" Type=\"text\"/>"
    u"<Element Name=\"PhysicalKeys\" Type=\"keylist\"/>"
    u"<Element Name=\"Map\" Type=\"keymaplist\"/>"
    u"<Element Name=\"KeyStrings\" Type=\"keystringlist\"/>"
    u"<Element Name=\"globalkeystrings\" Type=\"keystringlist\"/>"
    u"<Element Name=\"Schemes\" Type=\"colourschemelist\"/>"
    u"<Element Name=\"Names\" Type=\"attrnames\"/>"
    u"<Element Name=\"Spots\" Type=\"hotspots\"/>"
    u"<Element Name=\"Mouse\" Type=\"mousemap\"/>"
    u"</DTD>"
    u"<Data>"
    u"<Item Element=\"Host\" Value=\"alpha\"/>"
    u"<Item Element=\"PhysicalKeys\"><Key Name=\"F1\" Id=\"112\" Shift=\"256\"/></Item>"
    u"<Item Element=\"Map\"><Map pkey=\"112\" emkey=\"7\"/></Item>"
    u"<Item Element=\"KeyStrings\"><Map pkey=\"368\" string=\"{Enter}\"/></Item>"
    u"<Item Element=\"GlobalKeyStrings\"><Map pkey=\"624\" string=\"a&amp;b\"/></Item>"
    u"<Item Element=\"Schemes\"><ColourScheme Element=\"Night\"><palette value=\"1 2 3\"/></ColourScheme>"
    u"<ColourScheme Element=\"Day\"/></Item>"
    u"<Item Element=\"Names\"><colour index=\"3\" descr=\"Teal\"/></Item>"
    u"<Item Element=\"Spots\"><Item Element=\"FileName\" Value=\"sets.hsp\"/></Item>"
    u"<Item Element=\"Mouse\"><Map Event=\"1:0:1:0:\" Action=\"11:hello\"/></Item>"
    u"</Data>"
    u"</Config>";

TEST(EveryListKind, LoadsIntoItsModelsAndWritesTheWholeReply) {
    TConfigSession session;
    session.LoadRequestText(kEveryList);
    // The key, hotspot and mouse blocks of the reply show their flags and items; these do not.
    EXPECT_TRUE(session.attrDataPresent);
    ASSERT_EQ(session.dataValues.size(), 1u);  // only the plain value is a data value
    EXPECT_EQ(KeyDataOf(std::as_const(session)).physicalKeys.size(), 1u);
    EXPECT_EQ(session.colourDescriptions[3], u"Teal");
    ASSERT_EQ(SessionColourSchemes(session).size(), 2u);

    // An editor's changes: one scheme deleted, one left untouched (and so not written). The
    // specialised path never applies the plain values, so Host goes back with its default.
    SessionColourSchemes(session)[1].operation = kSchemeDelete;
    EXPECT_EQ(WriteDataReply(session, false),
              xmltest::DataReply(
                  u"    <Item Element=\"Host\" Value=\"\"/>\n"
                  u"    <Item Element=\"KeyMap\">\n"
                  u"      <Map pkey=\"112\" emkey=\"7\"/>\n"
                  u"    </Item>\n"
                  u"    <Item Element=\"KeyStrings\">\n"
                  u"      <Map pkey=\"368\" string=\"{Enter}\"/>\n"
                  u"    </Item>\n"
                  u"    <Item Element=\"GlobalKeyStrings\">\n"
                  u"      <Map pkey=\"624\" string=\"a&amp;b\"/>\n"
                  u"    </Item>\n"
                  u"    <Item Element=\"ColourSchemeList\">\n"
                  u"      <ColourScheme Element=\"Day\" operation=\"delete\"/>\n"
                  u"    </Item>\n"
                  u"    <Item Element=\"Hotspots\">\n"
                  u"      <Item Element=\"filename\" Value=\"sets.hsp\"/>\n"
                  u"    </Item>\n"
                  u"    <Item Element=\"MouseMap\">\n"
                  u"      <Map Event=\"1:0:1:0:\" Action=\"11:hello\"/>\n"
                  u"    </Item>\n"));
}

}  // namespace
}  // namespace qrl
