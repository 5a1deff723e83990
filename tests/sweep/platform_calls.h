// What is known of the platform's fallible calls by their names.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// Whether the platform may let the call throw: the library, and what the host answers with a result.
bool mayThrow(const std::string& call);

/// Whether the call throws by itself where it has no result to fail with.
bool throwsByItself(const std::string& call);

/// Whether the call, where it chooses the result to fail with, answers that there is no such object.
bool failsAsNotThere(const std::string& call);

/// A failure that no call has for itself, where its result can carry one.
std::optional<int> recognisableFailure(const std::string& call);

/// Whether the result is one of those with which the host's calls fail of their own accord.
bool isHostsOwnFailure(int result);

} // namespace Tests
