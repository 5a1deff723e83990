// The classes of which a drawing can hold objects.
#pragma once

#include <string_view>

#include "platform/host/object.h"

namespace QeHost {

struct ObjectClass {
    QeRxClass* (*desc)();
    QeDbObject* (*make)(); // an object of the host's own making, in no database yet; without memory std::bad_alloc
    QeRxClass* (*owner)(); // of which class an object's owner is, unless the object is a root; null: it is always one
};

/// Null for a class that no drawing can hold.
const ObjectClass* findClass(std::wstring_view name);

/// Whether a drawing can hold the object below an owner of the class.
bool canBelongTo(const QeDbObject& object, const QeRxClass* ownersClass);

} // namespace QeHost
