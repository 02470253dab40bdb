// Texts of a request that are set once and then only read: the names, labels and defaults of its
// element definitions. A large request holds hundreds of thousands of them, and a string of its
// own for each (32 bytes, and a heap block for any text over seven characters) made loading mostly
// the allocator's work and every later walk a chase over the heap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

// Keeps texts in large blocks, one after another in the order they came, until it goes. The
// session has one for what its request's element definitions read.
class TTextPool {
public:
    TTextPool();
    ~TTextPool();
    TTextPool(const TTextPool&) = delete;
    TTextPool& operator=(const TTextPool&) = delete;

    // The record of a copy of `text` (its length, then its characters), valid as long as the pool.
    const void* Keep(std::u16string_view text);

private:
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* free_ = nullptr;
    std::size_t left_ = 0;
};

// One such text: a pointer to its record, 8 bytes. A text set by Share lies in a pool and is not
// freed by the text; one set any other way owns its record. A copy always owns its own, so a copy
// of an element may outlive the session; a move hands the record on as it is.
class TFixedText {
public:
    TFixedText() = default;
    TFixedText(std::u16string_view text) : record_(Own(text)) {}  // NOLINT: implicit, read like a string
    TFixedText(const std::u16string& text) : TFixedText(std::u16string_view(text)) {}
    TFixedText(const char16_t* text) : TFixedText(std::u16string_view(text)) {}
    TFixedText(const TFixedText& other) : TFixedText(other.view()) {}
    TFixedText(TFixedText&& other) noexcept;
    TFixedText& operator=(const TFixedText& other);
    TFixedText& operator=(TFixedText&& other) noexcept;
    ~TFixedText() { Release(); }

    // Sets the text to a copy of `text` kept in `pool`.
    void Share(TTextPool& pool, std::u16string_view text);

    std::u16string_view view() const {
        if (!record_) return {};
        const auto* record = reinterpret_cast<const std::byte*>(record_ & ~kOwned);
        return {reinterpret_cast<const char16_t*>(record + sizeof(uint32_t)),
                *reinterpret_cast<const uint32_t*>(record)};
    }
    operator std::u16string_view() const { return view(); }  // NOLINT: read wherever a view is
    std::u16string str() const { return std::u16string(view()); }

    std::size_t size() const { return view().size(); }
    bool empty() const { return record_ == 0; }
    const char16_t* data() const { return view().data(); }
    const char16_t* begin() const { return view().data(); }
    const char16_t* end() const { return view().data() + view().size(); }
    char16_t operator[](std::size_t i) const { return view()[i]; }

    friend bool operator==(const TFixedText& a, std::u16string_view b) { return a.view() == b; }

private:
    static constexpr uintptr_t kOwned = 1;  // records are at least 4-aligned: the low bit is free
    static uintptr_t Own(std::u16string_view text);
    void Release();

    uintptr_t record_ = 0;  // 0: empty
};

inline std::u16string operator+(const TFixedText& a, std::u16string_view b) {
    std::u16string text(a.view());
    text += b;
    return text;
}
inline std::u16string operator+(std::u16string_view a, const TFixedText& b) {
    std::u16string text(a);
    text += b.view();
    return text;
}

}  // namespace qrl
