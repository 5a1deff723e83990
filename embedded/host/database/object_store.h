// How the object model reads the objects of a drawing file.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/host_error.h"
#include "embedded/host/database/object_state.h"

namespace QeHost {

/// What an object's own row says, before its fields are read.
struct StoredObject {
    std::wstring className;
    Embedded::Handle owner = 0;
};

/// Every function throws an ErrorException for damage, for a file that was changed since it was opened, and for a file
/// that another process locks for too long.
class ObjectStore {
public:
    virtual ~ObjectStore() = default;
    virtual StoredObject lookUp(Embedded::Handle object) = 0;
    /// Reads the fields of an object.
    virtual void load(ObjectRecord& object, ObjectState& state) = 0;
    /// The object under the key, or 0.
    virtual Embedded::Handle findEntry(Embedded::Handle dictionary, const std::wstring& key) = 0;
    virtual std::vector<std::pair<std::wstring, Embedded::Handle>> readEntries(Embedded::Handle dictionary) = 0;
    /// The dictionary and the key of the object's entry, or 0 and an empty key.
    virtual std::pair<Embedded::Handle, std::wstring> findOwningEntry(Embedded::Handle object) = 0;
    /// The objects with extended data of the application.
    virtual std::vector<Embedded::Handle> findApplicationUsers(Embedded::Handle application) = 0;

    /// Throws an Error for damage of the object. The store then refuses every other call.
    [[noreturn]] virtual void throwDamage(Embedded::Handle object, const std::string& message) = 0;
};

} // namespace QeHost
