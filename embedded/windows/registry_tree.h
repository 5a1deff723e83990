// The keys and values that the registry's file stands for.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "embedded/windows/registry_change.h"

namespace Embedded {

struct RegistryValue {
    std::wstring name; // as it was first spelled
    DWORD type;
    std::string data;
    std::size_t lineInBytes; // of the line that set it
};

/// A key's values, in the order in which they were created.
class RegistryKey {
public:
    explicit RegistryKey(std::wstring path) : path_(std::move(path)) {}
    RegistryKey(const RegistryKey&) = delete; // it points into itself
    RegistryKey& operator=(const RegistryKey&) = delete;

    const std::wstring& path() const { return path_; }
    const std::list<RegistryValue>& values() const { return values_; }
    /// Null when there is none; the next change of the key ends the pointer's validity.
    const RegistryValue* find(std::wstring_view name) const;
    /// By place. Going from one to the next costs the same wherever in the list they are.
    const RegistryValue* at(std::size_t index) const;
    void set(RegistryValue value);
    void remove(std::wstring_view name);

private:
    using Position = std::list<RegistryValue>::const_iterator;
    using Entry = std::list<RegistryValue>::iterator;

    /// By a value's name, whatever its case. The names are the values' own: a key can have very many.
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view name) const;
        std::size_t operator()(Entry entry) const { return operator()(entry->name); }
    };
    struct NameEqual {
        using is_transparent = void;
        bool operator()(Entry left, Entry right) const { return operator()(left->name, right); }
        bool operator()(std::wstring_view name, Entry entry) const;
        bool operator()(Entry entry, std::wstring_view name) const { return operator()(name, entry); }
    };

    std::wstring path_;
    std::list<RegistryValue> values_;
    std::unordered_set<Entry, NameHash, NameEqual> byName_;
    mutable std::size_t lastIndex_ = 0; // where `at` was last
    mutable Position last_ = values_.cend();
};

class RegistryTree {
public:
    RegistryTree();

    /// Null when there is no such key; the empty path is the root's.
    const RegistryKey* find(std::wstring_view path) const;
    /// `lineInBytes` is the length of the change's line in the file. Throws RegistryDamage when the change does not
    /// fit.
    void apply(const RegistryChange& change, std::size_t lineInBytes);
    /// How long the lines are that are still of use.
    std::size_t liveBytes() const { return liveBytes_; }
    /// The changes that make the tree, each key after the one above it.
    std::vector<RegistryChange> changes() const;

private:
    RegistryKey& required(std::wstring_view path);
    void create(std::wstring_view path, std::size_t lineInBytes);

    std::map<std::wstring, RegistryKey> keys_; // by folded path
    std::size_t liveBytes_ = 0;
};

} // namespace Embedded
