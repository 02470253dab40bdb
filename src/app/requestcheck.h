// A checker of requests: reads a request as the module would and says why the module would refuse
// it (the answer 630 gives no reason), and what it would accept but probably not as the writer
// meant. The module's own readers do the reading; this only listens to them and holds the values
// against the module's own value rules.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

enum class TCheckSeverity { Error, Warning };

// One finding at a place of the request text; line and column count from 1.
struct TCheckFinding {
    TCheckSeverity severity = TCheckSeverity::Error;
    std::size_t line = 1;
    std::size_t column = 1;
    std::u16string text;
};

// Errors are what makes the module answer 630; the module stops at the first, and so does this.
// Warnings come in document order within each kind of check.
std::vector<TCheckFinding> CheckRequest(std::u16string_view request);

// "file:line:column: error: text", in UTF-8, without a line end.
std::string FormatFinding(std::string_view file, const TCheckFinding& finding);

// Exit codes of a check: the module would run the request (warnings allowed), would answer 630, or
// the file could not be read.
inline constexpr int kCheckRuns = 0;
inline constexpr int kCheckRefused = 1;
inline constexpr int kCheckUnreadable = 2;
int CheckExitCode(const std::vector<TCheckFinding>& findings);

}  // namespace qrl
