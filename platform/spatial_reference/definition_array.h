// An array that owns its definitions.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionArrayData;

class ZSR_API DefinitionBaseArray final : public Object {
public:
    DefinitionBaseArray();
    /// Makes an empty array, which the caller releases with Destroy. Null on failure (statusOutOfMemory).
    static Status CreateInstance(DefinitionBaseArray*& array);
    int GetCount() const;
    /// Takes ownership on success. Otherwise the caller still owns the definition. Returns statusInvalidArgument for
    /// null.
    Status Add(DefinitionBase* definition);
    /// The definition at the index, which the array owns. Null out of range.
    const DefinitionBase* GetItem(int index) const;
    /// Removes the definition at the index from the array. The caller owns it. Null out of range.
    DefinitionBase* Remove(int index);

protected:
    /// Destroys the definitions in the array.
    ~DefinitionBaseArray() override;

private:
    DefinitionArrayData* data_;
};

} // namespace Zentara::Infrastructure::SpatialReference
