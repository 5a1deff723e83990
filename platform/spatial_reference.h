// The spatial-reference library: definitions, arrays, streams, WKT, operations.
// One of the four headers through which the module meets its platform.
#pragma once

#include "spatial_reference/definition.h"
#include "spatial_reference/definition_array.h"
#include "spatial_reference/definition_stream.h"
#include "spatial_reference/format_converter.h"
#include "spatial_reference/operation.h"
#include "spatial_reference/status.h"
#include "spatial_reference/transformation.h"
