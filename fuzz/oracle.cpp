#include "fuzz/oracle.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Fuzz {

void require(bool holds, std::string_view promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %.*s\n", static_cast<int>(promise.size()), promise.data());
    std::fflush(stderr);
    std::abort();
}

LeakCheck::~LeakCheck()
{
    const std::string left = Embedded::ResourceCounters::difference(before_, Embedded::ResourceCounters::now());
    require(left.empty(), "nothing is leaked; leaked: " + left);
}

} // namespace Fuzz
