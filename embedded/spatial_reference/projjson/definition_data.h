// The data of a definition: its type, its code and its PROJJSON. The rest is derived from these once, so that queries
// are cheap.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "embedded/spatial_reference/projjson/projjson.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {

/// The numbers are those of the binary stream.
enum class DefinitionType : unsigned char {
    coordinateReferenceSystem = 1,
    datum = 2,
    ellipsoid = 3,
    transformation = 4, // never in a stream
    path = 5            // never in a stream
};

} // namespace Embedded

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionData {
    DefinitionData(Embedded::DefinitionType definitionType, std::string definitionCode,
                   Embedded::Projjson definitionProjjson);

    const Embedded::Projjson& projjson() const { return *projjson_; }
    /// Replaces the PROJJSON and everything that is derived from it.
    void setProjjson(Embedded::Projjson changed);

    Embedded::DefinitionType type;
    std::string codeUtf8;

    std::wstring code;
    std::wstring name;
    std::optional<CoordinateReferenceSystemKind> kind; // of a system
    std::wstring datumCode;                            // of a system; empty when it is not datum-based
    std::wstring ellipsoidCode;                        // of a system or a datum
    bool reversible = false;                           // of a transformation or a path

    /// The datum of a datum-based system; null for any other definition.
    const Embedded::Projjson* datumNode() const;
    /// The ellipsoid of a system or datum; null when there is none.
    const Embedded::Projjson* ellipsoidNode() const;

private:
    void derive();

    /// Copies share it: a definition in memory is read in 1.1 us, and was in 21 us when each had a tree of its own.
    std::shared_ptr<const Embedded::Projjson> projjson_;
};

} // namespace Zentara::Infrastructure::SpatialReference

namespace Embedded {

using Zentara::Infrastructure::SpatialReference::DefinitionData;

/// The data of the datum or ellipsoid that is part of the definition; nothing when it has none.
std::optional<DefinitionData> datumData(const DefinitionData& definition);
std::optional<DefinitionData> ellipsoidData(const DefinitionData& definition);

/// Copies the ellipsoid into the system or datum, or the datum into the system. False, with no change, for a system
/// that has no datum or no ellipsoid.
bool setEllipsoid(DefinitionData& definition, const DefinitionData& ellipsoid);
bool setDatum(DefinitionData& definition, const DefinitionData& datum);

} // namespace Embedded
