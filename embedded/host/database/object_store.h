// Where the objects of a drawing lie that are not in memory yet: the face of a drawing file to the object model.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/host_error.h"
#include "embedded/host/database/object_state.h"

namespace QeHost {

/// What is known of an object before its fields are read.
struct StoredObject {
    std::wstring className;
    Embedded::Handle owner = 0;
};

/// Every call throws an ErrorException for damage, for a file that was changed since it was opened, and for one that
/// another process keeps too long.
class ObjectStore {
public:
    virtual ~ObjectStore() = default;
    virtual StoredObject lookUp(Embedded::Handle object) = 0;
    /// Fills the fields of an object that was looked at.
    virtual void load(ObjectRecord& object, ObjectState& state) = 0;
    /// The object under the key; 0 for none.
    virtual Embedded::Handle findEntry(Embedded::Handle dictionary, const std::wstring& key) = 0;
    virtual std::vector<std::pair<std::wstring, Embedded::Handle>> readEntries(Embedded::Handle dictionary) = 0;
    /// The dictionary and the key that the object is under; 0 and an empty key where it is under none.
    virtual std::pair<Embedded::Handle, std::wstring> findOwningEntry(Embedded::Handle object) = 0;
    /// Whose extended data names the application.
    virtual std::vector<Embedded::Handle> findApplicationUsers(Embedded::Handle application) = 0;

    /// Throws an Error for damage of the object that the object model has found.
    [[noreturn]] virtual void throwDamage(Embedded::Handle object, const std::string& message) = 0;
};

} // namespace QeHost
