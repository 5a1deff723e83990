// An array that owns its definitions.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionArrayData;

class ZSR_API DefinitionBaseArray final : public Object {
public:
    DefinitionBaseArray();
    /// An empty array, the caller's to Destroy; null on failure (statusOutOfMemory).
    static Status CreateInstance(DefinitionBaseArray*& array);
    int GetCount() const;
    /// Takes ownership when it succeeds; otherwise the definition stays the caller's. statusInvalidArgument for null.
    Status Add(DefinitionBase* definition);
    /// The definition at the index; it stays the array's. Null out of range.
    const DefinitionBase* GetItem(int index) const;
    /// Takes the definition at the index out of the array; it becomes the caller's. Null out of range.
    DefinitionBase* Remove(int index);

protected:
    /// Destroys the definitions that are left.
    ~DefinitionBaseArray() override;

private:
    DefinitionArrayData* data_;
};

} // namespace Zentara::Infrastructure::SpatialReference
