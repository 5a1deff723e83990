// The one PROJ context of the process, and holders for PROJ's objects.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "embedded/spatial_reference/projjson/proj_functions.h"

namespace Embedded {

struct ProjRelease {
    void operator()(PJ* object) const { proj_destroy(object); }
    void operator()(PJ_OBJ_LIST* list) const { proj_list_destroy(list); }
};
using ProjObject = std::unique_ptr<PJ, ProjRelease>;
using ProjList = std::unique_ptr<PJ_OBJ_LIST, ProjRelease>;

/// The context is made on first use and kept for the process. It prints nothing, and uses the network only if the
/// environment variable PROJ_NETWORK asks for it.
PJ_CONTEXT* projContext();

/// Where PROJ looks for its database and for grids, in order.
std::vector<std::string> catalogFolders();

/// Returns whether PROJ has found and opened its database.
bool isCatalogAvailable();

/// What kept PROJ from reading its database. PROJ's lists are then shorter, or empty.
enum class ReadFailure { none, database, memory };
/// The failure since the last call of forgetReadFailure.
ReadFailure readFailure();
void forgetReadFailure();

/// The last error that PROJ reported since forgetProjMessage, without the function and the number before it; empty when
/// there was none.
std::string lastProjMessage();
void forgetProjMessage();

/// The authorities of the database, as it spells them.
const std::vector<std::string>& catalogAuthorities();

} // namespace Embedded
