// Definitions: coordinate reference systems, datums, ellipsoids.
//
// Texts handed out by a query belong to the definition and stay valid until it is changed or destroyed. A query that
// fails leaves its out-parameter as it was. Definitions made by a call are new and the caller's to Destroy; on failure
// the out-parameter is null.
#pragma once

#include "status.h"

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionData;

class ZSR_API DefinitionBase : public Object {
public:
    /// `AUTHORITY:CODE` as the catalog spells it, or the user's own code.
    Status GetCode(const wchar_t*& code) const;
    Status GetName(const wchar_t*& name) const;

    /// The library's own record of the definition; of no use to clients.
    DefinitionData& data() const { return *data_; }

protected:
    /// Takes ownership of `data`.
    explicit DefinitionBase(DefinitionData* data);
    ~DefinitionBase() override;

private:
    DefinitionData* data_;
};

class ZSR_API EllipsoidDefinition final : public DefinitionBase {
public:
    explicit EllipsoidDefinition(DefinitionData* data);
    /// Loads from the catalog; the authority's case does not matter. statusNotFound when there is none.
    static Status Load(const wchar_t* code, EllipsoidDefinition*& definition);
    Status GetSemiMajorAxisInMetres(double& value) const;
    /// 0 for a sphere.
    Status GetInverseFlattening(double& value) const;

protected:
    ~EllipsoidDefinition() override;
};

class ZSR_API DatumDefinition final : public DefinitionBase {
public:
    explicit DatumDefinition(DefinitionData* data);
    static Status Load(const wchar_t* code, DatumDefinition*& definition);
    Status GetEllipsoidCode(const wchar_t*& code) const;
    /// A new definition, the caller's.
    Status GetEllipsoid(EllipsoidDefinition*& ellipsoid) const;
    /// Copies the ellipsoid into the datum; the argument stays the caller's.
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

protected:
    ~DatumDefinition() override;
};

/// What a coordinate reference system refers to. A compound system has the kind of its horizontal part.
enum CoordinateReferenceSystemKind : int {
    kindNotEarthReferenced = 1,
    kindGeographic = 2,
    kindProjected = 3,
    kindGeocentric = 4
};

class ZSR_API CoordinateReferenceSystemDefinition final : public DefinitionBase {
public:
    explicit CoordinateReferenceSystemDefinition(DefinitionData* data);
    static Status Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition);
    /// A user-defined system from WKT, PROJJSON or a PROJ string, under the user's code; it need not be in the catalog.
    /// statusUnreadable when the text is none of them or is no coordinate reference system, statusInvalidArgument for a
    /// null or empty code.
    static Status CreateFromText(const wchar_t* text, const wchar_t* code,
                                 CoordinateReferenceSystemDefinition*& definition);

    /// One of CoordinateReferenceSystemKind.
    Status GetKind(int& kind) const;
    /// Empty for a system that is not datum-based.
    Status GetDatumCode(const wchar_t*& code) const;
    /// Empty for a system of kind 1.
    Status GetEllipsoidCode(const wchar_t*& code) const;
    /// A new definition, the caller's; statusNotFound for a system that is not datum-based.
    Status GetDatum(DatumDefinition*& datum) const;
    /// Copy the argument into the system; it stays the caller's.
    Status SetDatum(const DatumDefinition* datum);
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

protected:
    ~CoordinateReferenceSystemDefinition() override;
};

} // namespace Zentara::Infrastructure::SpatialReference
