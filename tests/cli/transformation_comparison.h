// The fixture of tests that compare the transformations between two systems.
#pragma once

#include <string>

#include "shift_grid.h"

namespace Tests {

class ComparisonTest : public GridTest {
protected:
    /// Runs the comparison without any grid of this machine.
    ProgramResult compare(const std::string& source, const std::string& target, const Arguments& options = {},
                          const std::string& input = "") const
    {
        return runWithGrids(concatenate({"transformation", "compare", source, target}, options), input);
    }
    Json compareForJson(const std::string& source, const std::string& target, const Arguments& options = {},
                        int expectedStatus = 0) const
    {
        const ProgramResult result = compare(source, target, concatenate(options, {"--json"}));
        EXPECT_EQ(result.status, expectedStatus) << result.errors;
        return Json::parse(result.output);
    }
    static Json codes(const Json& comparison)
    {
        Json codes = Json::array();
        for (const Json& candidate : comparison["candidates"])
            codes.push_back(candidate["code"]);
        return codes;
    }
    static Json candidate(const Json& comparison, const std::string& code)
    {
        for (const Json& candidate : comparison["candidates"])
            if (candidate["code"] == code)
                return candidate;
        return nullptr;
    }
};

} // namespace Tests
