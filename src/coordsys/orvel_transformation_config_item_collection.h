// A transformation configuration as a list of its items.
#pragma once

#include <string>

#include "coordsys/orvel_transformation_config_item.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// An ordered list that holds a reference to each of its items.
///
/// Reference-counted as the items are. Use it on the host's main thread.
class ORVEL_API OrvelTransformationConfigItemCollection : public FqGuardDisposable {
public:
    /// A new, empty collection. Null when memory is short.
    static OrvelTransformationConfigItemCollection* CreateInstance();
    /// Releases the items and deletes the object, whatever its count.
    void Dispose() override;

    /// Appends the item and adds a reference to it. Ignores null.
    virtual void Add(OrvelTransformationConfigItem* item) = 0;
    /// Releases every item.
    virtual void Clear() = 0;
    /// Returns the number of items.
    virtual int GetCount() = 0;
    /// The item, with a reference added that the caller releases. Null out of range.
    virtual FqDisposable* GetItem(int index) = 0;

    /// The configuration text: the items' elements one after the other with nothing between them. An incomplete item
    /// adds nothing. An entry that is not an item makes the whole text empty.
    virtual std::wstring ToXmlString() = 0;
    /// Replaces the items by those of a configuration text: one for each "</Item>" in it, with default fields where the
    /// text before that is not an element. Ignores text after the last one. Null and the empty text make the collection
    /// empty.
    virtual void FromXmlString(const wchar_t* text) = 0;

protected:
    OrvelTransformationConfigItemCollection();
    ~OrvelTransformationConfigItemCollection() override;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
