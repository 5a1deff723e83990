// The options that say which place matters to the choice of a transformation.
#pragma once

#include <string>

#include <CLI/App.hpp>

#include "orvelcs/cli/output.h"
#include "orvelcs/drawing/transformation_comparison.h"

namespace Orvelcs {

struct PlaceOptions {
    std::string at;
    std::string bbox;
    std::string points;
    std::string areaOf;

    bool areGiven() const { return !at.empty() || !bbox.empty() || !points.empty() || !areaOf.empty(); }
};

/// How they are written in a line of usage.
inline constexpr const char* kPlaceUsage = "[--at LAT,LON] [--bbox W,S,E,N | --points FILE | --area-of SYSTEM]";

/// What they do, for the help of a command.
inline constexpr const char* kPlaceHelp =
    "The ranking is for the place that matters: the area --bbox, the points in --points, the area of use of\n"
    "--area-of, the point --at, or else the middle of the common area of use. Candidates whose area of use covers all\n"
    "of the place come first, then those that cover a part of it, then ballpark ones, which take datums for equal, "
    "then\n"
    "those outside; the more accurate before the less accurate, and those of unknown accuracy last. One that lacks a\n"
    "grid stands where it would stand with it. Areas of use are compared as the boxes that enclose them.\n"
    "FILE has a latitude and a longitude in degrees on each line; empty lines and comments after # are skipped.\n"
    "Places are in degrees from Greenwich. In W,S,E,N west is greater than east across the antimeridian.";

void addPlaceOptions(CLI::App& command, PlaceOptions& options);

/// Throws Failure for wrong usage, for points that cannot be read, and for a system without an area of use.
ComparedPlace readPlace(const PlaceOptions& options, const Output& output);

} // namespace Orvelcs
