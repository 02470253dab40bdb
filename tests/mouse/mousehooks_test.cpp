#include <gtest/gtest.h>

#include <string>

#include "mouse/mousehooks.h"
#include "request/reply.h"
#include "request/session.h"

using namespace qrl;

TEST(MouseHooks, RequestFillsMapAndReplyWritesIt) {
    TConfigSession session;
    session.LoadRequestText(
        u"<Config ModuleType=\"MouseMap\">"
        u"<DTD><Element Name=\"Mouse\" Type=\"MouseMap\"/><Element Name=\"Speed\" Type=\"int\"/></DTD>"
        u"<Data>"
        u"<Item Element=\"Mouse\"><Map Event=\"4:0:0:0:\" Action=\"3:\"/></Item>"
        u"<Item Element=\"mouse\"><Map Event=\"1:0:1:0:\" Action=\"11:hello\"/><Map Event=\"7:0:0:0:\" Action=\"0:\"/></Item>"
        u"<Item Element=\"Speed\" Value=\"3\"/>"
        u"</Data></Config>");
    session.ApplyDataValues();
    EXPECT_TRUE(session.mouseDataPresent);
    TMouseMap& map = SessionMouseMap(session);
    ASSERT_EQ(map.size(), 2u);  // a second item replaces the first
    EXPECT_EQ(Lookup(map, TMouseEvent{1, false, true, false}).text, u"hello");
    SetMapping(map, TMouseEvent{kMouseRightClick}, TMouseAction{kMousePopupMenu, {}, {}});
    EXPECT_EQ(WriteDataReply(session, false),
              u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              u"<Config>\n"
              u"  <Data>\n"
              u"    <Item Element=\"MouseMap\">\n"
              u"      <Map Event=\"1:0:1:0:\" Action=\"11:hello\"/>\n"
              u"      <Map Event=\"7:0:0:0:\" Action=\"6:\"/>\n"
              u"    </Item>\n"
              u"    <Item Element=\"Speed\" Value=\"3\"/>\n"
              u"  </Data>\n"
              u"</Config>");
}
