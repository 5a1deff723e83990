#include "orvelcs/output/table.h"

#include <algorithm>
#include <numeric>

#include "orvelcs/cli/display_width.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kGap = 2;

std::vector<std::size_t> columnWidths(const std::vector<TableRow>& rows)
{
    std::vector<std::size_t> widths;
    for (const TableRow& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], displayWidth(row[column]));
    }
    return widths;
}

/// Narrows the widest columns until the sum of all is at most `most`.
void narrow(std::vector<std::size_t>& widths, std::size_t most)
{
    constexpr std::size_t kLeast = 4; // narrower ones say nothing
    while (std::accumulate(widths.begin(), widths.end(), std::size_t{0}) > most) {
        const auto widest = std::ranges::max_element(widths);
        if (*widest <= kLeast)
            return;
        --*widest;
    }
}

} // namespace

std::vector<std::string> alignColumns(const std::vector<TableRow>& rows, std::optional<std::size_t> mostColumns,
                                      std::optional<std::size_t> rightAlignedColumn)
{
    std::vector<std::size_t> widths = columnWidths(rows);
    if (mostColumns && !widths.empty())
        narrow(widths, *mostColumns - std::min(*mostColumns, kGap * (widths.size() - 1)));
    std::vector<std::string> lines;
    for (const TableRow& row : rows) {
        std::string& line = lines.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string cell = truncated(row[column], widths[column]);
            const std::string blanks(widths[column] - displayWidth(cell), ' ');
            const bool isLast = column + 1 == row.size();
            line += column == rightAlignedColumn ? blanks + cell : cell;
            line += isLast ? "" : column == rightAlignedColumn ? "  " : blanks + "  ";
        }
    }
    return lines;
}

void printTable(const std::vector<TableRow>& rows, Output& output)
{
    for (const std::string& line : alignColumns(rows, Output::tableColumns()))
        output.line(line);
}

} // namespace Orvelcs
