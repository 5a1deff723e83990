// Geodetic transformations, geodetic paths, and the answer that names one of them.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

/// One step between two datums.
class ZSR_API GeodeticTransformationDefinition final : public DefinitionBase {
public:
    explicit GeodeticTransformationDefinition(DefinitionData* data);
    /// Loads by `AUTHORITY:CODE` or by exact name. statusNotFound; statusAmbiguous for a name that fits several.
    static Status Load(const wchar_t* codeOrName, GeodeticTransformationDefinition*& definition);
    /// Whether the method may be applied inversely.
    Status IsReversible(bool& answer) const;

protected:
    ~GeodeticTransformationDefinition() override;
};

/// Several steps, one after the other.
class ZSR_API GeodeticPathDefinition final : public DefinitionBase {
public:
    explicit GeodeticPathDefinition(DefinitionData* data);
    static Status Load(const wchar_t* codeOrName, GeodeticPathDefinition*& definition);
    /// Whether each of its steps may be.
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
    /// New, with an empty name and kind 0; the caller's to Destroy.
    static Status CreateInstance(TransformationInfo*& info);
    /// Never null; valid until the name changes.
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
