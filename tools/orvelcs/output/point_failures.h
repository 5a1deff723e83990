// Reports the points that cannot be transformed.
#pragma once

#include <cstddef>
#include <string>

#include "orvelcs/cli/output.h"

namespace Orvelcs {

class PointFailures {
public:
    /// How many reasons are printed unless all are wanted.
    static constexpr std::size_t kMostReasons = 20;

    PointFailures(Output& output, bool printsAllReasons) : output_(output), printsAllReasons_(printsAllReasons) {}

    /// Prints the number of the line and the reason.
    void add(std::size_t line, const std::string& reason);
    /// Prints how many of the points failed, if any did.
    void finish(const std::string& input, std::size_t points);

    std::size_t count() const { return count_; }
    /// {"failed", "failures"}; the failures are those whose reasons were printed.
    Json asJson() const { return {{"failed", count_}, {"failures", reasons_}}; }

private:
    Output& output_;
    bool printsAllReasons_;
    std::size_t count_ = 0;
    Json reasons_ = Json::array();
};

} // namespace Orvelcs
