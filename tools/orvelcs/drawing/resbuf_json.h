// Resbuf chains as JSON: [{"code": 1071, "value": 1}, {"code": 310, "hex": "0aff"}, …].
#pragma once

#include <string>
#include <string_view>

#include "orvelcs/cli/json.h"
#include "orvelcs/drawing/holders.h"
#include "platform/host.h"

namespace Orvelcs {

Json resbufsAsJson(const resbuf* chain);

/// Throws Failure, which names the place, for anything that is not such a chain; `subject` is what it is about. An
/// empty array gives a null chain.
ResbufList resbufsFromJson(const std::string& subject, std::string_view text);

} // namespace Orvelcs
