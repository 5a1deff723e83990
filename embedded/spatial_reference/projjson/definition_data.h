// What a definition is made of: its type, its code and its document. The rest is derived from these once, so that a
// query is a look.
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
                   Embedded::Projjson definitionDocument);

    /// Replaces the document and what follows from it.
    void setDocument(Embedded::Projjson changed);

    Embedded::DefinitionType type;
    std::string codeUtf8;
    Embedded::Projjson document;

    std::wstring code;
    std::wstring name;
    int kind = 0;               // of a system
    std::wstring datumCode;     // of a system; empty when it is not datum-based
    std::wstring ellipsoidCode; // of a system or a datum
    bool reversible = false;    // of a transformation or a path

    /// The system's datum, when it is datum-based.
    const Embedded::Projjson* datumNode() const;
    /// The system's or datum's ellipsoid, or null.
    const Embedded::Projjson* ellipsoidNode() const;

private:
    void derive();
};

} // namespace Zentara::Infrastructure::SpatialReference

namespace Embedded {

using Zentara::Infrastructure::SpatialReference::DefinitionData;

/// The datum or ellipsoid that is part of the definition, as data of its own; nothing when it has none.
std::optional<DefinitionData> datumDataOf(const DefinitionData& definition);
std::optional<DefinitionData> ellipsoidDataOf(const DefinitionData& definition);

/// Copies the ellipsoid into the system or datum, or the datum into the system. False, and nothing changed, for a
/// system that has no place for it.
bool setEllipsoid(DefinitionData& definition, const DefinitionData& ellipsoid);
bool setDatum(DefinitionData& definition, const DefinitionData& datum);

/// A new definition of the class that the data's type asks for; the caller's to Destroy.
Zentara::Infrastructure::SpatialReference::DefinitionBase* newDefinition(DefinitionData data);

/// The same for a class that is known.
template <typename Definition>
Definition* newDefinitionOf(DefinitionData data)
{
    auto owned = std::make_unique<DefinitionData>(std::move(data));
    auto* definition = new Definition(owned.get());
    static_cast<void>(owned.release()); // the definition has taken it over
    return definition;
}

} // namespace Embedded
