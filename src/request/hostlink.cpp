#include "request/hostlink.h"

#include <array>
#include <vector>

#include "text/textutil.h"

namespace qrl {

namespace {

// A host that asks for more than this for an exchange reply is not believed; the exchange fails
// rather than the allocation.
constexpr uint64_t kMostExchangeCapacity = uint64_t{1} << 26;
// The longest emulation name copied from the host's pointer.
constexpr std::size_t kMostNameLength = 32767;

// The text up to the first zero, never beyond `size` characters.
std::u16string terminatedText(const char16_t* text, std::size_t size) {
    std::size_t length = 0;
    while (length < size && text[length] != u'\0') ++length;
    return std::u16string(text, length);
}

IHostChannel* g_processChannel = nullptr;

}  // namespace

IHostChannel* ProcessHostChannel() { return g_processChannel; }
void SetProcessHostChannel(IHostChannel* channel) { g_processChannel = channel; }

uint64_t HostLink::Send(uint32_t code, uint64_t first, uint64_t second) const {
    if (window == 0 || message == 0) return 0;
    IHostChannel* const target = channel ? channel : g_processChannel;
    if (!target) return 0;
    const THostLinkRecord record{code, first, second};
    return target->Deliver(window, message, record);
}

void HostLink::ShowHelp(std::u16string_view topic, std::u16string_view fallbackTopic) const {
    const std::u16string text(topic.empty() ? fallbackTopic : topic);
    Send(HostCode::Help, 0, LinkAddress(text.c_str()));
}

std::u16string HostLink::Exchange(uint32_t code, std::u16string_view requestText) const {
    const std::u16string request(requestText);
    std::vector<char16_t> reply(kExchangeCapacity, u'\0');
    THostExchangeRecord record;
    record.request = LinkAddress(request.c_str());
    record.reply = LinkAddress(reply.data());
    record.capacity = reply.size();
    uint64_t result = Send(code, 0, LinkAddress(&record));
    if (result == kHostBufferTooSmall) {
        // One retry with the size the host asked for; a second 160 is a failure.
        const uint64_t needed = record.needed;
        if (needed == 0 || needed > kMostExchangeCapacity) return {};
        reply.assign(static_cast<std::size_t>(needed), u'\0');
        record.reply = LinkAddress(reply.data());
        record.capacity = reply.size();
        result = Send(code, 0, LinkAddress(&record));
    }
    if (result != 0) return {};
    return terminatedText(reply.data(), reply.size());
}

std::u16string HostLink::AuthDirectory() const {
    std::array<char16_t, kAuthDirectoryCapacity> buffer{};
    Send(HostCode::AuthDirectory, kAuthDirectoryCapacity, LinkAddress(buffer.data()));
    return terminatedText(buffer.data(), buffer.size());
}

std::u16string HostLink::EmulationName() const {
    const char16_t* name = u"";
    Send(HostCode::EmulationName, 0, LinkAddress(&name));
    if (!name) return {};
    return terminatedText(name, kMostNameLength);
}

uint64_t HostLink::AttributeColours(THostAttributeColourRecord& record) const {
    return Send(HostCode::AttributeColours, 0, LinkAddress(&record));
}

uint64_t HostLink::DeleteLanguage(std::u16string_view name) const {
    const std::u16string text(name);
    return Send(HostCode::DeleteLanguage, 0, LinkAddress(text.c_str()));
}

uint64_t HostLink::AddLanguage(std::u16string_view name, std::u16string_view base) const {
    const std::u16string nameText(name), baseText(base);
    THostAddLanguageRecord record;
    record.name = LinkAddress(nameText.c_str());
    record.base = LinkAddress(baseText.c_str());
    return Send(HostCode::AddLanguage, 0, LinkAddress(&record));
}

void ReadLinkAttributes(HostLink& link, std::u16string_view type, std::u16string_view value,
                        std::u16string_view msgid) {
    if (type != u"HWND") return;
    if (!value.empty()) link.window = wcstoulBase16(value);
    if (!msgid.empty()) link.message = wcstoulBase16(msgid);
}

}  // namespace qrl
