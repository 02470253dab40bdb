#include <gtest/gtest.h>

#include <stdexcept>

#include "request/reply.h"
#include "request/run.h"
#include "request/session.h"

namespace qrl {
namespace {

// What the fake dialogs do: return a result, maybe change a value first.
int g_formResult = kDialogOk;
std::u16string g_seenStartForm;
int g_formCalls = 0;

int fakeForm(TConfigSession& session, void*) {
    ++g_formCalls;
    g_seenStartForm = session.startForm;
    if (TElementDef* e = session.FindElement(u"Host")) e->value = u"changed";
    if (!session.moduleLists.empty()) session.moduleLists[0].current = u"chosen";
    return g_formResult;
}
int throwingForm(TConfigSession&, void*) { throw std::runtime_error("dialog failed"); }
int editorResult = kDialogOk;
int fakeEditor(TConfigSession& session, void*) {
    if (TElementDef* e = session.FindElement(u"Host")) e->value = u"edited";
    return editorResult;
}
int g_iniCalls = 0;
int iniSaysOne(std::u16string_view, std::u16string_view section, std::u16string_view key, int) {
    ++g_iniCalls;
    return section == u"qrl4cfg" && key == u"MacroAssist" ? 1 : 0;
}
int iniSaysZero(std::u16string_view, std::u16string_view, std::u16string_view, int) { return 0; }

constexpr std::u16string_view kRequest =
    u"<Config ModuleType=\"Emul\"><DTD><Element Name=\"Host\"/></DTD>"
    u"<Data><Item Element=\"Host\" Value=\"h\"/></Data><ModuleList Current=\"vt\"/></Config>";
constexpr std::u16string_view kHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n";

struct TRun {
    int code;
    uint32_t status;
    std::u16string reply;
};

TRun run(std::u16string_view request, const TRunRoutes& routes, uint64_t capacity = 4096) {
    std::vector<char16_t> buffer(capacity + 1, u'#');
    uint32_t status = 99;
    const int code = RunConfig(request, nullptr, buffer.data(), capacity, &status, routes);
    const std::u16string text = code == 0 ? std::u16string(buffer.data()) : std::u16string();
    return TRun{code, status, text};
}

TRunRoutes formRoutes() {
    TRunRoutes routes;
    routes.form = &fakeForm;
    return routes;
}

TEST(Run, GeneralRouteResults) {
    const TRunRoutes routes = formRoutes();
    g_formResult = kDialogOk;
    TRun r = run(kRequest, routes);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 0u);
    EXPECT_EQ(r.reply, std::u16string(kHead) +
                           u"  <Data>\n    <Item Element=\"Host\" Value=\"changed\"/>\n  </Data>\n</Config>");

    g_formResult = kDialogModule;
    r = run(kRequest, routes);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 3u);
    EXPECT_EQ(r.reply, std::u16string(kHead) +
                           u"  <Directives>\n    <ChangeEmul ModuleName=\"chosen\"/>\n  </Directives>\n</Config>");

    g_formResult = kDialogConnect;
    r = run(kRequest, routes);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 2u);
    EXPECT_NE(r.reply.find(u"<CommConnect/>"), std::u16string::npos);

    for (int result : {kDialogCancel, 0, 7}) {
        g_formResult = result;
        r = run(kRequest, routes);
        EXPECT_EQ(r.code, 1);
        EXPECT_EQ(r.status, 1u);
    }
}

TEST(Run, CapacityRuleAndStatusOnOverflow) {
    const TRunRoutes routes = formRoutes();
    g_formResult = kDialogOk;
    const std::size_t length = run(kRequest, routes).reply.size();
    EXPECT_EQ(run(kRequest, routes, length + 1).code, 0);
    EXPECT_EQ(run(kRequest, routes, length).code, 160);

    g_formResult = kDialogConnect;
    const std::size_t connectLength = run(kRequest, routes).reply.size();
    const TRun r = run(kRequest, routes, connectLength);
    EXPECT_EQ(r.code, 160);
    EXPECT_EQ(r.status, 0u);  // not 2: the run's result is lost with its reply
}

TEST(Run, FailuresAre630WithStatusZero) {
    const TRunRoutes routes = formRoutes();
    g_formResult = kDialogOk;
    g_formCalls = 0;
    for (std::u16string_view broken : {std::u16string_view(u"<Config"), std::u16string_view(u"<Konfig/>"),
                                       std::u16string_view(u""), std::u16string_view(u"<Config><Data><X/></Data></Config>")}) {
        const TRun r = run(broken, routes);
        EXPECT_EQ(r.code, 630);
        EXPECT_EQ(r.status, 0u);
    }
    EXPECT_EQ(g_formCalls, 0);

    TRunRoutes throwing;
    throwing.form = &throwingForm;
    EXPECT_EQ(run(kRequest, throwing).code, 630);

    // Without a form runner the general route has no dialog: cancelled.
    const TRun none = run(kRequest, TRunRoutes{});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.status, 1u);
}

TEST(Run, NullStatusPointer) {
    const TRunRoutes routes = formRoutes();
    g_formResult = kDialogModule;
    char16_t buffer[1024];
    EXPECT_EQ(RunConfig(kRequest, nullptr, buffer, 1024, nullptr, routes), 0);
    EXPECT_EQ(RunConfig(u"<bad", nullptr, buffer, 1024, nullptr, routes), 630);
    EXPECT_EQ(RunConfig(kRequest, nullptr, buffer, 10, nullptr, routes), 160);
}

TEST(Run, DispatchOnModuleType) {
    EXPECT_EQ(EditorRouteOf(u"keymap"), static_cast<int>(EditorRoute::KeyMap));
    EXPECT_EQ(EditorRouteOf(u"COLOURMAP"), static_cast<int>(EditorRoute::ColourMap));
    EXPECT_EQ(EditorRouteOf(u"Printer"), static_cast<int>(EditorRoute::Printer));
    EXPECT_EQ(EditorRouteOf(u"hotspots"), static_cast<int>(EditorRoute::Hotspots));
    EXPECT_EQ(EditorRouteOf(u"MouseMap"), static_cast<int>(EditorRoute::MouseMap));
    EXPECT_EQ(EditorRouteOf(u"Emul"), -1);
    EXPECT_EQ(EditorRouteOf(u""), -1);
    EXPECT_EQ(EditorRouteOf(u"KeyMaps"), -1);

    TRunRoutes routes = formRoutes();
    g_formResult = kDialogOk;
    g_formCalls = 0;
    // A specialised type with no editor yet fails; the form is not shown.
    TRun r = run(u"<Config ModuleType=\"keymap\"/>", routes);
    EXPECT_EQ(r.code, 630);
    EXPECT_EQ(r.status, 0u);
    EXPECT_EQ(g_formCalls, 0);
    // A root whose attribute is spelt in capitals takes the general route.
    r = run(u"<CONFIG MODULETYPE=\"KeyMap\"/>", routes);
    EXPECT_EQ(g_formCalls, 1);
    EXPECT_EQ(r.code, 0);
}

TEST(Run, SpecialisedRouteRepliesWithAllValues) {
    TRunRoutes routes;
    routes.editors[static_cast<std::size_t>(EditorRoute::MouseMap)] = &fakeEditor;
    const std::u16string request =
        u"<Config ModuleType=\"mousemap\"><DTD><Element Name=\"Host\"/><Element Name=\"Other\" Default=\"o\"/></DTD>"
        u"<Data><Item Element=\"Other\" Value=\"o\"/></Data></Config>";
    editorResult = kDialogOk;
    TRun r = run(request, routes);
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.status, 0u);
    // All values, and no ApplyDataValues on this path: Other keeps its Default.
    EXPECT_EQ(r.reply, std::u16string(kHead) +
                           u"  <Data>\n    <Item Element=\"Host\" Value=\"edited\"/>\n"
                           u"    <Item Element=\"Other\" Value=\"o\"/>\n  </Data>\n</Config>");

    editorResult = kDialogCancel;
    r = run(request, routes);
    EXPECT_EQ(r.code, 2);  // the editor's result as it stands
    EXPECT_EQ(r.status, 0u);
    editorResult = 4321;
    EXPECT_EQ(run(request, routes).code, 4321);
    editorResult = kDialogOk;
    EXPECT_EQ(run(request, routes, 20).code, 160);
}

TEST(Run, MacroAssistFlagFollowsTheIniFile) {
    TRunRoutes routes = formRoutes();
    g_formResult = kDialogCancel;
    routes.iniInt = &iniSaysOne;
    SetMacroAssistEnabled(false);
    g_iniCalls = 0;
    run(u"<Config IniFile=\"q.ini\"/>", routes);
    EXPECT_TRUE(MacroAssistEnabled());
    EXPECT_EQ(g_iniCalls, 1);
    run(u"<Config/>", routes);  // no IniFile: the flag stays
    EXPECT_TRUE(MacroAssistEnabled());
    EXPECT_EQ(g_iniCalls, 1);
    routes.iniInt = &iniSaysZero;
    run(u"<Config ModuleType=\"KeyMap\" IniFile=\"q.ini\"/>", routes);  // read before dispatch
    EXPECT_FALSE(MacroAssistEnabled());
}

TEST(Run, PageNames) {
    run(u"<Config/>", TRunRoutes{});
    EXPECT_EQ(PageNames()[0], u"Page 1");
    EXPECT_EQ(PageNames()[39], u"Page 40");
}

}  // namespace
}  // namespace qrl
