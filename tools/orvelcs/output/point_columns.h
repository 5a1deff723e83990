// The columns of a line that hold a point.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/cli/columns.h"
#include "orvelcs/output/point_text.h"

namespace Orvelcs {

/// Where x, y and z stand in the text of a line; no data where there is no such column.
using CoordinatePlaces = std::array<std::string_view, 3>;

class PointColumns {
public:
    /// `columns` is X,Y or X,Y,Z or X,Y,Z,EPOCH, each a number from 1 or the name of a column in the header, and Z may
    /// be empty. Without it the columns of a line are those of a point, in this order and no others. Throws Failure for
    /// wrong usage.
    PointColumns(Delimiter delimiter, const std::string& columns);

    Delimiter delimiter() const { return delimiter_; }
    bool areNamed() const { return !names_.empty(); }
    /// Whether the columns were chosen and none of them is a height.
    bool lackHeights() const { return areChosen_ && numbers_[2] == 0 && !isNamed(2); }

    /// Finds the columns that are chosen by a name. Throws Failure for a name that the header lacks or has twice.
    void readHeader(std::string_view line);

    /// Returns whether the line ends within quotes, so that the next line belongs to it.
    bool endsInQuotes(std::string_view line);

    /// Reads a point, and where its coordinates stand. The places are those of the columns that are there also when the
    /// line is no point. The Error says what was found.
    Embedded::Expected<Embedded::CoordinatePoint> read(std::string_view line, const LineAxes& axes,
                                                       CoordinatePlaces& places);

private:
    static constexpr std::size_t kColumns = 4;

    bool isNamed(std::size_t index) const { return areNamed() && !names_[index].empty(); }
    void choose(std::size_t index, const std::string& column, const std::string& all);
    void checkThatTheyDiffer() const;
    std::size_t findColumn(const std::string& name) const;
    std::size_t numberOf(std::size_t index) const { return areChosen_ ? numbers_[index] : index + 1; }
    Embedded::Expected<void> checkCount() const;
    Embedded::Expected<Embedded::CoordinatePoint> readNumbers(const LineAxes& axes) const;

    Delimiter delimiter_;
    bool areChosen_;
    std::array<std::size_t, kColumns> numbers_{}; // from 1; 0 for none
    std::vector<std::string> names_;              // of those that are chosen by name; empty where none is
    std::vector<std::string_view> columns_;       // of the last line; kept for its memory
};

} // namespace Orvelcs
