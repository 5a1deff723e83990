// What an object held at one moment, for a transaction to put back.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "embedded/host/database/object_state.h"

namespace QeHost {

class ObjectSnapshot {
public:
    explicit ObjectSnapshot(ObjectState& state);
    /// Puts all of it back into the same object, and is empty afterwards.
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

/// Ends all references to other objects, which may be gone before this one.
void detach(ObjectState& state) noexcept;

} // namespace QeHost
