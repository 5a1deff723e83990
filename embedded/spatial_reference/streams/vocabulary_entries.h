// The vocabulary's entries as JSON texts, in the order of their numbers.
#pragma once

#include <span>
#include <string_view>

namespace Embedded {

std::span<const std::string_view> vocabularyEntries();

} // namespace Embedded
