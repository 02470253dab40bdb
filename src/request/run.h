// One run of a request from text to reply: the body of fnRunConfig2W, kept free of the platform so
// that its rules (dispatch, result codes, statuses, the capacity rule, the 630 wall) are tested
// natively. The exports hand it the platform's routes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

class TConfigSession;

// Dialog results.
inline constexpr int kDialogOk = 1;
inline constexpr int kDialogCancel = 2;
inline constexpr int kDialogModule = 4900;
inline constexpr int kDialogConnect = 4901;

// Status values written beside the code.
enum class RunStatus : uint32_t { Accept = 0, Cancelled = 1, Connect = 2, ModuleChange = 3 };

// The specialised module types, in the order the dispatch compares them.
enum class EditorRoute : int { KeyMap = 0, ColourMap = 1, Printer = 2, Hotspots = 3, MouseMap = 4 };
inline constexpr int kEditorRouteCount = 5;

// Shows the start form (FindForm of startForm, or the built-in form) and returns the dialog result.
using TFormRoute = int (*)(TConfigSession& session, void* parent);
// Runs a specialised editor over its own loaded session and returns the dialog result. On 1 the
// editor has stored its state back into the session, which is then written with all values.
using TEditorRoute = int (*)(TConfigSession& session, void* parent);
// The integer key of an ini file (the ini cache's GetIniInt).
using TIniIntReader = int (*)(std::u16string_view file, std::u16string_view section,
                              std::u16string_view key, int defaultValue);

struct TRunRoutes {
    TFormRoute form = nullptr;
    std::array<TEditorRoute, kEditorRouteCount> editors{};  // null: that route fails (630)
    TIniIntReader iniInt = nullptr;                         // null: the macro flag is not read
};

// The route a ModuleType takes: an editor, or -1 for the general form route.
int EditorRouteOf(std::u16string_view moduleType);

// What a run leaves for the call log: what the request's root said, and how long the reply was
// (also one that did not fit). Never a value of the request.
struct TRunRecord {
    std::u16string moduleType;
    std::u16string iniFile;
    int code = 0;
    uint32_t status = 0;
    std::size_t replyLength = 0;  // 0: no reply was written
};

// Runs `request`. Never throws: every exception becomes 630. `status` may be null; it is written
// last on every path. `record`, if given, is filled as far as the run got.
int RunConfig(std::u16string_view request, void* parent, char16_t* reply, uint64_t capacity,
              uint32_t* status, const TRunRoutes& routes, TRunRecord* record = nullptr) noexcept;

// Process-wide state of the module between runs.
bool MacroAssistEnabled();
void SetMacroAssistEnabled(bool enabled);
// "Page 1" to "Page 40", refilled by every run.
inline constexpr int kPageNameCount = 40;
const std::array<std::u16string, kPageNameCount>& PageNames();
void RefillPageNames();

}  // namespace qrl
