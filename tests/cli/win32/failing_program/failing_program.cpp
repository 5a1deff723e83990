// Fails in a way that nothing catches, after the preparation that orvelcs makes.
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "orvelcs/cli/process.h"

namespace {

/// Overflows the stack. The variables are volatile so that the compiler does not make a loop of the recursion.
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
    const std::string_view failure = argumentCount > 1 ? arguments[1] : "";
    if (failure == "exception")
        throw std::runtime_error("nothing catches this");
    if (failure == "violation")
        *static_cast<volatile int*>(nullptr) = 1;
    if (failure == "overflow") {
        volatile int top = 0;
        return descend(&top);
    }
    if (failure == "abort")
        std::abort();
    return 3;
}
