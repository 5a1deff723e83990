#include "orvelcs/output/table.h"

#include <algorithm>

#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

std::size_t widthInCharacters(const std::string& cell)
{
    return Embedded::wideFromUtf8(cell).size();
}

std::vector<std::size_t> columnWidths(const std::vector<TableRow>& rows)
{
    std::vector<std::size_t> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], widthInCharacters(row[column]));
    }
    return widths;
}

} // namespace

std::vector<std::string> alignColumns(const std::vector<TableRow>& rows, std::optional<std::size_t> rightAlignedColumn)
{
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::vector<std::string> lines;
    for (const TableRow& row : rows) {
        std::string& line = lines.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string blanks(widths[column] - widthInCharacters(row[column]), ' ');
            const bool isLast = column + 1 == row.size();
            line += column == rightAlignedColumn ? blanks + row[column] : row[column];
            line += isLast ? "" : column == rightAlignedColumn ? "  " : blanks + "  ";
        }
    }
    return lines;
}

} // namespace Orvelcs
