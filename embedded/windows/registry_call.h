// What all calls of the registry begin and end with.
#pragma once

#include <new>
#include <string_view>

#include "embedded/foundation/faults.h"
#include "embedded/windows/registry_failure.h"

namespace Embedded {

/// The call's answer: the planned failure, what stopped it, or what `body` returns.
template <class Body>
LSTATUS answered(std::string_view call, LSTATUS failure, Body body)
{
    if (const auto fault = Faults::strike(call, failure))
        return *fault;
    try {
        return body();
    } catch (const RegistryFailure& stopped) {
        return stopped.code;
    } catch (const std::bad_alloc&) {
        return ERROR_OUTOFMEMORY;
    }
}

} // namespace Embedded
