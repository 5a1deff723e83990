// A transformation configuration as a list of its items.
#pragma once

#include <string>

#include "coordsys/orvel_transformation_config_item.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// An ordered list that holds a reference to each of its items.
///
/// Reference-counted as the items are. For the host's main thread.
class ORVEL_API OrvelTransformationConfigItemCollection : public FqGuardDisposable {
public:
    /// A new, empty collection; null without memory.
    static OrvelTransformationConfigItemCollection* CreateInstance();
    /// Releases the items and deletes the object, whatever its count.
    void Dispose() override;

    /// Appends the item and adds a reference to it; null is not added.
    virtual void Add(OrvelTransformationConfigItem* item) = 0;
    /// Releases every item.
    virtual void Clear() = 0;
    virtual int GetCount() = 0;
    /// The item with a reference added for the caller, who releases it; null out of range.
    virtual FqDisposable* GetItem(int index) = 0;

    /// The configuration text: the items' elements one after the other with nothing between them. An incomplete item
    /// adds nothing; an entry that is no item makes the whole text empty.
    virtual std::wstring ToXmlString() = 0;
    /// Replaces the items by those of a configuration text: one for each "</Item>" in it, with default fields where
    /// what stands before that is no element. What follows the last one is passed over. Null and the empty text leave
    /// the collection empty.
    virtual void FromXmlString(const wchar_t* text) = 0;

protected:
    OrvelTransformationConfigItemCollection();
    ~OrvelTransformationConfigItemCollection() override;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
