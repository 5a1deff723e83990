// Where the objects of a drawing lie that are not in memory yet: the face of a drawing file to the object model.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/file_result.h"
#include "embedded/host/database/object_state.h"

namespace QeHost {

/// Thrown when something cannot be read; the calls of the host answer its status. The message names the place.
struct StoreFailure {
    Embedded::FileResult result;
};

/// What a call of the host answers: the status of `body`, or of what stopped it.
template <class Body>
Qeapp::ErrorStatus answered(Body body)
{
    try {
        return body();
    } catch (const StoreFailure& failure) {
        return failure.result.status;
    }
}

/// What is known of an object before its fields are read.
struct StoredObject {
    std::wstring className;
    Embedded::Handle owner = 0;
};

/// Every call throws StoreFailure for damage, for a file that was changed since it was opened, and for one that another
/// process keeps too long.
class ObjectStore {
public:
    virtual ~ObjectStore() = default;
    virtual StoredObject look(Embedded::Handle object) = 0;
    /// Fills the fields of an object that was looked at.
    virtual void load(ObjectRecord& object, ObjectState& state) = 0;
    /// The object under the key; 0 for none.
    virtual Embedded::Handle findEntry(Embedded::Handle dictionary, const std::wstring& key) = 0;
    virtual std::vector<std::pair<std::wstring, Embedded::Handle>> entriesOf(Embedded::Handle dictionary) = 0;
    /// The dictionary and the key that the object is under; 0 and an empty key where it is under none.
    virtual std::pair<Embedded::Handle, std::wstring> entryOf(Embedded::Handle object) = 0;
    /// Whose extended data names the application.
    virtual std::vector<Embedded::Handle> usersOf(Embedded::Handle application) = 0;

    /// Throws a StoreFailure for damage that the object model has found; `fault` begins with the place.
    [[noreturn]] virtual void refuse(const std::string& fault) = 0;
};

} // namespace QeHost
