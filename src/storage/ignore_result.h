// Calls of the platform whose results the module does not look at.
#pragma once

namespace Orvel {

/// Makes the call and ignores what it returns. A product may return whatever it likes there: nothing, a status, or a
/// type that must not be discarded.
template <class Call>
void ignoreResult(const Call& call)
{
    static_cast<void>(call());
}

} // namespace Orvel
