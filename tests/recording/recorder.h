// What a test uses: the recorded calls, and the answers that it sets for the library.
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

/// A definition that a test describes. An empty code means that the definition has no such reference.
struct Definition {
    Type type = Type::system;
    std::wstring code;
    int kind = Library::kindGeographic;
    std::wstring datumCode{};
    std::wstring ellipsoidCode{};
    bool reversible = false;
};

/// A call with its arguments as one line, and the number of host objects that were open.
struct Call {
    std::string text;
    long openObjects = 0;
};

/// Every call fills its outputs, whatever its status. Calls are named as "DatumDefinition::Load".
struct Answers {
    std::map<std::string, Library::Status> statuses; // the statuses of calls that do not report success
    std::set<std::string> withoutObject;             // calls that return null
    std::map<std::wstring, Definition> catalog; // the definitions that Load finds; for others it returns statusNotFound
    std::optional<std::vector<unsigned char>> written{}; // the bytes that Serialize_s and Write put into the buffer
    std::optional<std::size_t> writtenLength{};          // the length that Write reports
};

/// The answers last until `forget`.
Answers& answers();
const std::vector<Call>& calls();
/// Finds the lines of the calls with that name.
std::vector<std::string> findCalls(const std::string& name);
/// Deletes the calls, the answers and the stored definitions.
void forget();

/// Makes a definition of the class of its type. The caller calls Destroy.
Library::DefinitionBase* newDefinition(const Definition& definition);
Library::CoordinateReferenceSystemDefinition* newSystem(const Definition& definition);

} // namespace Tests::Recording
