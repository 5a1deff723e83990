#include "trial.h"

namespace Core {
namespace {

std::size_t callToFail = 0;
std::size_t calls = 0;

} // namespace

void failCall(std::size_t n)
{
    callToFail = n;
    calls = 0;
}

std::size_t countedCalls()
{
    return calls;
}

bool failsNow()
{
    return ++calls == callToFail;
}

} // namespace Core
