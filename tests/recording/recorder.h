// What the recording library was asked, and what it answers: a test's end of it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/spatial_reference.h"

namespace Tests::Recording {

namespace Library = Zentara::Infrastructure::SpatialReference;

enum class Type { system, datum, ellipsoid, transformation, path };

/// A definition as a test describes it. An empty code stands for a reference that the definition does not have.
struct Definition {
    Type type = Type::system;
    std::wstring code;
    int kind = Library::kindGeographic;
    std::wstring datumCode{};
    std::wstring ellipsoidCode{};
    bool reversible = false;
};

/// A call with its arguments, as one line, and how many objects of the host's were open when it came.
struct Call {
    std::string text;
    long openObjects = 0;
};

/// Every call fills its outputs, whatever its status. Calls are named as "DatumDefinition::Load".
struct Answers {
    std::map<std::string, Library::Status> statuses;     // of the calls that are not to report success
    std::set<std::string> withoutObject;                 // calls that hand out null
    std::map<std::wstring, Definition> catalog;          // what Load finds; anything else is statusNotFound
    std::optional<std::vector<unsigned char>> written{}; // what Serialize_s and Write put into the buffer
    std::optional<std::size_t> writtenLength{};          // what Write reports
};

/// They last until `forget`.
Answers& answers();
const std::vector<Call>& calls();
/// The lines of the calls of that name.
std::vector<std::string> callsOf(const std::string& name);
/// Drops the calls, the answers and what was written.
void forget();

/// A new definition, for the caller to Destroy. Its class is that of its type.
Library::DefinitionBase* newDefinition(const Definition& definition);
Library::CoordinateReferenceSystemDefinition* newSystem(const Definition& definition);

} // namespace Tests::Recording
