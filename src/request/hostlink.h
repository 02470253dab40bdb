// The link back to the host: a window and a private message number from the request's `Link`. Every
// call is one synchronous message whose LPARAM is the address of a packed record; the host answers
// before the call returns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qrl {

class TConfigSession;

// The codes of the link message.
enum class HostCode : uint32_t {
    AttributeColours = 1,
    AuthDirectory = 123,
    Help = 2094,
    EmulationName = 8204,
    Exchange = 8437,
    MapsSaved = 8438,
    DeleteLanguage = 8439,
    AddLanguage = 8440,
};
inline constexpr uint64_t kHostBufferTooSmall = 160;
inline constexpr uint32_t kAuthDirectoryCapacity = 260;
inline constexpr uint64_t kExchangeCapacity = 2048;

// Wire formats shared with the host: fixed layouts, checked below.
#pragma pack(push, 1)
struct THostLinkRecord {
    uint32_t code;
    uint64_t first;
    uint64_t second;
};
#pragma pack(pop)
static_assert(sizeof(THostLinkRecord) == 20);

struct THostExchangeRecord {
    uint32_t size = 48;
    uint32_t zero1 = 0;
    uint64_t request = 0;   // zero-terminated wide text
    uint64_t reply = 0;     // reply buffer
    uint64_t capacity = 0;  // of the reply buffer, in wide characters
    uint64_t needed = 0;    // written by the host when it answers 160
    uint64_t zero2 = 0;
};
static_assert(sizeof(THostExchangeRecord) == 48);

struct THostAttributeColourRecord {
    uint32_t kind = 0;  // 4 or 0
    uint8_t attribute1 = 0;
    uint8_t attribute2 = 0;
    uint8_t unused[14] = {};
    uint32_t foreground = 0;  // written by the host
    uint32_t background = 0;  // written by the host
};
static_assert(sizeof(THostAttributeColourRecord) == 28);

struct THostAddLanguageRecord {
    uint64_t unused = 0;
    uint64_t name = 0;  // zero-terminated wide text
    uint64_t base = 0;  // zero-terminated wide text, empty for the default
};
static_assert(sizeof(THostAddLanguageRecord) == 24);

// Delivers one record to the host's window. The DLL's channel sends the message to the window; tests
// put a fake in its place. A link without a channel of its own uses the process-wide one, which the
// DLL sets when it loads; with none set every call answers 0, as a link to a vanished window does.
class IHostChannel {
public:
    virtual uint64_t Deliver(uint64_t window, uint32_t message, const THostLinkRecord& record) = 0;

protected:
    ~IHostChannel() = default;
};
IHostChannel* ProcessHostChannel();
void SetProcessHostChannel(IHostChannel* channel);

class HostLink {
public:
    uint64_t window = 0;   // the host's window handle; 0 while there is no link
    uint32_t message = 0;  // the message number; 0 while there is no link
    IHostChannel* channel = nullptr;  // null: the process-wide channel

    // The result of the message, or 0 at once without a link.
    uint64_t Send(uint32_t code, uint64_t first, uint64_t second) const;
    uint64_t Send(HostCode code, uint64_t first, uint64_t second) const {
        return Send(static_cast<uint32_t>(code), first, second);
    }
    // Code 2094 with the topic, or with `fallbackTopic` (the session's helpTopic) when it is empty.
    void ShowHelp(std::u16string_view topic, std::u16string_view fallbackTopic) const;
    // A document exchange: the reply text, empty on failure. Retries once on 160.
    std::u16string Exchange(uint32_t code, std::u16string_view requestText) const;
    // Code 123: the directory of the SSH authentication files, empty when the host has none.
    std::u16string AuthDirectory() const;
    // Code 8204: the current emulation's name, copied; empty when the host gives none.
    std::u16string EmulationName() const;
    // Code 1: the host's colours for an attribute, written into `record` (kind and attributes set
    // by the caller). The result is ignored by the callers.
    uint64_t AttributeColours(THostAttributeColourRecord& record) const;
    // Code 8438: the character maps were saved.
    void MapsSaved() const { Send(HostCode::MapsSaved, 0, 0); }
    // Code 8439: delete a language; 0 is success (also without a link).
    uint64_t DeleteLanguage(std::u16string_view name) const;
    // Code 8440: create a language from `base` (empty: the default); 0 is success.
    uint64_t AddLanguage(std::u16string_view name, std::u16string_view base) const;
};

// Reads the attributes of `Link` into the link. Only `type` "HWND" (case counting) switches it on.
void ReadLinkAttributes(HostLink& link, std::u16string_view type, std::u16string_view value,
                        std::u16string_view msgid);

// The address of a text or record as the link's 64-bit value.
template <class T>
uint64_t LinkAddress(T* pointer) {
    return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(pointer));
}

}  // namespace qrl
