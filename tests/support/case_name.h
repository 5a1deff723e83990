// Names a test after its case in a table.
#pragma once

#include <string>

namespace Tests {

/// For INSTANTIATE_TEST_SUITE_P with cases that have a member `name`.
inline constexpr auto caseName = [](const auto& info) { return std::string(info.param.name); };

} // namespace Tests
