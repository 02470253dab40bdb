#include "forms/runform.h"

#include "kit/basedialog.h"
#include "forms/builtinform.h"
#include "forms/formdef.h"
#include "forms/formdlg.h"
#include "forms/formtemplate.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

namespace qrl {

namespace {

// The template block has always been a zeroed global block of this size. A form of many items
// needs more; the block grows with it rather than being overrun.
constexpr std::size_t kTemplateBlock = 8092;

}  // namespace

int RunForm(TConfigSession& session, TFormDef* form, HWND parent, const TFormEditors& editors) {
    if (form == nullptr) {
        BuildDefaultForm(session);
        form = FindForm(session, DefaultFormName());
        if (form == nullptr) return 0;
    }
    TFormRun run{*form, session, editors};
    TemplateBytes bytes = BuildDialogTemplate(session, *form);
    if (form->usesTree) bytes = SetEditorsAside(bytes, run.lateEditors);
    HGLOBAL block = GlobalAlloc(GMEM_FIXED | GMEM_ZEROINIT, std::max(kTemplateBlock, bytes.size()));
    if (!block) return 0;
    void* memory = GlobalLock(block);
    if (!memory) {
        GlobalFree(block);
        return 0;
    }
    std::memcpy(memory, bytes.data(), bytes.size());

    // The tree needs its class; the entry point registers only the tab control's.
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&classes);

    const INT_PTR result = run.RunModal(parent, static_cast<const DLGTEMPLATE*>(memory), bytes.size());
    GlobalUnlock(block);
    GlobalFree(block);
    return static_cast<int>(result);
}

}  // namespace qrl
