// The process's one PROJ context, and holders for what PROJ hands out.
#pragma once

#include <proj.h>

#include <memory>
#include <string>
#include <vector>

namespace Embedded {

struct ProjRelease {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
    void operator()(PJ* object) const { proj_destroy(object); }
    void operator()(PJ_OBJ_LIST* list) const { proj_list_destroy(list); }
};
using ProjObject = std::unique_ptr<PJ, ProjRelease>;
using ProjList = std::unique_ptr<PJ_OBJ_LIST, ProjRelease>;

/// Silent, and without network unless the environment variable PROJ_NETWORK asks for it; made on first use and kept for
/// the process.
PJ_CONTEXT* projContext();

/// Where PROJ looks for its database and for grids, in order.
std::vector<std::string> catalogFolders();

/// Whether PROJ has found and opened its database.
bool isCatalogAvailable();

/// What kept PROJ from reading its database. PROJ's lists are then shorter, or empty.
enum class ReadFailure { none, database, memory };
/// The failure since the last call, which is forgotten by this call.
ReadFailure takeReadFailure();

/// The authorities of the database, as it spells them.
const std::vector<std::string>& catalogAuthorities();

} // namespace Embedded
