// Converts values of the drawing model to resbufs and back.
#pragma once

#include "host/database/drawing_model.h"
#include "host/database/drawing_test.h"

namespace Tests {

inline constexpr double kModelScale = 8; // of reals; a power of two, so that they are exact

/// A new chain. The group code decides how a value is made from its number.
resbuf* newChain(const DrawingModel::Values& values);
/// The group codes and numbers that the chain was made from.
DrawingModel::Values modelValues(const resbuf* chain);

} // namespace Tests
