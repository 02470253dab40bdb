#include <gtest/gtest.h>

#include <stdexcept>

#include "request/reply.h"
#include "request/run.h"
#include "request/session.h"

namespace qrl {
namespace {

// What the fake dialogs do: return a result, maybe change a value first.
int g_formResult = kDialogOk;
int g_formCalls = 0;

int fakeForm(TConfigSession& session, void*) {
    ++g_formCalls;
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

// A run's result, code and status and reply compared at once.
struct TRun {
    int code;
    uint32_t status;
    std::u16string reply;
    bool operator==(const TRun&) const = default;
};
void PrintTo(const TRun& r, std::ostream* os) {
    *os << "{" << r.code << ", status " << r.status << ", " << ::testing::PrintToString(r.reply) << "}";
}

TRun run(std::u16string_view request, const TRunRoutes& routes, uint64_t capacity = 4096) {
    std::vector<char16_t> buffer(capacity + 1, u'#');
    uint32_t status = 99;
    const int code = RunConfig(request, nullptr, buffer.data(), capacity, &status, routes);
    const std::u16string text = code == 0 ? std::u16string(buffer.data()) : std::u16string();
    return TRun{code, status, text};
}

TEST(Run, GeneralRouteResults) {
    const TRunRoutes routes{.form = &fakeForm};
    g_formResult = kDialogOk;
    EXPECT_EQ(run(kRequest, routes),
              (TRun{0, 0, std::u16string(kHead) +
                              u"  <Data>\n    <Item Element=\"Host\" Value=\"changed\"/>\n  </Data>\n</Config>"}));
    g_formResult = kDialogModule;
    EXPECT_EQ(run(kRequest, routes),
              (TRun{0, 3, std::u16string(kHead) +
                              u"  <Directives>\n    <ChangeEmul ModuleName=\"chosen\"/>\n  </Directives>\n</Config>"}));
    g_formResult = kDialogConnect;
    EXPECT_EQ(run(kRequest, routes),
              (TRun{0, 2, std::u16string(kHead) + u"  <Data>\n    <Item Element=\"Host\" Value=\"changed\"/>\n  </Data>\n"
                                                  u"  <Directives>\n    <CommConnect/>\n  </Directives>\n</Config>"}));
    for (int result : {kDialogCancel, 0, 7}) {
        g_formResult = result;
        EXPECT_EQ(run(kRequest, routes), (TRun{1, 1, u""})) << result;
    }
}

TEST(Run, CapacityRuleStatusOnOverflowAndNoStatusPointer) {
    const TRunRoutes routes{.form = &fakeForm};
    g_formResult = kDialogOk;
    const std::size_t length = run(kRequest, routes).reply.size();
    EXPECT_EQ(run(kRequest, routes, length + 1).code, 0);
    EXPECT_EQ(run(kRequest, routes, length).code, 160);

    g_formResult = kDialogConnect;
    const std::size_t connectLength = run(kRequest, routes).reply.size();
    EXPECT_EQ(run(kRequest, routes, connectLength), (TRun{160, 0, u""}));  // status not 2: lost with the reply

    // No status pointer: the codes alone.
    g_formResult = kDialogModule;
    char16_t buffer[1024];
    EXPECT_EQ(RunConfig(kRequest, nullptr, buffer, 1024, nullptr, routes), 0);
    EXPECT_EQ(RunConfig(u"<bad", nullptr, buffer, 1024, nullptr, routes), 630);
    EXPECT_EQ(RunConfig(kRequest, nullptr, buffer, 10, nullptr, routes), 160);
}

TEST(Run, FailuresAre630WithStatusZero) {
    const TRunRoutes routes{.form = &fakeForm};
    g_formResult = kDialogOk;
    g_formCalls = 0;
    // One catch takes every failure alike; this one comes from the general route's own load.
    EXPECT_EQ(run(u"<Config><Data><X/></Data></Config>", routes), (TRun{630, 0, u""}));
    EXPECT_EQ(g_formCalls, 0);

    EXPECT_EQ(run(kRequest, TRunRoutes{.form = &throwingForm}), (TRun{630, 0, u""}));

    // Without a form runner the general route has no dialog: cancelled.
    EXPECT_EQ(run(kRequest, TRunRoutes{}), (TRun{1, 1, u""}));
}

TEST(Run, DispatchOnModuleType) {
    // Case folds; a near name is no route.
    const struct Case { const char16_t* type; int route; } cases[] = {
        {u"keymap", static_cast<int>(EditorRoute::KeyMap)}, {u"COLOURMAP", static_cast<int>(EditorRoute::ColourMap)},
        {u"Emul", -1}, {u"", -1}, {u"KeyMaps", -1},
    };
    for (const Case& c : cases) EXPECT_EQ(EditorRouteOf(c.type), c.route) << ::testing::PrintToString(c.type);

    const TRunRoutes routes{.form = &fakeForm};
    g_formResult = kDialogOk;
    g_formCalls = 0;
    // A specialised type with no editor yet fails; the form is not shown.
    EXPECT_EQ(run(u"<Config ModuleType=\"keymap\"/>", routes), (TRun{630, 0, u""}));
    EXPECT_EQ(g_formCalls, 0);
    // A root whose attribute is spelt in capitals takes the general route.
    EXPECT_EQ(run(u"<CONFIG MODULETYPE=\"KeyMap\"/>", routes).code, 0);
    EXPECT_EQ(g_formCalls, 1);
}

TEST(Run, SpecialisedRouteRepliesWithAllValues) {
    TRunRoutes routes;
    routes.editors[static_cast<std::size_t>(EditorRoute::MouseMap)] = &fakeEditor;
    const std::u16string request =
        u"<Config ModuleType=\"mousemap\"><DTD><Element Name=\"Host\"/><Element Name=\"Other\" Default=\"o\"/></DTD>"
        u"<Data><Item Element=\"Other\" Value=\"o\"/></Data></Config>";
    editorResult = kDialogOk;
    // All values, and no ApplyDataValues on this path: Other keeps its Default.
    EXPECT_EQ(run(request, routes), (TRun{0, 0, std::u16string(kHead) +
                                                    u"  <Data>\n    <Item Element=\"Host\" Value=\"edited\"/>\n"
                                                    u"    <Item Element=\"Other\" Value=\"o\"/>\n  </Data>\n</Config>"}));
    editorResult = kDialogCancel;
    EXPECT_EQ(run(request, routes), (TRun{2, 0, u""}));  // the editor's result as it stands
    editorResult = 4321;
    EXPECT_EQ(run(request, routes), (TRun{4321, 0, u""}));
    editorResult = kDialogOk;
    EXPECT_EQ(run(request, routes, 20), (TRun{160, 0, u""}));
}

TEST(Run, MacroAssistFlagFollowsTheIniFile) {
    TRunRoutes routes{.form = &fakeForm, .iniInt = &iniSaysOne};
    g_formResult = kDialogCancel;
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

}  // namespace
}  // namespace qrl
