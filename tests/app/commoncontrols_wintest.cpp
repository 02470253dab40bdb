// The module's windows get version 6 of the common controls from the DLL's own manifest, in a host
// (this program) that has no manifest at all.
#include "formsetup.h"
#include "forms/forms_rc.h"

#include <gtest/gtest.h>

namespace qrl::test {

TEST(CommonControls, TheSettingsSearchShowsItsCueText) {
    ASSERT_TRUE(Product::Get().Loaded());
    ForgetSelection(u"Comms");
    std::wstring cue = L"(none)";
    RunRequest(SampleText("comms_request.xml"), L"Configure  Telnet over TCP", [&](Driver& d, HWND dialog) {
        // Version 5's edit doesn't know the message and answers 0.
        wchar_t text[64] = {};
        if (SendDlgItemMessageW(dialog, IDC_SEARCH_EDIT, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(text), 64))
            cue = text;
        d.Close(dialog, IDCANCEL);
    });
    EXPECT_EQ(cue, L"Search settings (Ctrl+F)");
}

}  // namespace qrl::test
