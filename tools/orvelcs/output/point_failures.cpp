#include "orvelcs/output/point_failures.h"

#include <fmt/format.h>

namespace Orvelcs {

void PointFailures::add(std::size_t line, const std::string& reason)
{
    if (++count_ > kMostReasons && !printsAllReasons_)
        return;
    output_.error(fmt::format("line {}", line), reason);
    if (output_.json())
        reasons_.push_back({{"line", line}, {"message", reason}});
}

void PointFailures::finish(const std::string& input, std::size_t points)
{
    if (count_ == 0)
        return;
    const bool areLeftOut = count_ > kMostReasons && !printsAllReasons_;
    output_.error(input, fmt::format("{} of {} points could not be transformed{}", count_, points,
                                     areLeftOut ? fmt::format("; --verbose prints the reasons of the other {}, too",
                                                              count_ - kMostReasons)
                                                : ""));
}

} // namespace Orvelcs
