// Tables as text: cells in aligned columns.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Orvelcs {

using TableRow = std::vector<std::string>; // of UTF-8

/// Makes a line of each row, the columns two blanks apart. All rows have the same number of cells. The last cell is not
/// padded.
std::vector<std::string> alignColumns(const std::vector<TableRow>& rows,
                                      std::optional<std::size_t> rightAlignedColumn = std::nullopt);

} // namespace Orvelcs
