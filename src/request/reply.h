// The reply documents: data (changed values only, or all), connect, and module change. The data
// replies are written straight into their text, the module change as a tree.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

class TConfigSession;

std::u16string WriteDataReply(const TConfigSession& session, bool changedOnly);
// The data reply with `Directives` and an empty `CommConnect` behind `Data`.
std::u16string WriteConnectReply(const TConfigSession& session, bool changedOnly);
std::u16string WriteModuleChangeReply(const TConfigSession& session);
// The module types whose change the module-change reply names: "Emul", "Comms", "FXfer", compared
// exactly, unlike the dispatch ("emul" takes the general route but changes nothing).
bool IsModuleKind(std::u16string_view moduleType);

// Result codes at the boundary.
inline constexpr int kResultOk = 0;
inline constexpr int kResultCancelled = 1;
inline constexpr int kResultTooSmall = 160;
inline constexpr int kResultFailed = 630;

// Copies `reply` and its terminator into the host's buffer if it fits (length + 1 <= capacity):
// kResultOk; otherwise nothing is copied and the result is kResultTooSmall.
int CopyReply(const std::u16string& reply, char16_t* buffer, uint64_t capacity);

}  // namespace qrl
