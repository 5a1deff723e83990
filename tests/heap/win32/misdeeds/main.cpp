#include <cstdio>
#include <cstring>

#include "misdeeds.h"

namespace {

/// Clears the part of the stack that the deed had, with the addresses that it left there.
[[gnu::noinline]] void clearStack()
{
    char space[32768];
    std::memset(space, 0, sizeof space);
    asm volatile("" : : "r"(space) : "memory");
}

} // namespace

int main(int count, char** arguments)
{
    using namespace Misdeeds;
    if (count != 2)
        return 2;
    for (const Deeds& deeds : {damage(), leaks(), libraries(), properUse()})
        if (const auto deed = deeds.find(arguments[1]); deed != deeds.end()) {
            deed->second();
            clearStack();
            std::puts("done");
            return 0;
        }
    return 2;
}
