// What was lately made of which texts, bytes and codes: a drawing has few definitions, which are read again and again
// and always come to the same.
#pragma once

#include <cstddef>
#include <map>
#include <utility>

namespace Embedded {

template <class Key, class Value>
class Remembered {
public:
    /// Null where it is not remembered.
    const Value* find(const Key& key) const
    {
        const auto found = values_.find(key);
        return found == values_.end() ? nullptr : &found->second;
    }
    /// Forgets all else first when that has become much. What is longer than a definition ever is, is not kept.
    void keep(Key key, Value value)
    {
        if constexpr (requires { key.size(); })
            if (key.size() > kLongest)
                return;
        if (values_.size() == kMost)
            values_.clear();
        values_.emplace(std::move(key), std::move(value));
    }

private:
    static constexpr std::size_t kMost = 64;
    static constexpr std::size_t kLongest = std::size_t{16} * 1024; // in the key's characters
    std::map<Key, Value> values_;
};

} // namespace Embedded
