// Destruction of objects that nothing can reach. Without it a drawing in which entries are replaced again and again
// would grow until it is closed.
#pragma once

#include <memory>
#include <unordered_map>

#include "embedded/host/database/object.h"
#include "embedded/host/database/object_snapshot.h"

namespace QeHost {

/// Destroys the object if it is unreachable. An object is unreachable when it has left the drawing for good (its
/// creation was undone, or it was removed from its dictionary), nobody has it open, and there is no id of it. An
/// unreachable dictionary and what it holds are destroyed together, because each object knows its owner.
///
/// Waits for the end of the last active transaction, which may restore the object. Keeps the object until the drawing
/// is closed when memory is short, and below a dictionary that is not loaded completely.
void collectIfUnreachable(ObjectRecord& record) noexcept;

/// Keeps the objects of a transaction that ends until the end of the scope, and then destroys those that are
/// unreachable. With the last transaction it also destroys those that waited.
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
