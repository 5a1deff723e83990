// The classes whose objects a drawing can hold.
#pragma once

#include <string_view>

#include "platform/host/object.h"

namespace QeHost {

struct ObjectClass {
    QeRxClass* (*desc)();
    QeDbObject* (*make)(); // makes an object that is in no database yet; throws std::bad_alloc
    QeRxClass* (*owner)(); // the class of an object's owner; null for a class whose objects are roots

    /// Null for a class whose objects are roots.
    const QeRxClass* ownerClass() const { return owner != nullptr ? owner() : nullptr; }
    /// Returns whether an object of the other class can own an object of this class.
    bool canBeOwnedBy(const QeRxClass& other) const { return owner != nullptr && other.isDerivedFrom(owner()); }
};

/// Null for a class that no drawing can hold.
const ObjectClass* findClass(std::wstring_view name);

/// Returns whether objects of the class can own the object.
bool canBelongTo(const QeDbObject& object, const QeRxClass* ownersClass);

} // namespace QeHost
