#include <gtest/gtest.h>

#include <filesystem>

#include "app/requestcheck.h"
#include "platform/platform.h"
#include "request/reply.h"
#include "request/run.h"
#include "text/textutil.h"

namespace qrl {
namespace {

std::string lines(std::u16string_view request) {
    std::string out;
    for (const TCheckFinding& finding : CheckRequest(request)) out += FormatFinding("r.xml", finding) + "\n";
    return out;
}

constexpr char16_t kDtd[] =
    u"<DTD><Element Name=\"Port\" Type=\"int\" Min=\"1\" Max=\"9\"/>"
    u"<Element Name=\"Parity\" Type=\"set\" strings=\"None,Odd\"/>"
    u"<Element Name=\"Fg\" Type=\"rgb\"/><Element Name=\"Face\" Type=\"font\"/>"
    u"<Element Name=\"KeyMap\" Type=\"keymaplist\"/><Element Name=\"Other\" Type=\"keylist\"/></DTD>\n";

struct TBroken {
    std::u16string request;
    std::string expected;
};

TEST(RequestCheck, FindingsOfBrokenRequests) {
    const std::u16string dtd = kDtd;
    const TBroken cases[] = {
        {u"<Config>\n  <Data>", "r.xml:2:8: error: XML parsing error 1\n"},
        {u"<Config><a></b></Config>", "r.xml:1:15: error: XML parsing error 13\n"},
        {u"<Conf/>", "r.xml:1:1: error: root node must be <Config>\n"},
        {u"<Config>\n <DTD>\n  <Element Name=\"a\"/>\n  <Elem/>\n </DTD>\n</Config>",
         "r.xml:4:3: error: expected tag <Element>, found <Elem> instead\n"},
        {u"<Config><DTD><Element Type=\"int\"/></DTD></Config>",
         "r.xml:1:14: error: tag <Element> : Name not specified\n"},
        {u"<Config><Interface><Form Name=\"f\">\r\n<Edit/><Slider/></Form></Interface></Config>",
         "r.xml:2:8: error: Unknown item type \"Slider\"\n"},
        {u"<Config><Groups><Group/><x/></Groups><Data><Thing/></Data></Config>",
         "r.xml:1:25: error: expected tag <Group>, found <x> instead\n"},
        // What was read before the refusal is still held against its rules; nothing after it.
        {u"<Config><DTD><Element Name=\"b\" Type=\"bools\"/></DTD><ModuleList><Mod/></ModuleList>"
         u"<Data><Item Element=\"zz\"/></Data></Config>",
         "r.xml:1:14: warning: unknown element type \"bools\": the module shows \"???\"\n"
         "r.xml:1:64: error: expected tag <Module>, found <Mod> instead\n"},
        {u"<Config ModuleType=\"Emulator\">\n" + dtd +
             u"<Data><Item Element=\"Port\" Value=\"12\"/><Item Element=\"Port\" Value=\"3x\"/>"
             u"<Item Element=\"Parity\" Value=\"2\"/><Item Element=\"Fg\" Value=\"00ffzz\"/>"
             u"<Item Element=\"Face\" Value=\"-12 0 0\"/><Item Element=\"nothing\" Value=\"1\"/>"
             u"<Item Element=\"Port\" Value=\"9\"/><Item Element=\"Parity\" Value=\"01\"/></Data></Config>",
         "r.xml:1:1: warning: ModuleType \"Emulator\" names no editor and no module kind (Emul, Comms, FXfer): "
         "the general route shows it as a module of no known type\n"
         "r.xml:3:7: warning: Data item \"Port\": Value must be between 1 and 9\n"
         "r.xml:3:40: warning: Data item \"Port\": \"3x\" is not a valid number\n"
         "r.xml:3:73: warning: Data item \"Parity\": \"2\" is none of the values of the set: it shows \"???\"\n"
         "r.xml:3:107: warning: Data item \"Fg\": \"00ffzz\" is not a colour in hexadecimal\n"
         "r.xml:3:142: warning: Data item \"Face\": font reads only 3 of its 14 fields\n"
         "r.xml:3:180: warning: Data item \"nothing\" names no element of the DTD: the module adds it as a text "
         "element\n"},
        {u"<Config>\n<Data><Item Element=\"KeyMap\"><Map pkey=\"1\"/></Item></Data>\n" + dtd +
             u"<Data><Item Element=\"KeyMap\"><Map pkey=\"65\" emkey=\"x7\"/><Key/></Item>"
             u"<Item Element=\"Other\"/></Data></Config>",
         "r.xml:4:30: warning: emkey: \"x7\" is not a valid number, read as 0\n"
         "r.xml:4:57: warning: <Key> is not <Map>: the list passes it over\n"
         "r.xml:4:70: warning: list \"Other\" is read to no effect: only PhysicalKeys and EmulationKeys are read\n"
         "r.xml:2:7: warning: Data item \"KeyMap\" comes before the DTD defines its list: the module takes it as a "
         "plain value and loses its entries\n"},
        {u"<Config ModuleType=\"Hotspots\"><DTD><Element Name=\"Hotspots\" Type=\"hotspots\"/></DTD>"
         u"<Data><Item Element=\"Hotspots\"><Item Element=\"file\"/><Map/></Item><Item Element=\"Set\"/></Data>"
         u"</Config>",
         "r.xml:1:115: warning: hot spot item \"file\" is passed over: only filename, directory and emulation are "
         "read\n"
         "r.xml:1:137: warning: <Map> is not <Item>: the hot spot data passes it over\n"},
        {u"<Config><DTD><Element Name=\"a\"/></DTD><Data><Item Element=\"b\"/></Data>"
         u"<Interface StartForm=\"Main\"><Form Name=\"f\"><Edit Element=\"A\"/><Edit Element=\"b\"/>"
         u"<CheckBox Element=\"c\"/><Button Action=\"Form\" ActionParam=\"g\"/><Button Action=\"Form\" "
         u"ActionParam=\"F\"/></Form></Interface></Config>",
         "r.xml:1:45: warning: Data item \"b\" names no element of the DTD: the module adds it as a text element\n"
         "r.xml:1:152: warning: form \"f\" shows element \"c\", which neither the DTD nor Data has\n"
         "r.xml:1:175: warning: form \"f\" opens form \"g\", which no form has\n"
         "r.xml:1:71: warning: StartForm \"Main\" names no form: the module shows the built-in form\n"},
    };
    for (const TBroken& broken : cases) EXPECT_EQ(lines(broken.request), broken.expected) << utf16ToUtf8(broken.request);
}

int textRoute(TConfigSession&, void*) { return kDialogCancel; }

// The checker's error is the module's 630, and its absence the module's run, route by route.
TEST(RequestCheck, RefusesExactlyWhatTheModuleRefuses) {
    TRunRoutes routes;
    routes.form = &textRoute;
    routes.editors.fill(&textRoute);
    const std::u16string requests[] = {
        u"",
        u"<Config/>",
        u"<config moduletype=\"x\"/>",
        u"<Settings/>",
        u"<Config ModuleType=\"keymap\"><DTD><Item/></DTD></Config>",
        u"<Config ModuleType=\"Printer\"><Data><Value/></Data></Config>",
        u"<Config><Other><Anything/></Other><Data><Item><Deeper/></Item></Data></Config>",
        u"<Config ModuleType=\"MouseMap\"><Interface><Form><Knob/></Form></Interface></Config>",
        u"<Config><Interface><Page/></Interface></Config>",
        u"<Config><DTD><Element Name=\"\"/></DTD></Config>",
        u"<Config><DTD><Element Name=\"k\" Type=\"keylist\"/></DTD><Data><Item Element=\"k\"><Map/></Item></Data>"
        u"</Config>",
        u"<Config><ModuleList><Module/><Modul/></ModuleList></Config>",
        u"<Config><Groups><group/></Groups></Config> <!-- -->",
        u"<Config><Groups><group/></Groups></Config> x",
    };
    for (const std::u16string& request : requests) {
        uint32_t status = 0;
        char16_t reply[16];
        const bool refused = RunConfig(request, nullptr, reply, 16, &status, routes) == kResultFailed;
        EXPECT_EQ(CheckExitCode(CheckRequest(request)), refused ? kCheckRefused : kCheckRuns)
            << utf16ToUtf8(request);
    }
}

TEST(RequestCheck, EverySampleRequestChecksClean) {
    int checked = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(QRL_SOURCE_DIR) + "/samples")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".xml" || name.find("_request") == std::string::npos) continue;
        std::string bytes;
        EXPECT_TRUE(platform::readFile(entry.path().string(), bytes)) << name;
        EXPECT_EQ(lines(utf8ToUtf16(bytes)), "") << name;
        ++checked;
    }
    EXPECT_GE(checked, 8);
}

}  // namespace
}  // namespace qrl
