// Ends in a way that nothing catches, prepared as orvelcs is.
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "orvelcs/process.h"

int main(int argumentCount, char** arguments)
{
    Orvelcs::prepareForUnhandledFailures();
    const std::string_view way = argumentCount > 1 ? arguments[1] : "";
    if (way == "exception")
        throw std::runtime_error("which nothing catches");
    if (way == "violation")
        *static_cast<volatile int*>(nullptr) = 1;
    if (way == "abort")
        std::abort();
    return 3;
}
