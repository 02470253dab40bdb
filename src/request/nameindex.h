// A first-wins index of names compared without regard to case. Look-ups by name (elements, forms,
// groups, the data values of the reply) would otherwise walk their whole list for every name, which
// turns a large request quadratic.
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "text/textutil.h"

namespace qrl {

template <class T>
class TNameIndex {
public:
    // Records `item` under `name` unless an earlier item holds a name equal to it without regard to
    // case. The text `name` points to must stay put as long as the index lives; it is normally the
    // item's own name in a container that does not move its items (std::deque, std::list).
    void Add(std::u16string_view name, T* item) { map_.try_emplace(name, item); }
    T* Find(std::u16string_view name) const {
        const auto it = map_.find(name);
        return it == map_.end() ? nullptr : it->second;
    }
    void Clear() { map_.clear(); }
    std::size_t Size() const { return map_.size(); }
    void Reserve(std::size_t count) { map_.reserve(count); }

private:
    std::unordered_map<std::u16string_view, T*, IHash, IEqual> map_;
};

}  // namespace qrl
