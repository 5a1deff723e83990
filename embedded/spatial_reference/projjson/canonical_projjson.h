// From PROJ's objects to documents, and back.
#pragma once

#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The document of a coordinate reference system, a datum or an ellipsoid.
///
/// PROJ's own PROJJSON leaves out what its database would supply again: identifiers below an object that has one. They
/// are put back, so that the document says as much as the object did.
Projjson canonicalProjjson(const PJ* object);

/// What the document describes as an object of PROJ's, or null when PROJ cannot make sense of it.
ProjObject projObjectFrom(const Projjson& document);

} // namespace Embedded
