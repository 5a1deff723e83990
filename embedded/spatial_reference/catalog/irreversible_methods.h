// The operation methods that EPSG declares as not reversible.
#pragma once

namespace Embedded {

/// `epsgCode` is the method's code as text. False for null.
bool isIrreversibleMethod(const char* epsgCode);

} // namespace Embedded
