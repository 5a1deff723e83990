// Every operation of the catalog that is in use, by the datums and height systems between which it leads.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/system_parts.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

struct OperationEnd {
    std::string datum;    // of heights alone, that of the other end
    std::string vertical; // the height system; empty: none
};

struct IndexedOperation {
    CatalogCode code;
    DefinitionType type = DefinitionType::transformation; // or path
    OperationEnd source;
    OperationEnd target;
};

/// By authority and code; read on first use, which takes some tenths of a second: PROJ finds operations by their exact
/// systems only, and leaves out those that it would not choose itself.
const std::vector<IndexedOperation>& indexedOperations();

/// The codes under which the index has a datum.
std::set<std::string> indexedNamesOf(const PJ* datum);

/// Whether an operation that leads from one of these height systems to the other is of use between systems with those:
/// one that says nothing of heights always is.
bool heightsFit(const std::string& operationSource, const std::string& operationTarget, const std::string& systemSource,
                const std::string& systemTarget);

} // namespace Embedded
