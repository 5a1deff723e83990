// PROJ's own words about what it refuses.
#pragma once

#include <string>

namespace Embedded {

/// The last error that PROJ reported since forgetProjMessage, without the function and the number before it; empty when
/// there was none.
std::string lastProjMessage();
void forgetProjMessage();

} // namespace Embedded
