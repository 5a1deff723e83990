#include "platform/host/runtime.h"

QeRxObject::~QeRxObject() = default;

bool QeRxClass::isDerivedFrom(const QeRxClass* ancestor) const
{
    for (const QeRxClass* current = this; current != nullptr; current = current->parent_) {
        if (current == ancestor)
            return true;
    }
    return false;
}

QeRxClass* QeRxObject::desc()
{
    static QeRxClass descriptor(L"QeRxObject", nullptr);
    return &descriptor;
}

QeRxClass* QeRxObject::isA() const
{
    return desc();
}
