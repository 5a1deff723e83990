// Tables as text: cells in aligned columns.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "orvelcs/cli/output.h"

namespace Orvelcs {

using TableRow = std::vector<std::string>; // of UTF-8

/// Makes a line of each row, the columns two blanks apart. All rows have the same number of cells. The last cell is not
/// padded. With `mostColumns` the widest cells are cut until each line fits.
std::vector<std::string> alignColumns(const std::vector<TableRow>& rows, std::optional<std::size_t> mostColumns,
                                      std::optional<std::size_t> rightAlignedColumn = std::nullopt);

/// Prints the rows, cut to the width of a terminal.
void printTable(const std::vector<TableRow>& rows, Output& output);

} // namespace Orvelcs
