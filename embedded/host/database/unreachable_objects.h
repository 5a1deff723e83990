// Objects that nothing can bring back, so that a drawing in which entries are replaced and removed again and again does
// not grow until it is closed.
#pragma once

#include <memory>
#include <unordered_map>

#include "embedded/host/database/object.h"
#include "embedded/host/database/object_snapshot.h"

namespace QeHost {

/// An object is lost when it has left the drawing for good (its creation was undone, or its dictionary let go of it),
/// nobody has it open, and there is no id of it to open it by. What a lost dictionary holds is lost with it, and keeps
/// it while it is not lost itself, for an object knows its owner.
/// Destroys the object if it is lost; while a transaction is active that waits for its end, which may bring it back.
/// Without memory to find out, and below a dictionary of which not everything is loaded, the object stays until the
/// drawing is closed.
void collectIfUnreachable(ObjectRecord& record) noexcept;

/// Keeps what a transaction that ends had to do with until the scope ends, and then destroys what of it is lost; with
/// the last transaction also what waited.
class CollectorAfterTransaction {
public:
    using Touched = std::unordered_map<ObjectRecord*, std::unique_ptr<ObjectSnapshot>>;

    CollectorAfterTransaction(DatabaseImp& database, const Touched& touched);
    CollectorAfterTransaction(const CollectorAfterTransaction&) = delete;
    CollectorAfterTransaction& operator=(const CollectorAfterTransaction&) = delete;
    ~CollectorAfterTransaction();

private:
    DatabaseImp& database_;
    const Touched& touched_;
};

} // namespace QeHost
