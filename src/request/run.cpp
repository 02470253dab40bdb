#include "request/run.h"

#include <memory>

#include "request/reply.h"
#include "request/session.h"
#include "text/textutil.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace qrl {

namespace {

bool g_macroAssist = false;
std::array<std::u16string, kPageNameCount> g_pageNames;

constexpr std::array<std::u16string_view, kEditorRouteCount> kEditorTypes{
    u"KeyMap", u"ColourMap", u"Printer", u"Hotspots", u"MouseMap"};

int runGeneral(TConfigSession& session, const AdvXMLParser::Element& root, void* parent, char16_t* reply,
               uint64_t capacity, RunStatus& status, const TRunRoutes& routes, std::size_t& replyLength) {
    session.macroAssist = g_macroAssist;
    session.LoadRequest(root);
    session.ApplyDataValues();
    const int result = routes.form ? routes.form(session, parent) : 0;
    std::u16string text;
    switch (result) {
    case kDialogOk:
        text = WriteDataReply(session, true);
        break;
    case kDialogModule:
        text = WriteModuleChangeReply(session);
        status = RunStatus::ModuleChange;
        break;
    case kDialogConnect:
        text = WriteConnectReply(session, true);
        status = RunStatus::Connect;
        break;
    default:
        status = RunStatus::Cancelled;
        return kResultCancelled;
    }
    replyLength = text.size();
    const int code = CopyReply(text, reply, capacity);
    // A reply that did not fit loses the run's changes, and its status with them.
    if (code != kResultOk) status = RunStatus::Accept;
    return code;
}

int runEditor(std::u16string_view request, TEditorRoute editor, void* parent, char16_t* reply,
              uint64_t capacity, std::size_t& replyLength) {
    if (!editor) throw ECfgError(u"no editor for this module type");
    // Each editor reads the request anew into a session of its own.
    TConfigSession session;
    session.macroAssist = g_macroAssist;
    session.LoadRequestText(request);
    const int result = editor(session, parent);
    if (result != kDialogOk) return result;
    const std::u16string text = WriteDataReply(session, false);
    replyLength = text.size();
    return CopyReply(text, reply, capacity);
}

}  // namespace

bool MacroAssistEnabled() { return g_macroAssist; }
void SetMacroAssistEnabled(bool enabled) { g_macroAssist = enabled; }

const std::array<std::u16string, kPageNameCount>& PageNames() { return g_pageNames; }

void RefillPageNames() {
    for (int i = 0; i < kPageNameCount; ++i) g_pageNames[static_cast<std::size_t>(i)] = u"Page " + decimal(i + 1);
}

int EditorRouteOf(std::u16string_view moduleType) {
    for (int i = 0; i < kEditorRouteCount; ++i)
        if (iequals(moduleType, kEditorTypes[static_cast<std::size_t>(i)])) return i;
    return -1;
}

int RunConfig(std::u16string_view request, void* parent, char16_t* reply, uint64_t capacity,
              uint32_t* status, const TRunRoutes& routes, TRunRecord* record) noexcept {
    RunStatus runStatus = RunStatus::Accept;
    int code = kResultFailed;
    TRunRecord made;
    try {
        auto session = std::make_unique<TConfigSession>();
        RefillPageNames();

        const std::unique_ptr<AdvXMLParser::Document> document = ParseRequestText(request);
        const AdvXMLParser::Element& root = RequestRoot(*document);
        // Taken before the root is judged, so that the log of a refused request still finds its way.
        made.moduleType = root.GetAttribute(u"ModuleType").GetText();
        made.iniFile = root.GetAttribute(u"IniFile").GetText();
        if (!iequals(root.GetName(), u"Config")) throw ECfgError(u"root node must be <Config>");

        if (!made.iniFile.empty() && routes.iniInt)
            g_macroAssist = routes.iniInt(made.iniFile, u"qrl4cfg", u"MacroAssist", 0) != 0;

        const int route = EditorRouteOf(made.moduleType);
        if (route >= 0)
            code = runEditor(request, routes.editors[static_cast<std::size_t>(route)], parent, reply, capacity,
                             made.replyLength);
        else
            code = runGeneral(*session, root, parent, reply, capacity, runStatus, routes, made.replyLength);
    } catch (...) {
        // Nothing leaves the module: any failure of the run is the code 630 and nothing is shown.
        code = kResultFailed;
        runStatus = RunStatus::Accept;
    }
    if (status) *status = static_cast<uint32_t>(runStatus);
    if (record) {
        made.code = code;
        made.status = static_cast<uint32_t>(runStatus);
        *record = std::move(made);
    }
    return code;
}

}  // namespace qrl
