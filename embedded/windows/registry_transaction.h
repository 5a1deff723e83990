// One look at the registry's file, or one change of it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "embedded/windows/registry_connection.h"
#include "embedded/windows/registry_row.h"

namespace Embedded {

/// Waits for other processes, and undoes what is not committed. Throws ErrorException, and what SQLiteCpp throws.
class RegistryTransaction {
public:
    enum class Intent {
        read,
        change, // an absent file stays absent
        create
    };

    explicit RegistryTransaction(Intent intent);
    void commit();

    /// The root's path is empty; it is always there.
    std::optional<RegistryRow> findKey(std::wstring_view path) const;
    std::optional<RegistryRow> findValue(const RegistryRow& key, std::wstring_view name) const;
    /// By its place in the order of creation. Going from one to the next costs the same wherever they are.
    std::optional<RegistryRow> valueAt(const RegistryRow& key, DWORD index) const;
    /// With the keys above it, which keep the spelling they have.
    void createKey(std::wstring_view path);
    /// A value of that name keeps its place and the spelling of its name.
    void setValue(const RegistryRow& key, RegistryRow value);
    void remove(const RegistryRow& row);

private:
    struct RollBack {
        void operator()(sqlite3* connection) const;
    };

    bool begin(Intent intent);
    std::optional<RegistryRow> find(std::int64_t owner, std::wstring_view name) const;
    void put(RegistryRow row);

    RegistryConnection* connection_ = nullptr; // null: the registry is empty
    std::unique_ptr<sqlite3, RollBack> open_;
};

} // namespace Embedded
