// The opt-in call log through the DLL's entry point: a line per call with the reason of a refusal
// and no value of the request; a log path that cannot be used changes nothing.
#include "dllhost.h"
#include "platform/tempfolder.h"
#include "text/textutil.h"

#include <gtest/gtest.h>

#include <regex>

namespace qrl::test {

TEST(RunLog, OneLinePerCallWithTheReasonAndNoValue) {
    TempFolder folder;
    const auto request = [&](const std::string& root, const std::string& ini, const std::u16string& log) {
        folder.write(ini, "[qrl4cfg]\r\nLogFile=" + utf16ToUtf8(log) + "\r\n");
        return u"<" + utf8ToUtf16(root) + u" IniFile=\"" + folder.file(ini) + u"\" ModuleType=\"Comms\">"
               u"<Data><Item Element=\"Password\" Value=\"s3cret\"/></Data>\n<DTD><Element/></DTD></" +
               utf8ToUtf16(root) + u">";
    };
    // The last two name a path the module refuses and one it cannot write: the answer stays the same.
    for (const auto& [root, ini, logFile] : {std::tuple{"Config", "log.ini", folder.file("calls.log")},
                                  {"Request", "log.ini", folder.file("calls.log")},
                                  {"Config", "bad1.ini", u"C:\\no|such.log"},
                                  {"Config", "bad2.ini", folder.file("none\\x.log")}})
        EXPECT_EQ(Product::Get().RunConfig2W(request(root, ini, logFile)).code, 630);

    const std::string log = folder.read("calls.log");
    const std::regex line{"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\dZ (.*)\r\n"};
    std::vector<std::string> calls;
    for (std::sregex_iterator it{log.begin(), log.end(), line}, end; it != end; ++it) calls.push_back((*it)[1]);
    const std::string head = "fnRunConfig2W ModuleType=\"Comms\" result=630 status=0 reply=0 reason: request:";
    EXPECT_EQ(calls, (std::vector<std::string>{head + "2:6: error: tag <Element> : Name not specified",
                                               head + "1:1: error: root node must be <Config>"}))
        << log;
    EXPECT_EQ(log.find("s3cret"), std::string::npos);
}

}  // namespace qrl::test
