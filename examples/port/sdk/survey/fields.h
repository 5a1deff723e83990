#pragma once

#include "definitions.h"

#include <optional>
#include <string>
#include <vector>

namespace Survey {

/// The fields of a definition, the name of its kind first, as the text and the bytes hold them.
std::vector<std::string> fieldsFor(const Definition& definition);
/// Nothing for fields that make no definition.
std::optional<Definition> definitionFrom(const std::vector<std::string>& fields);

/// The shortest decimal number that reads back as the same one.
std::string toDecimal(double number);

} // namespace Survey
