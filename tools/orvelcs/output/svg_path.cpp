#include "orvelcs/output/svg_path.h"

#include <cmath>
#include <cstdlib>

namespace Orvelcs {
namespace {

constexpr int kParts = 10;

struct Tenths {
    int x;
    int y;

    bool operator==(const Tenths&) const = default;
};

Tenths inTenths(const MapPoint& point)
{
    return {static_cast<int>(std::lround(point.x * kParts)), static_cast<int>(std::lround(point.y * kParts))};
}

/// "-1.5", "2", "-.3".
void append(std::string& path, int tenths)
{
    const int whole = std::abs(tenths) / kParts;
    const int part = std::abs(tenths) % kParts;
    if (tenths < 0)
        path += '-';
    if (whole != 0 || part == 0)
        path += std::to_string(whole);
    if (part != 0)
        path.append(".").append(std::to_string(part));
}

void append(std::string& path, char command, const Tenths& tenths)
{
    path += command;
    append(path, tenths.x);
    path += ',';
    append(path, tenths.y);
}

} // namespace

std::string svgPath(const std::vector<PlaneLine>& lines, PathEnd end)
{
    std::string path;
    for (const PlaneLine& line : lines) {
        if (line.empty())
            continue;
        Tenths previous = inTenths(line.front());
        append(path, 'M', previous);
        for (const MapPoint& point : line) {
            const Tenths next = inTenths(point);
            if (next == previous)
                continue;
            append(path, 'l', {next.x - previous.x, next.y - previous.y});
            previous = next;
        }
        if (end == PathEnd::closed)
            path += 'z';
    }
    return path;
}

} // namespace Orvelcs
