// The state of an object at one moment, which a transaction restores when it is aborted.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "embedded/host/database/object_state.h"

namespace QeHost {

class ObjectSnapshot {
public:
    explicit ObjectSnapshot(ObjectState& state);
    /// Restores the state of the same object. The snapshot is empty afterwards.
    void restore(ObjectState& state) noexcept;

private:
    using Field = std::variant<std::wstring, QeDbObjectId, Embedded::ResbufValues, DictionaryEntries::Map,
                               std::vector<ObjectRecord*>, ExtendedData>;
    class Saver;
    class Restorer;

    ObjectRecord* owner_;
    bool erased_;
    std::vector<Field> fields_; // in the order in which the class lists them
};

/// Clears all references to other objects, which may be destroyed before this one.
void detach(ObjectState& state) noexcept;

} // namespace QeHost
