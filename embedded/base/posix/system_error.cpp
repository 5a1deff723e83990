#include "embedded/base/system_error.h"

#include <cerrno>

namespace Embedded {

std::string systemMessage(const std::error_code& code)
{
    return code.message();
}

std::error_code lastSystemError()
{
    return {errno, std::generic_category()};
}

} // namespace Embedded
