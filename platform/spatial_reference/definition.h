// Definitions: coordinate reference systems, datums, ellipsoids.
//
// The definition owns the texts that a query returns. They are valid until the definition is changed or destroyed. A
// query that fails does not change its out-parameter. A call that makes a definition returns a new one, which the
// caller releases with Destroy; on failure the out-parameter is null.
#pragma once

#include "status.h"

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionData;

class ZSR_API DefinitionBase : public Object {
public:
    /// `AUTHORITY:CODE` as the catalog spells it, or the user's code.
    Status GetCode(const wchar_t*& code) const;
    Status GetName(const wchar_t*& name) const;

    /// The library's internal record of the definition. Clients do not use it.
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
    /// Loads a definition from the catalog. The case of the authority does not matter. Returns statusNotFound when
    /// there is none.
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
    /// Returns a new definition, which the caller owns.
    Status GetEllipsoid(EllipsoidDefinition*& ellipsoid) const;
    /// Copies the ellipsoid into the datum. The caller still owns the argument.
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

protected:
    ~DatumDefinition() override;
};

/// The kind of a coordinate reference system. A compound system has the kind of its horizontal part.
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
    /// Makes a user-defined system from WKT, PROJJSON or a PROJ string, with the user's code, which need not be in the
    /// catalog. Returns statusUnreadable when the text is none of them or not a coordinate reference system, and
    /// statusInvalidArgument for a null or empty code.
    static Status CreateFromText(const wchar_t* text, const wchar_t* code,
                                 CoordinateReferenceSystemDefinition*& definition);

    /// One of CoordinateReferenceSystemKind.
    Status GetKind(int& kind) const;
    /// Empty for a system that is not datum-based.
    Status GetDatumCode(const wchar_t*& code) const;
    /// Empty for a system of kind 1.
    Status GetEllipsoidCode(const wchar_t*& code) const;
    /// Returns a new definition, which the caller owns. The status is statusNotFound for a system that is not
    /// datum-based.
    Status GetDatum(DatumDefinition*& datum) const;
    /// Copy the argument into the system. The caller still owns the argument.
    Status SetDatum(const DatumDefinition* datum);
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

protected:
    ~CoordinateReferenceSystemDefinition() override;
};

} // namespace Zentara::Infrastructure::SpatialReference
