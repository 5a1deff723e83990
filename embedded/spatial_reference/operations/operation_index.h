// Every operation of the catalog that is not deprecated, with the datums and height systems at its ends.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/system_parts.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

struct OperationEnd {
    std::string datum;    // for a height system alone, that of the other end
    std::string vertical; // the height system; empty: none
};

struct IndexedOperation {
    CatalogCode code;
    DefinitionType type = DefinitionType::transformation; // or path
    OperationEnd source;
    OperationEnd target;
};

/// The operations, which are read on first use. PROJ itself finds operations only by their exact systems, and leaves
/// out those that it would not choose.
const std::vector<IndexedOperation>& indexedOperations();

/// The codes under which the index has the datum.
std::set<std::string> indexedDatumCodes(const PJ* datum);

/// Returns whether an operation with these height systems at its ends suits systems with those height systems. An
/// operation that leaves heights alone always does.
bool heightsMatch(const std::string& operationSource, const std::string& operationTarget,
                  const std::string& systemSource, const std::string& systemTarget);

} // namespace Embedded
