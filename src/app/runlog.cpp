#include "app/runlog.h"

#include <chrono>
#include <cstdio>
#include <vector>

#include "app/requestcheck.h"
#include "locale/inicache.h"
#include "platform/platform.h"
#include "request/reply.h"
#include "text/textutil.h"

namespace qrl {

namespace {

constexpr uint32_t kLogPathCapacity = 260;

std::string utcNow() {
    using namespace std::chrono;
    const auto now = floor<seconds>(system_clock::now());
    const auto day = floor<days>(now);
    const year_month_day date{day};
    const hh_mm_ss time{now - day};
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

// The module type is the request's own text: one line of it, whatever it holds.
std::string oneLine(std::u16string_view text) {
    std::string line = utf16ToUtf8(text);
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 0x20 || c == '"') c = '?';
    return line;
}

std::string refusalReason(std::u16string_view request) {
    for (const TCheckFinding& finding : CheckRequest(request))
        if (finding.severity == TCheckSeverity::Error) return FormatFinding("request", finding);
    return "none the checker finds";
}

}  // namespace

std::string RunLogLine(std::string_view time, std::u16string_view entry, const TRunRecord& record,
                       std::u16string_view request) {
    std::string line(time);
    line += ' ' + utf16ToUtf8(entry) + " ModuleType=\"" + oneLine(record.moduleType) + '"';
    line += " result=" + std::to_string(record.code) + " status=" + std::to_string(record.status);
    line += " reply=" + std::to_string(record.replyLength);
    if (record.code == kResultFailed) line += " reason: " + refusalReason(request);
    return line;
}

void LogRun(std::u16string_view entry, const TRunRecord& record, std::u16string_view request) noexcept {
    try {
        if (record.iniFile.empty()) return;
        std::vector<char16_t> path(kLogPathCapacity, u'\0');
        GetIniString(u"qrl4cfg", u"LogFile", u"", path.data(), kLogPathCapacity, record.iniFile.c_str());
        const std::u16string logFile(path.data());
        if (logFile.empty()) return;
        // appendFile holds the path to the rule every path from a request passes; a refusal or a
        // failed write leaves the run as it was.
        platform::appendFile(logFile, RunLogLine(utcNow(), entry, record, request) + "\r\n");
    } catch (...) {
        // The log is a help, never a reason for a run to end otherwise.
    }
}

}  // namespace qrl
