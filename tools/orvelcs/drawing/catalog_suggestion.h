// The codes and authorities that a misspelt one may have meant.
#pragma once

#include <string>

namespace Orvelcs {

/// "; the nearest are EPSG:25832, EPSG:25833"; empty when there is none.
std::string nearestCodesClause(const std::wstring& code);

/// Throws Failure (nothing found) for an authority that the catalog does not have.
void checkAuthority(const std::wstring& authority);

} // namespace Orvelcs
