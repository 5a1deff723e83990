// Geodetic transformations, geodetic paths, and the object that names one of them.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

/// One step between two datums.
class ZSR_API GeodeticTransformationDefinition final : public DefinitionBase {
public:
    explicit GeodeticTransformationDefinition(DefinitionData* data);
    /// Loads by `AUTHORITY:CODE` or by exact name. Returns statusNotFound, or statusAmbiguous for a name that several
    /// transformations have.
    static Status Load(const wchar_t* codeOrName, GeodeticTransformationDefinition*& definition);
    /// Returns whether the method may be applied in reverse.
    Status IsReversible(bool& answer) const;

protected:
    ~GeodeticTransformationDefinition() override;
};

/// Several transformations, one after the other.
class ZSR_API GeodeticPathDefinition final : public DefinitionBase {
public:
    explicit GeodeticPathDefinition(DefinitionData* data);
    static Status Load(const wchar_t* codeOrName, GeodeticPathDefinition*& definition);
    /// Returns whether each of its transformations is reversible.
    Status IsReversible(bool& answer) const;

protected:
    ~GeodeticPathDefinition() override;
};

enum TransformationKind : int { transformationNone = 0, transformationPath = 1, transformationSingle = 2 };

struct TransformationInfoData;

/// Names the transformation or path to use between two systems.
class ZSR_API TransformationInfo final : public Object {
public:
    TransformationInfo();
    /// Makes an object with an empty name and kind 0, which the caller releases with Destroy.
    static Status CreateInstance(TransformationInfo*& info);
    /// Never null. Valid until the name changes.
    const wchar_t* GetName() const;
    Status SetName(const wchar_t* name);
    int GetKind() const;
    Status SetKind(int kind);

protected:
    ~TransformationInfo() override;

private:
    TransformationInfoData* data_;
};

} // namespace Zentara::Infrastructure::SpatialReference
