// The operation methods that EPSG declares as not reversible.
#pragma once

namespace Embedded {

/// `epsgCode` is the method's code as text; null is reversible.
bool isIrreversibleMethod(const char* epsgCode);

} // namespace Embedded
