// The opt-in log of calls: with LogFile=PATH in the section [qrl4cfg] of a request's IniFile, each
// run appends one line to PATH. It names the call and its outcome, never a value of the request
// (passwords travel in requests). A log that cannot be written is skipped; it never changes a result.
#pragma once

#include <string>
#include <string_view>

#include "request/run.h"

namespace qrl {

// "<UTC time> <entry> ModuleType=\"..\" result=N status=N reply=N", and for 630 " reason: " with
// the request checker's first error as it prints it. No line end.
std::string RunLogLine(std::string_view time, std::u16string_view entry, const TRunRecord& record,
                       std::u16string_view request);

// Appends the run's line if the request's IniFile asks for a log. Never throws.
void LogRun(std::u16string_view entry, const TRunRecord& record, std::u16string_view request) noexcept;

}  // namespace qrl
