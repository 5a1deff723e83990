// Properties of the platform's fallible calls, by name.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// Whether the call may throw: a call of the library, or one of the host that returns a result.
bool mayThrow(const std::string& call);

/// Whether the call throws when it fails, having no result to return.
bool throwsOnFailure(const std::string& call);

/// Whether the call's usual failure reports that there is no such object.
bool failsAsNotFound(const std::string& call);

/// A result code that no call returns by itself; nothing for a call that cannot return one.
std::optional<int> distinctFailure(const std::string& call);

/// Whether the host's calls return the result when they fail.
bool isHostsOwnFailure(int result);

} // namespace Tests
