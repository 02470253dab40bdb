// An append-only list whose records never move, kept in chunks of many records each. std::deque
// gives every few large records a small block of their own, so a walk over a large list jumps from
// block to block across the heap and meets each record cold; here a walk runs through long
// stretches of contiguous memory.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace qrl {

template <class T, std::size_t kChunk = 256>
class TChunkedList {
    static_assert((kChunk & (kChunk - 1)) == 0, "a power of two, so that a position splits by shifts");

public:
    using value_type = T;

    template <class List, class Item>
    class Iterator {
    public:
        Iterator(List* list, std::size_t position) : list_(list), position_(position) {}
        Item& operator*() const { return (*list_)[position_]; }
        Item* operator->() const { return &(*list_)[position_]; }
        Iterator& operator++() {
            ++position_;
            return *this;
        }
        bool operator==(const Iterator& other) const { return position_ == other.position_; }

    private:
        List* list_;
        std::size_t position_;
    };
    using iterator = Iterator<TChunkedList, T>;
    using const_iterator = Iterator<const TChunkedList, const T>;

    TChunkedList() = default;
    TChunkedList(const TChunkedList&) = delete;
    TChunkedList& operator=(const TChunkedList&) = delete;
    ~TChunkedList() {
        for (std::size_t i = size_; i > 0; --i) (*this)[i - 1].~T();
    }

    template <class... Args>
    T& emplace_back(Args&&... args) {
        if (size_ == chunks_.size() * kChunk) chunks_.push_back(std::unique_ptr<Slot[]>(new Slot[kChunk]));
        T* made = new (SlotAt(size_)) T(std::forward<Args>(args)...);
        ++size_;  // only once the record stands
        return *made;
    }
    void push_back(const T& item) { emplace_back(item); }
    void push_back(T&& item) { emplace_back(std::move(item)); }

    T& operator[](std::size_t i) { return *std::launder(reinterpret_cast<T*>(SlotAt(i))); }
    const T& operator[](std::size_t i) const { return *std::launder(reinterpret_cast<const T*>(SlotAt(i))); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    T& front() { return (*this)[0]; }
    const T& front() const { return (*this)[0]; }
    T& back() { return (*this)[size_ - 1]; }
    const T& back() const { return (*this)[size_ - 1]; }

    iterator begin() { return {this, 0}; }
    iterator end() { return {this, size_}; }
    const_iterator begin() const { return {this, 0}; }
    const_iterator end() const { return {this, size_}; }

private:
    struct Slot {
        alignas(T) std::byte bytes[sizeof(T)];
    };
    std::byte* SlotAt(std::size_t i) const { return chunks_[i / kChunk][i % kChunk].bytes; }

    std::vector<std::unique_ptr<Slot[]>> chunks_;
    std::size_t size_ = 0;
};

}  // namespace qrl
