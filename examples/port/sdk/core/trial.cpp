#include "trial.h"

#include <map>

namespace Core {
namespace {

std::size_t callToFail = 0;
Trial present;

std::map<std::string, int>& alive()
{
    static std::map<std::string, int> counts;
    return counts;
}

} // namespace

void failCall(std::size_t n)
{
    callToFail = n;
    present = {};
}

Trial trial()
{
    return present;
}

bool failsNow(const char* call)
{
    if (++present.calls != callToFail)
        return false;
    present.failed = call;
    return true;
}

void Living::count(const char* kind, int change)
{
    alive()[kind] += change;
}

std::string Living::list()
{
    std::string text;
    for (const auto& [kind, count] : alive()) {
        if (count != 0)
            text += (text.empty() ? "" : ", ") + kind + ": " + std::to_string(count);
    }
    return text;
}

} // namespace Core
