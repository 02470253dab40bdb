#include "hostwindow.h"

#include <cstdio>
#include <cstring>

#include "request/hostlink.h"
#include "text/textutil.h"

namespace qrl4host {

namespace {

using qrl::HostCode;

template <class T>
T* at(uint64_t address) {
    return reinterpret_cast<T*>(static_cast<uintptr_t>(address));
}

std::u16string textAt(uint64_t address) {
    const char16_t* text = at<const char16_t>(address);
    return text ? std::u16string(text) : std::u16string();
}

LRESULT answer(THostOptions& options, const qrl::THostLinkRecord& record) {
    switch (static_cast<HostCode>(record.code)) {
    case HostCode::AttributeColours: {
        auto* colours = at<qrl::THostAttributeColourRecord>(record.second);
        std::printf("link: attribute colours kind %u attributes %u %u\n", colours->kind, colours->attribute1,
                    colours->attribute2);
        colours->foreground = options.attributeForeground;
        colours->background = options.attributeBackground;
        return 0;
    }
    case HostCode::AuthDirectory: {
        char16_t* buffer = at<char16_t>(record.second);
        const std::size_t room = static_cast<std::size_t>(record.first);
        if (buffer && room > 0) {
            const std::size_t n = options.authDirectory.size() < room - 1 ? options.authDirectory.size() : room - 1;
            std::memcpy(buffer, options.authDirectory.data(), n * sizeof(char16_t));
            buffer[n] = u'\0';
        }
        PrintText("link: auth directory asked, given", options.authDirectory);
        return 0;
    }
    case HostCode::Help:
        PrintText("link: help", textAt(record.second));
        return 0;
    case HostCode::EmulationName:
        *at<const char16_t*>(record.second) = options.emulationName.c_str();
        PrintText("link: emulation name asked, given", options.emulationName);
        return 0;
    case HostCode::Exchange: {
        auto* exchange = at<qrl::THostExchangeRecord>(record.second);
        PrintText("link: exchange request", textAt(exchange->request));
        if (options.exchangeReplies.empty()) return 1;
        const std::u16string& reply = options.exchangeReplies[options.nextExchange];
        if (exchange->capacity < reply.size() + 1) {
            exchange->needed = reply.size() + 1;
            return 160;
        }
        std::memcpy(at<char16_t>(exchange->reply), reply.c_str(), (reply.size() + 1) * sizeof(char16_t));
        if (options.nextExchange + 1 < options.exchangeReplies.size()) ++options.nextExchange;
        return 0;
    }
    case HostCode::MapsSaved:
        std::printf("link: character maps saved\n");
        return options.mapsSavedResult;
    case HostCode::DeleteLanguage:
        PrintText("link: delete language", textAt(record.second));
        return options.deleteLanguageResult;
    case HostCode::AddLanguage: {
        const auto* add = at<qrl::THostAddLanguageRecord>(record.second);
        PrintText("link: add language", textAt(add->name));
        PrintText("link: based on", textAt(add->base));
        return options.addLanguageResult;
    }
    }
    std::printf("link: unknown code %u\n", record.code);
    return 0;
}

LRESULT CALLBACK linkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kLinkMessage && lParam != 0) {
        auto* options = reinterpret_cast<THostOptions*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        qrl::THostLinkRecord record;
        std::memcpy(&record, reinterpret_cast<const void*>(lParam), sizeof record);
        const LRESULT result = options ? answer(*options, record) : 0;
        std::fflush(stdout);
        return result;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

void PrintText(const char* label, std::u16string_view text) {
    std::printf("%s: %s\n", label, qrl::utf16ToUtf8(text).c_str());
}

HWND CreateLinkWindow(HINSTANCE instance, THostOptions* options) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &linkProc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"qrl4hostLink";
    RegisterClassW(&windowClass);
    HWND window = CreateWindowExW(0, L"qrl4hostLink", L"qrl4host link", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  instance, nullptr);
    if (window) SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(options));
    return window;
}

}  // namespace qrl4host
