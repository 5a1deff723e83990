#include "orvelcs/output/point_columns.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/base/parse_number.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

constexpr const char* kOption = "--columns";
constexpr std::size_t kHeight = 2;
constexpr std::size_t kEpoch = 3;
constexpr std::size_t kFewestColumns = 2;

bool isNumber(const std::string& column)
{
    return !column.empty() && std::ranges::all_of(column, Embedded::isDigit<char>);
}

} // namespace

PointColumns::PointColumns(Delimiter delimiter, const std::string& columns)
    : delimiter_(delimiter), areChosen_(!columns.empty())
{
    constexpr char kComma = ',';
    std::vector<std::string_view> chosen;
    if (!areChosen_)
        return;
    const bool isWhole = splitColumns(columns, kComma, chosen);
    if (!isWhole || chosen.size() < kFewestColumns || chosen.size() > kColumns)
        throw wrongUsage(kOption, fmt::format("expected X,Y or X,Y,Z or X,Y,Z,EPOCH, found {}", columns));
    for (std::size_t index = 0; index < chosen.size(); ++index)
        choose(index, columnText(chosen[index], kComma), columns);
    checkThatTheyDiffer();
}

void PointColumns::choose(std::size_t index, const std::string& column, const std::string& all)
{
    const bool mayBeLeftOut = index == kHeight && all.back() != ',';
    if (column.empty() && !mayBeLeftOut)
        throw wrongUsage(kOption, fmt::format("expected numbers or names of columns, found {}", all));
    if (column.empty())
        return;
    if (!isNumber(column)) {
        names_.resize(kColumns);
        names_[index] = column;
        return;
    }
    const std::optional<std::size_t> number = Embedded::parseInteger<std::size_t>(column);
    if (!number || *number == 0)
        throw wrongUsage(kOption, fmt::format("expected a number from 1 on, found {}", column));
    numbers_[index] = *number;
}

void PointColumns::checkThatTheyDiffer() const
{
    for (std::size_t index = 1; index < kColumns; ++index) {
        const auto begin = numbers_.begin();
        const auto end = begin + static_cast<std::ptrdiff_t>(index);
        if (numbers_[index] != 0 && std::find(begin, end, numbers_[index]) != end)
            throw wrongUsage(kOption, fmt::format("names column {} twice", numbers_[index]));
    }
}

void PointColumns::readHeader(std::string_view line)
{
    static_cast<void>(splitColumns(line, delimiter_, columns_)); // quotes that stay open end with the line
    for (std::size_t index = 0; index < names_.size(); ++index) {
        if (!names_[index].empty())
            numbers_[index] = findColumn(names_[index]);
    }
    checkThatTheyDiffer();
}

bool PointColumns::endsInQuotes(std::string_view line)
{
    return delimiter_ && line.find('"') != line.npos && !splitColumns(line, delimiter_, columns_);
}

std::size_t PointColumns::findColumn(const std::string& name) const
{
    std::vector<std::string> header;
    for (const std::string_view column : columns_)
        header.push_back(columnText(column, delimiter_));
    const auto found = std::ranges::find(header, name);
    if (found == header.end())
        throw Failure(name, "the header has no such column" + nearestClause(nearest(name, header)));
    if (std::find(found + 1, header.end(), name) != header.end())
        throw Failure(name, "the header has several columns of this name; --columns takes their numbers, too");
    return static_cast<std::size_t>(found - header.begin()) + 1;
}

Embedded::Expected<Embedded::CoordinatePoint> PointColumns::read(std::string_view line, const LineAxes& axes,
                                                                 CoordinatePlaces& places)
{
    places = {};
    static_cast<void>(splitColumns(line, delimiter_, columns_)); // endsInQuotes has been asked
    for (std::size_t index = 0; index < places.size(); ++index) {
        const std::size_t number = numberOf(index);
        if (number != 0 && number <= columns_.size())
            places[index] = columns_[number - 1];
    }
    if (const auto check = checkCount(); !check)
        return Embedded::failure(check.error());
    return readNumbers(axes);
}

Embedded::Expected<void> PointColumns::checkCount() const
{
    const std::size_t count = columns_.size();
    const std::size_t needed = areChosen_ ? *std::ranges::max_element(numbers_) : kFewestColumns;
    if (count < needed)
        return Embedded::failure(0, fmt::format("expected at least {} columns, found {}", needed, count));
    if (!areChosen_ && count > kColumns)
        return Embedded::failure(0, fmt::format("expected 2 to 4 columns, found {}; --columns says which of them are "
                                                "coordinates",
                                                count));
    return {};
}

Embedded::Expected<Embedded::CoordinatePoint> PointColumns::readNumbers(const LineAxes& axes) const
{
    std::array<std::optional<double>, kColumns> numbers;
    for (std::size_t index = 0; index < kColumns; ++index) {
        const std::size_t number = numberOf(index);
        const std::string text =
            number != 0 && number <= columns_.size() ? columnText(columns_[number - 1], delimiter_) : std::string();
        if (text.empty() && index >= kHeight)
            continue;
        const auto coordinate = parseCoordinate(text, axes[index], "a number");
        if (!coordinate)
            return Embedded::failure(0, fmt::format("column {}: {}", number, coordinate.error().message));
        numbers[index] = *coordinate;
    }
    Embedded::CoordinatePoint point{*numbers[0], *numbers[1], numbers[kHeight], numbers[kEpoch]};
    if (const auto check = checkEpoch(point); !check)
        return Embedded::failure(check.error());
    return point;
}

} // namespace Orvelcs
