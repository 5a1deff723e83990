// Ends in a way that nothing catches, prepared as orvelcs is.
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "orvelcs/cli/process.h"

namespace {

/// Needs more of the stack than there is; volatile, so that no call of it becomes a loop.
int descend(volatile int* above)
{
    volatile int here[1024]{};
    here[0] = *above + 1;
    return here[0] == 0 ? 0 : descend(here) + here[0];
}

} // namespace

int main(int argumentCount, char** arguments)
{
    Orvelcs::prepareForUnhandledFailures();
    const std::string_view way = argumentCount > 1 ? arguments[1] : "";
    if (way == "exception")
        throw std::runtime_error("which nothing catches");
    if (way == "violation")
        *static_cast<volatile int*>(nullptr) = 1;
    if (way == "overflow") {
        volatile int top = 0;
        return descend(&top);
    }
    if (way == "abort")
        std::abort();
    return 3;
}
