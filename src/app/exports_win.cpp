// The DLL's entry points. Text crosses here as wchar_t, which is 16-bit on Windows: the one place it
// is converted to and from char16_t. Nothing thrown may leave an entry point.
#include <windows.h>
#include <commctrl.h>

#include <cwchar>
#include <vector>
#include <string>

// The public header, so that the compiler holds the exports to what hosts are told.
#define QRL4CFG_BUILDING
#include "qrl4cfg.h"

#include "forms/formdef.h"
#include "kit/commoncontrols.h"
#include "kit/dpi.h"
#include "kit/pleasewait.h"
#include "forms/runform.h"
#include "locale/inicache.h"
#include "macro/macroassistdlg.h"
#include "app/module_win.h"
#include "app/runlog.h"
#include "request/reply.h"
#include "request/run.h"
#include "request/session.h"

namespace qrl {

static_assert(QRL4CFG_OK == kResultOk && QRL4CFG_CANCELLED == kResultCancelled &&
              QRL4CFG_TOO_SMALL == kResultTooSmall && QRL4CFG_FAILED == kResultFailed);
static_assert(QRL4CFG_STATUS_ACCEPT == static_cast<uint32_t>(RunStatus::Accept) &&
              QRL4CFG_STATUS_CANCELLED == static_cast<uint32_t>(RunStatus::Cancelled) &&
              QRL4CFG_STATUS_CONNECT == static_cast<uint32_t>(RunStatus::Connect) &&
              QRL4CFG_STATUS_MODULE_CHANGE == static_cast<uint32_t>(RunStatus::ModuleChange));

namespace {

uint64_t g_initWord = 0;  // fnInit's argument; nothing reads it

int runStartForm(TConfigSession& session, void* parent) {
    TFormDef* form = FindForm(session, session.startForm);
    return RunForm(session, form, static_cast<HWND>(parent), FormEditors());
}

int readIniInt(std::u16string_view file, std::u16string_view section, std::u16string_view key,
               int defaultValue) {
    const std::u16string f(file), s(section), k(key);
    return GetIniInt(s.c_str(), k.c_str(), defaultValue, f.c_str());
}

const TRunRoutes& DllRoutes() {
    static const TRunRoutes routes = [] {
        TRunRoutes made;
        made.form = &runStartForm;
        made.editors = EditorRoutes();
        made.iniInt = &readIniInt;
        return made;
    }();
    return routes;
}

// Names one after another, each with its terminator, and an empty one last; null is no names.
std::vector<std::u16string> keyNameList(const wchar_t* names) {
    std::vector<std::u16string> keys;
    for (const wchar_t* name = names; name && *name; name += std::wcslen(name) + 1)
        keys.emplace_back(reinterpret_cast<const char16_t*>(name));
    return keys;
}

std::u16string_view requestText(const wchar_t* request) {
    if (!request) return {};
    return {reinterpret_cast<const char16_t*>(request), std::wcslen(request)};
}

// The run behind both entry points, logged under the entry's name when the request asks for it.
int runLogged(std::u16string_view entry, wchar_t* request, HWND parent, wchar_t* reply, uint64_t capacity,
              uint32_t* status) {
    TCommonControlsScope commonControls;
    TDpiAwarenessScope perMonitor;
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);
    TRunRecord record;
    const int code = RunConfig(requestText(request), parent, reinterpret_cast<char16_t*>(reply), capacity, status,
                               DllRoutes(), &record);
    LogRun(entry, record, requestText(request));
    return code;
}

}  // namespace

}  // namespace qrl

extern "C" {

int fnRunConfig2W(wchar_t* request, HWND parent, wchar_t* reply, uint64_t capacity, uint32_t* status) {
    try {
        return qrl::runLogged(u"fnRunConfig2W", request, parent, reply, capacity, status);
    } catch (...) {
        if (status) *status = 0;
        return qrl::kResultFailed;
    }
}

// Exported under the name a host's compiler gives `int fnRunConfigW(wchar_t*, HWND__*, wchar_t*,
// unsigned int)` (see qrl4cfg.def). It cannot report a status.
int qrlRunConfigW(wchar_t* request, HWND parent, wchar_t* reply, unsigned int capacity) {
    try {
        return qrl::runLogged(u"fnRunConfigW", request, parent, reply, capacity, nullptr);
    } catch (...) {
        return qrl::kResultFailed;
    }
}

int fnInit(uint64_t word) {
    qrl::g_initWord = word;
    return 0;
}

int fnOpenWait(HWND parent, unsigned char flags) {
    try {
        qrl::TCommonControlsScope commonControls;
        qrl::TDpiAwarenessScope perMonitor;
        if (flags & 1)
            qrl::ClosePleaseWait();
        else
            qrl::OpenPleaseWait(parent);
    } catch (...) {
    }
    return 0;
}

int fnMacroAssist(HWND parent, wchar_t* text, uint32_t capacity, const wchar_t* keyNames, HWND hostWindow,
                  int mode) {
    try {
        qrl::TCommonControlsScope commonControls;
        qrl::TDpiAwarenessScope perMonitor;
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&controls);
        // The whole text, to its terminator: the capacity bounds only what is written back.
        std::u16string working(qrl::requestText(text));
        const int result = qrl::runMacroAssistant(parent, working, qrl::keyNameList(keyNames),
                                                  qrl::LinkAddress(hostWindow), static_cast<uint32_t>(mode));
        if (result != IDOK) return qrl::kResultCancelled;
        if (!text) return qrl::kResultTooSmall;
        return qrl::CopyReply(working, reinterpret_cast<char16_t*>(text), capacity);
    } catch (...) {
        return qrl::kResultCancelled;
    }
}

// CQRLCONFIG::operator= of the stateless exported class: returns this and copies nothing. On x64
// a member function takes `this` in the first register and returns the reference in the result
// register, exactly as this function does; the .def file gives it the member's exported name.
void* qrlConfigAssign(void* self, const void*) { return self; }

}  // extern "C"
