// The opt-in call log through the DLL's entry point: a line per call with the reason of a refusal,
// no value of the request, and a log path that cannot be used changes nothing.
#include "dllhost.h"
#include "platform/tempfolder.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <regex>

namespace qrl::test {
namespace {

std::u16string Ini(const TempFolder& folder, const std::string& name, const std::u16string& logFile) {
    folder.write(name, "[qrl4cfg]\r\nLogFile=" + utf16ToUtf8(logFile) + "\r\n");
    return folder.file(name);
}

TEST(RunLog, OneLinePerCallWithTheReasonAndNoValue) {
    ASSERT_TRUE(Product::Get().Loaded());
    TempFolder folder;
    const std::u16string ini = Ini(folder, "log.ini", folder.file("calls.log"));
    // Data comes first so that its password has been read when the DTD is refused.
    const std::u16string refused = u"<Config ModuleType=\"Comms\" IniFile=\"" + ini +
                                   u"\"><Data><Item Element=\"Password\" Value=\"s3cret\"/></Data>"
                                   u"<DTD><Element Type=\"text\"/></DTD></Config>";
    EXPECT_EQ(Product::Get().RunConfig2W(refused).code, 630);
    EXPECT_EQ(Product::Get().RunConfig2W(u"<Request ModuleType=\"KeyMap\" IniFile=\"" + ini + u"\"/>").code, 630);

    const std::string log = folder.read("calls.log");
    const std::regex line{"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\dZ (.*)\r\n"};
    std::vector<std::string> calls;
    for (std::sregex_iterator it{log.begin(), log.end(), line}, end; it != end; ++it) calls.push_back((*it)[1]);
    EXPECT_EQ(calls, (std::vector<std::string>{
                         "fnRunConfig2W ModuleType=\"Comms\" result=630 status=0 reply=0 reason: request:1:"
                         "113: error: tag <Element> : Name not specified",
                         "fnRunConfig2W ModuleType=\"KeyMap\" result=630 status=0 reply=0 reason: request:1:1: "
                         "error: root node must be <Config>"}))
        << log;
    EXPECT_EQ(log.find("s3cret"), std::string::npos);

    // A path the module refuses, or one it cannot write, is no failure of the run.
    const std::u16string badPaths[] = {u"C:\\no|such.log", folder.file("missing\\calls.log")};
    for (std::size_t i = 0; i < std::size(badPaths); ++i) {
        const std::string iniName = "bad" + std::to_string(i) + ".ini";
        const std::u16string request = u"<Request IniFile=\"" + Ini(folder, iniName, badPaths[i]) + u"\"/>";
        const RunResult result = Product::Get().RunConfig2W(request);
        EXPECT_EQ(result.code, 630);
        EXPECT_EQ(result.status, 0u);
    }
}

}  // namespace
}  // namespace qrl::test
