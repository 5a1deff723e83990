#include "orvelcs/cli/progress_text.h"

#include <cmath>
#include <cstdint>

#include <fmt/format.h>

namespace Orvelcs {
namespace {

constexpr std::chrono::milliseconds kUntilRateIsKnown{2000};

std::string rateText(double perSecond)
{
    return perSecond >= 10  ? fmt::format("{:.0f}/s", perSecond)
           : perSecond >= 1 ? fmt::format("{:.1f}/s", perSecond)
                            : fmt::format("{:.1f}/min", perSecond * 60);
}

std::string durationText(double seconds)
{
    const auto whole = static_cast<std::int64_t>(std::ceil(seconds));
    if (whole < 60)
        return fmt::format("{} s", whole);
    if (whole < 3600)
        return fmt::format("{} min {} s", whole / 60, whole % 60);
    return fmt::format("{} h {} min", whole / 3600, whole % 3600 / 60);
}

} // namespace

std::string progressText(std::size_t position, std::size_t total, std::chrono::milliseconds elapsed)
{
    std::string text = fmt::format("[{}/{}]", position, total);
    const auto done = static_cast<double>(position - 1);
    if (elapsed < kUntilRateIsKnown || position < 2)
        return text;
    const double perSecond = done / std::chrono::duration<double>(elapsed).count();
    const double left = static_cast<double>(total) - done;
    return fmt::format("{} {}, {} left", text, rateText(perSecond), durationText(left / perSecond));
}

std::string progressText(std::size_t points, const StreamPosition& position, std::chrono::milliseconds elapsed)
{
    const bool hasEnd = position.bytesInAll > 0 && position.bytes <= position.bytesInAll;
    const double share = hasEnd ? static_cast<double>(position.bytes) / static_cast<double>(position.bytesInAll) : 0;
    std::string text = hasEnd ? fmt::format("[{:.0f} %] ", std::floor(share * 100)) : "";
    text += fmt::format("{} points", points);
    if (elapsed < kUntilRateIsKnown)
        return text;
    const double seconds = std::chrono::duration<double>(elapsed).count();
    text += ", " + rateText(static_cast<double>(points) / seconds);
    return share > 0 ? fmt::format("{}, {} left", text, durationText(seconds / share - seconds)) : text;
}

} // namespace Orvelcs
