// The spatial-reference library: definitions, arrays, streams, WKT, operations.
// One of the four headers of the platform that the module includes.
#pragma once

#include "spatial_reference/definition.h"
#include "spatial_reference/definition_array.h"
#include "spatial_reference/definition_stream.h"
#include "spatial_reference/format_converter.h"
#include "spatial_reference/operation.h"
#include "spatial_reference/status.h"
#include "spatial_reference/transformation.h"
