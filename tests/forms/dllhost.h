// The test's side of the product: qrl4cfg.dll loaded as a host loads it, its entry points, and a
// host link window that answers the link messages on the dialog thread.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qrl::test {

struct RunResult {
    int code = -1;
    uint32_t status = 0xFFFFFFFF;
    std::u16string reply;
};

// A reply as the host receives it (UTF-8): its Data items, then whatever follows them.
std::string ReplyText(std::initializer_list<std::pair<std::u16string, std::u16string>> items,
                      std::u16string_view rest = {});
// The reply of a run in UTF-8, to compare with ReplyText.
std::string Utf8(const std::u16string& text);

// Where this build's DLL lies.
std::wstring ProductPath();

class Product {
public:
    // The DLL of this build; loaded once per process.
    static Product& Get();
    bool Loaded() const { return module_ != nullptr; }

    RunResult RunConfig2W(const std::u16string& request, HWND parent = nullptr, uint64_t capacity = 65536);
    int OpenWait(HWND parent, unsigned char flags);
    // fnMacroAssist on `text` in a buffer of `capacity` characters (filled with '#' past the text);
    // `keyNames` holds the names with their terminators, as the export reads them.
    int MacroAssist(HWND parent, std::u16string& text, uint32_t capacity, const std::u16string& keyNames,
                    HWND host, int mode);
    HMODULE Module() const { return module_; }

private:
    Product();
    HMODULE module_ = nullptr;
    using RunConfig2WFn = int (*)(wchar_t*, HWND, wchar_t*, uint64_t, uint32_t*);
    using OpenWaitFn = int (*)(HWND, unsigned char);
    using MacroAssistFn = int (*)(HWND, wchar_t*, uint32_t, const wchar_t*, HWND, int);
    RunConfig2WFn runConfig2W_ = nullptr;
    OpenWaitFn openWait_ = nullptr;
    MacroAssistFn macroAssist_ = nullptr;
};

// A test of the DLL: it stops at once when the DLL is not beside the tests.
class ProductTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(Product::Get().Loaded()) << "qrl4cfg.dll not found beside the tests"; }
};

// A hidden window of the calling thread that plays the host's side of the link.
class HostWindow {
public:
    static constexpr UINT kMessage = 0x8123;

    explicit HostWindow(UINT message = kMessage);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // `<Link type="HWND" value=".." msgid=".."/>` for this window.
    std::u16string LinkElement() const;
    HWND Handle() const { return window_; }

    struct Call {
        uint32_t code;
        // The text the second value points at (2094, 8439), the exchange's request (8437), "name<base"
        // (8440), "kind:first:second" (1).
        std::u16string text;
    };
    std::vector<Call> calls;
    // The texts of the calls with this code, in order.
    std::vector<std::u16string> Texts(uint32_t code) const;
    std::u16string authDirectory;  // answered to code 123
    uint64_t deleteResult = 0;     // answered to code 8439
    std::vector<std::u16string> exchangeReplies;  // answered in turn to code 8437
    uint32_t attributeForeground = 0xFFFFFF;  // answered to code 1
    uint32_t attributeBackground = 0;

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    UINT message_;
    HWND window_ = nullptr;
};

}  // namespace qrl::test
