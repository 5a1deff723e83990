#include "embedded/host/database/handle.h"

#include "embedded/base/hex.h"

namespace Embedded {

std::string formatHandle(Handle handle)
{
    return upperCaseHex(handle);
}

std::string objectPlace(Handle handle)
{
    return "object " + formatHandle(handle);
}

} // namespace Embedded
