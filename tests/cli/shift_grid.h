// A grid of the tests' own, and a fixture whose program finds no other.
#pragma once

#include <string>

#include "command_line_test.h"

namespace Tests {

/// The data folder of PROJ has only the catalog, whatever grids this machine has.
class GridTest : public CommandLineTest {
protected:
    static constexpr const char* kGrid = "us_noaa_conus.tif"; // the grid of EPSG:1241

    GridTest();

    /// Puts a grid into the folder "data" or "downloads" under the name of that of EPSG:1241. Between 35° and 45° north
    /// and between 95° and 105° west, it shifts every point by 3.6" to the north and 7.2" to the east.
    void givenGrid(const std::string& folder) const;

    ProgramResult runWithGrids(const Arguments& arguments, const std::string& input = "") const;
};

} // namespace Tests
