// A first-wins index of names compared without regard to case. Look-ups by name (elements, forms,
// groups, the data values of the reply) would otherwise walk their whole list for every name, which
// turns a large request quadratic.
//
// Open addressing over a flat table: a large request's look-ups then cost one probe into a compact
// array instead of a walk over separately allocated nodes, which is what decides the speed once the
// request no longer fits in the cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "text/textutil.h"

namespace qrl {

template <class T>
class TNameIndex {
public:
    // Records `item` under `name` unless an earlier item holds a name equal to it without regard to
    // case. The text `name` points to must stay put as long as the index lives; it is normally the
    // item's own name in a container that does not move its items (std::deque, std::list). True if
    // `item` was recorded, false if an earlier item keeps the name.
    bool Add(std::u16string_view name, T* item) {
        if ((entries_.size() + 1) * 2 > slots_.size()) Rehash(slots_.empty() ? 16 : slots_.size() * 2);
        const uint64_t hash = IHash{}(name);
        std::size_t slot = Home(hash);
        for (; slots_[slot] != 0; slot = (slot + 1) & (slots_.size() - 1)) {
            const Entry& entry = entries_[slots_[slot] - 1];
            if (entry.hash == hash && iequals(entry.name, name)) return false;  // the first one stays
        }
        entries_.push_back(Entry{name, item, hash});
        slots_[slot] = static_cast<uint32_t>(entries_.size());
        return true;
    }

    T* Find(std::u16string_view name) const {
        if (slots_.empty()) return nullptr;
        const uint64_t hash = IHash{}(name);
        for (std::size_t slot = Home(hash); slots_[slot] != 0; slot = (slot + 1) & (slots_.size() - 1)) {
            const Entry& entry = entries_[slots_[slot] - 1];
            if (entry.hash == hash && iequals(entry.name, name)) return entry.item;
        }
        return nullptr;
    }

    void Clear() {
        entries_.clear();
        slots_.clear();
    }
    // Number of distinct names.
    std::size_t Size() const { return entries_.size(); }
    void Reserve(std::size_t count) {
        std::size_t size = 16;
        while (size < count * 2) size *= 2;
        if (size > slots_.size()) Rehash(size);
        entries_.reserve(count);
    }

private:
    struct Entry {
        std::u16string_view name;
        T* item;
        uint64_t hash;
    };

    // Fibonacci hashing spreads the folded FNV hash over the table's power-of-two size.
    std::size_t Home(uint64_t hash) const {
        return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ull) >> shift_);
    }

    void Rehash(std::size_t size) {
        slots_.assign(size, 0);
        shift_ = 64;
        for (std::size_t s = size; s > 1; s >>= 1) --shift_;
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            std::size_t slot = Home(entries_[i].hash);
            while (slots_[slot] != 0) slot = (slot + 1) & (size - 1);
            slots_[slot] = static_cast<uint32_t>(i + 1);
        }
    }

    std::vector<Entry> entries_;   // in the order of Add
    std::vector<uint32_t> slots_;  // 0: empty; else position in entries_ + 1
    unsigned shift_ = 64;
};

// The first-wins index of an append-only list of records with a `name` (the session's elements and
// data values), caught up lazily so that records appended from anywhere are found too.
//
// Walks over a request mostly meet names in the order of the list (`Data` follows `DTD`, the reply
// follows the elements), so FindFrom tries the record after the last one found before it hashes:
// one comparison of two texts that are near in memory, instead of probes at random into a table,
// which is what slows a request that no longer fits in the cache.
template <class List>
class TListIndex {
public:
    using Item = typename List::value_type;
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    // Position of the first record named `name`, case ignored, or npos.
    std::size_t Find(const List& list, std::u16string_view name) {
        CatchUp(list);
        const std::size_t* position = index_.Find(name);
        return position ? *position : npos;
    }

    // The same, trying `cursor` first; `cursor` is moved behind the record found. A record there is
    // taken only if it is the first of its name, so the first-wins rule holds on either path.
    std::size_t FindFrom(const List& list, std::u16string_view name, std::size_t& cursor) {
        CatchUp(list);
        std::size_t found = npos;
        if (cursor < firstOfName_.size() && firstOfName_[cursor] && iequals(list[cursor].name, name)) {
            found = cursor;
        } else if (const std::size_t* position = index_.Find(name)) {
            found = *position;
        }
        if (found != npos) cursor = found + 1;
        return found;
    }

private:
    void Reserve(std::size_t count) {
        index_.Reserve(count);
        firstOfName_.reserve(count);
    }

    void CatchUp(const List& list) {
        // A list read whole before its first look-up is indexed at once: room for all of it, once.
        const std::size_t indexed = firstOfName_.size();
        if (list.size() - indexed > indexed) Reserve(list.size());
        for (std::size_t i = indexed; i < list.size(); ++i) {
            positions_.push_back(i);
            const bool first = index_.Add(list[i].name, &positions_.back());
            if (!first) positions_.pop_back();
            firstOfName_.push_back(first);
        }
    }

    TNameIndex<const std::size_t> index_;
    std::deque<std::size_t> positions_;  // what the index points to: stays put as it grows
    std::vector<bool> firstOfName_;       // by position in the list
};

}  // namespace qrl
