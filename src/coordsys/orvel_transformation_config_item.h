// One item of a transformation configuration: the transformation between two coordinate systems.
#pragma once

#include <string>

#include "coordsys/orvel_export.h"
#include "platform/foundation.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// Names the geodetic path or the geodetic transformation to use from one coordinate system to another.
///
/// Reference-counted: CreateInstance returns the first reference, `Ptr<>` or `Release` releases it. Getters return a
/// pointer into the object, which is never null and is valid until that field is set again or the object is deleted.
/// Setters copy a NUL-terminated text, which must not be null. Use it on the host's main thread.
class ORVEL_API OrvelTransformationConfigItem : public FqGuardDisposable {
public:
    /// A new item with empty texts, type 0 and version "1.0". Null when memory is short.
    static OrvelTransformationConfigItem* CreateInstance();
    /// Deletes the object, whatever its count.
    void Dispose() override;

    /// Sets the code of the source coordinate system.
    virtual void SetSourceCs(const wchar_t* code) = 0;
    /// Returns the code of the source coordinate system.
    virtual const wchar_t* GetSourceCs() = 0;
    /// Sets the code of the target coordinate system.
    virtual void SetTargetCs(const wchar_t* code) = 0;
    /// Returns the code of the target coordinate system.
    virtual const wchar_t* GetTargetCs() = 0;
    /// Sets the name of the geodetic path or transformation definition.
    virtual void SetName(const wchar_t* name) = 0;
    /// Returns the name of the geodetic path or transformation definition.
    virtual const wchar_t* GetName() = 0;
    /// Sets the type: 1 for a geodetic path, 2 for a geodetic transformation, 0 for neither. Any value is stored.
    virtual void SetType(int type) = 0;
    /// Returns the type.
    virtual int GetType() = 0;
    /// Sets a free text of the user.
    virtual void SetNote(const wchar_t* note) = 0;
    /// Returns the user's text.
    virtual const wchar_t* GetNote() = 0;
    /// Sets the version, which is written into the item's text and never read from one.
    virtual void SetVersion(const wchar_t* version) = 0;
    /// Returns the version.
    virtual const wchar_t* GetVersion() = 0;

    /// The item's element of a configuration text (docs/formats/transformation-configuration.md), on one line, without
    /// escapes. Empty when a code or the name is empty or the type is 0.
    virtual std::wstring ToXmlString() = 0;
    /// Sets the fields from such an element, which may have blanks around it. A text that is not such an element
    /// changes nothing. One that lacks a field changes the fields before it (source, target, name, type, note) and
    /// never the type. A type other than "1" and "2" is read as 0.
    virtual void FromXmlString(const wchar_t* text) = 0;

protected:
    OrvelTransformationConfigItem();
    ~OrvelTransformationConfigItem() override;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
