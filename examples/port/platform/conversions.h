#pragma once

#include "core/text.h"
#include "draft/values.h"
#include "host.h"

// What the bodies of the platform share: the product's values in the spelling of the platform.
namespace Platform {

/// The platform's results are the product's own numbers, but for the four that are fixed.
inline Qeapp::ErrorStatus toStatus(Draft::Outcome outcome)
{
    return static_cast<Qeapp::ErrorStatus>(outcome);
}

inline Draft::Outcome toOutcome(Qeapp::ErrorStatus status)
{
    return static_cast<Draft::Outcome>(status);
}

inline Draft::Text toText(const wchar_t* text)
{
    return text ? Core::toUtf16(text) : Draft::Text();
}

/// Fails for a group code that nothing here has values for.
Draft::Outcome toValues(const resbuf* chain, Draft::Values& values);
/// Null when memory is short.
resbuf* toChain(const Draft::Values& values);

} // namespace Platform
