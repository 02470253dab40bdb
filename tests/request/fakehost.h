// A host on the other end of the link, for tests: it records every call and answers from a script.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "request/hostlink.h"

namespace qrl::testing {

class TFakeHost final : public IHostChannel {
public:
    struct Call {
        uint64_t window;
        uint32_t message;
        THostLinkRecord record;
    };
    std::vector<Call> calls;
    // Answers a call; the default answers 0 and touches nothing.
    std::function<uint64_t(const THostLinkRecord&)> answer;
    // Text that code 123 writes into the module's buffer.
    std::u16string authDirectory;

    uint64_t Deliver(uint64_t window, uint32_t message, const THostLinkRecord& record) override {
        calls.push_back(Call{window, message, record});
        if (record.code == static_cast<uint32_t>(HostCode::AuthDirectory) && !authDirectory.empty()) {
            auto* buffer = reinterpret_cast<char16_t*>(static_cast<uintptr_t>(record.second));
            const std::size_t n = authDirectory.size() < record.first ? authDirectory.size() : record.first;
            authDirectory.copy(buffer, n);
            if (n < record.first) buffer[n] = u'\0';
        }
        return answer ? answer(record) : 0;
    }

    // A call's window, message, code and first value, to compare in one go.
    static std::tuple<uint64_t, uint32_t, uint32_t, uint64_t> Key(const Call& c) {
        return {c.window, c.message, c.record.code, c.record.first};
    }

    // The zero-terminated text at the address of a record's value.
    static std::u16string TextAt(uint64_t address) {
        return std::u16string(reinterpret_cast<const char16_t*>(static_cast<uintptr_t>(address)));
    }
};

// The exchange a record of the request/reply codes points to.
inline THostExchangeRecord& ExchangeOf(const THostLinkRecord& record) {
    return *reinterpret_cast<THostExchangeRecord*>(static_cast<uintptr_t>(record.second));
}

// Writes `text` into the module's reply buffer if it fits, else asks for more, as a host does.
inline uint64_t AnswerWith(const THostLinkRecord& record, const std::u16string& text) {
    THostExchangeRecord& exchange = ExchangeOf(record);
    if (exchange.capacity < text.size() + 1) {
        exchange.needed = text.size() + 1;
        return 160;
    }
    auto* buffer = reinterpret_cast<char16_t*>(static_cast<uintptr_t>(exchange.reply));
    std::copy(text.c_str(), text.c_str() + text.size() + 1, buffer);
    return 0;
}

}  // namespace qrl::testing
