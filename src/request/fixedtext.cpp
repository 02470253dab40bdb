#include "request/fixedtext.h"

#include <cstring>
#include <new>

namespace qrl {

namespace {

constexpr std::size_t kBlockSize = 64 * 1024;

std::size_t recordSize(std::size_t length) {
    const std::size_t size = sizeof(uint32_t) + length * sizeof(char16_t);
    return (size + 3) & ~std::size_t{3};  // the next record stays 4-aligned
}

void fillRecord(std::byte* record, std::u16string_view text) {
    const auto length = static_cast<uint32_t>(text.size());
    std::memcpy(record, &length, sizeof length);
    std::memcpy(record + sizeof length, text.data(), text.size() * sizeof(char16_t));
}

}  // namespace

TTextPool::TTextPool() = default;
TTextPool::~TTextPool() = default;

const void* TTextPool::Keep(std::u16string_view text) {
    const std::size_t size = recordSize(text.size());
    if (size > left_) {
        // A text of a quarter block or more gets a block of its own, so the current one goes on.
        if (size >= kBlockSize / 4) {
            blocks_.push_back(std::make_unique<std::byte[]>(size));
            fillRecord(blocks_.back().get(), text);
            return blocks_.back().get();
        }
        blocks_.push_back(std::make_unique<std::byte[]>(kBlockSize));
        free_ = blocks_.back().get();
        left_ = kBlockSize;
    }
    std::byte* record = free_;
    fillRecord(record, text);
    free_ += size;
    left_ -= size;
    return record;
}

uintptr_t TFixedText::Own(std::u16string_view text) {
    if (text.empty()) return 0;
    auto* record = static_cast<std::byte*>(::operator new(recordSize(text.size())));
    fillRecord(record, text);
    return reinterpret_cast<uintptr_t>(record) | kOwned;
}

void TFixedText::Release() {
    if (record_ & kOwned) ::operator delete(reinterpret_cast<void*>(record_ & ~kOwned));
    record_ = 0;
}

TFixedText::TFixedText(TFixedText&& other) noexcept : record_(other.record_) {
    // The record is handed on as it is: a shared one still lies in its pool.
    other.record_ = 0;
}

TFixedText& TFixedText::operator=(const TFixedText& other) {
    if (this != &other) {
        const uintptr_t copy = Own(other.view());
        Release();
        record_ = copy;
    }
    return *this;
}

TFixedText& TFixedText::operator=(TFixedText&& other) noexcept {
    if (this != &other) {
        Release();
        record_ = other.record_;
        other.record_ = 0;
    }
    return *this;
}

void TFixedText::Share(TTextPool& pool, std::u16string_view text) {
    Release();
    if (!text.empty()) record_ = reinterpret_cast<uintptr_t>(pool.Keep(text));
}

}  // namespace qrl
