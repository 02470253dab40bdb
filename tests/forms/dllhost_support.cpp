#include "dllhost.h"
#include "driver.h"

#include "request/fakehost.h"
#include "text/textutil.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace qrl::test {

using qrl::testing::AnswerWith;
using qrl::testing::ExchangeOf;
using qrl::testing::TFakeHost;

Product& Product::Get() {
    static Product product;
    return product;
}

std::string ReplyText(std::initializer_list<std::pair<std::u16string, std::u16string>> items,
                      std::u16string_view rest) {
    std::u16string text = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n";
    if (items.size() != 0) {
        text += u"  <Data>\n";
        for (const auto& [name, value] : items) {
            std::u16string escaped;  // as the reply writer escapes an attribute
            for (char16_t c : value) {
                switch (c) {
                case u'&': escaped += u"&amp;"; break;
                case u'<': escaped += u"&lt;"; break;
                case u'>': escaped += u"&gt;"; break;
                case u'"': escaped += u"&quot;"; break;
                case u'\'': escaped += u"&apos;"; break;
                default: escaped += c;
                }
            }
            text += u"    <Item Element=\"" + name + u"\" Value=\"" + escaped + u"\"/>\n";
        }
        text += u"  </Data>\n";
    }
    return utf16ToUtf8(text + std::u16string(rest) + u"</Config>");
}

std::string Utf8(const std::u16string& text) { return utf16ToUtf8(text); }

std::wstring ProductPath() {
    // The DLL is built beside the tests: <build>/src/qrl4cfg.dll, the tests in <build>/tests.
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring dll(path);
    dll = dll.substr(0, dll.find_last_of(L"\\/"));
    return dll.substr(0, dll.find_last_of(L"\\/")) + L"\\src\\qrl4cfg.dll";
}

Product::Product() {
    module_ = LoadLibraryW(ProductPath().c_str());
    if (!module_) return;
    runConfig2W_ = reinterpret_cast<RunConfig2WFn>(reinterpret_cast<void*>(GetProcAddress(module_, "fnRunConfig2W")));
    openWait_ = reinterpret_cast<OpenWaitFn>(reinterpret_cast<void*>(GetProcAddress(module_, "fnOpenWait")));
    macroAssist_ = reinterpret_cast<MacroAssistFn>(reinterpret_cast<void*>(GetProcAddress(module_, "fnMacroAssist")));
    if (!runConfig2W_ || !openWait_ || !macroAssist_) module_ = nullptr;
}

RunResult Product::RunConfig2W(const std::u16string& request, HWND parent, uint64_t capacity) {
    RunResult result;
    std::u16string text = request;
    std::vector<wchar_t> buffer(static_cast<std::size_t>(capacity) + 1, L'#');
    result.code = runConfig2W_(reinterpret_cast<wchar_t*>(text.data()), parent, buffer.data(), capacity, &result.status);
    if (result.code == 0) result.reply = std::u16string(reinterpret_cast<const char16_t*>(buffer.data()));
    return result;
}

int Product::OpenWait(HWND parent, unsigned char flags) { return openWait_(parent, flags); }

int Product::MacroAssist(HWND parent, std::u16string& text, uint32_t capacity, const std::u16string& keyNames,
                         HWND host, int mode) {
    std::vector<wchar_t> buffer(std::max<std::size_t>(capacity, text.size() + 1), L'#');
    std::copy(text.begin(), text.end(), buffer.begin());
    buffer[text.size()] = L'\0';
    const std::u16string names = keyNames + u'\0';
    const int code = macroAssist_(parent, buffer.data(), capacity, reinterpret_cast<const wchar_t*>(names.c_str()),
                                  host, mode);
    text.assign(reinterpret_cast<const char16_t*>(buffer.data()));
    return code;
}

HostWindow::HostWindow(UINT message)
    : message_(message), window_(CreateOwnedWindow(L"QrlTestHost", Proc, this, 0, 0, 0, 0, 0, HWND_MESSAGE)) {}

HostWindow::~HostWindow() {
    if (window_) DestroyWindow(window_);
}

std::vector<std::u16string> HostWindow::Texts(uint32_t code) const {
    std::vector<std::u16string> texts;
    for (const Call& call : calls)
        if (call.code == code) texts.push_back(call.text);
    return texts;
}

std::u16string HostWindow::LinkElement() const {
    return u"<Link type=\"HWND\" value=\"" + hexUpper(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(window_))) +
           u"\" msgid=\"" + hexUpper(message_) + u"\"/>";
}

// The records are read with the module's own layouts, which the host link tests pin down.
LRESULT CALLBACK HostWindow::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self || message != self->message_) return DefWindowProcW(window, message, wParam, lParam);
    THostLinkRecord record;
    std::memcpy(&record, reinterpret_cast<const void*>(lParam), sizeof record);
    Call call{record.code, {}};
    uint64_t result = 0;
    switch (record.code) {
    case 123: {
        auto* buffer = reinterpret_cast<char16_t*>(static_cast<uintptr_t>(record.second));
        const std::size_t n = std::min<std::size_t>(self->authDirectory.size(), record.first - 1);
        std::memcpy(buffer, self->authDirectory.data(), n * sizeof(char16_t));
        buffer[n] = 0;
        break;
    }
    case 2094:
    case 8439: call.text = TFakeHost::TextAt(record.second); break;
    case 8437:
        // The charmap exchange: the request noted, the next prepared reply given if it fits.
        call.text = TFakeHost::TextAt(ExchangeOf(record).request);
        if (self->exchangeReplies.empty()) break;
        result = AnswerWith(record, self->exchangeReplies.front());
        if (result == 0) self->exchangeReplies.erase(self->exchangeReplies.begin());
        break;
    case 8440: {
        const auto& add = *reinterpret_cast<const THostAddLanguageRecord*>(static_cast<uintptr_t>(record.second));
        call.text = TFakeHost::TextAt(add.name) + u"<" + TFakeHost::TextAt(add.base);
        break;
    }
    case 1: {
        auto& colours = *reinterpret_cast<THostAttributeColourRecord*>(static_cast<uintptr_t>(record.second));
        call.text = toU16(std::to_string(colours.kind) + ":" + std::to_string(colours.attribute1) + ":" +
                          std::to_string(colours.attribute2));
        colours.foreground = self->attributeForeground;
        colours.background = self->attributeBackground;
        break;
    }
    default: break;
    }
    self->calls.push_back(call);
    return static_cast<LRESULT>(record.code == 8439 ? self->deleteResult : result);
}

}  // namespace qrl::test
