// A transaction that reads or changes the registry's file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "embedded/windows/registry_connection.h"
#include "embedded/windows/registry_row.h"

namespace Embedded {

/// Waits for other processes. Its destructor undoes changes that are not committed. Its members throw ErrorException
/// and the exceptions of SQLiteCpp, which end in `catchRegistryError`.
class RegistryTransaction {
public:
    enum class Intent {
        read,
        change, // does not create a missing file
        create
    };

    explicit RegistryTransaction(Intent intent);
    void commit();

    /// The root's path is empty. The root always exists.
    std::optional<RegistryRow> findKey(std::wstring_view path) const;
    std::optional<RegistryRow> findValue(const RegistryRow& key, std::wstring_view name) const;
    /// The value with this index in the order of creation. Reading the values one after another takes linear time.
    std::optional<RegistryRow> valueAt(const RegistryRow& key, DWORD index) const;
    /// Creates the key and the missing keys above it. Existing keys keep the case of their names.
    void createKey(std::wstring_view path);
    /// An existing value of that name keeps its index and the case of its name.
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
