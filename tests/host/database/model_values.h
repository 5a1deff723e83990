// The values of the drawing model as resbufs, and back.
#pragma once

#include "host/database/drawing_model.h"
#include "host/database/drawing_test.h"

namespace Tests {

inline constexpr double kModelScale = 8; // of reals; exact in binary

/// A new chain; each value is made from its number in the way of its group code.
resbuf* chainOf(const DrawingModel::Values& values);
/// The numbers that the values of the chain were made from.
DrawingModel::Values valuesOf(const resbuf* chain);

} // namespace Tests
