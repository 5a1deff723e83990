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

/// Silent and without network; made on first use and kept for the process.
PJ_CONTEXT* projContext();

/// Whether PROJ has found its database.
bool isCatalogAvailable();

/// The authorities of the database, as it spells them.
const std::vector<std::string>& catalogAuthorities();

} // namespace Embedded
