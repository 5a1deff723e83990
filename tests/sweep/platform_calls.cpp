#include "sweep/platform_calls.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/host/error_status.h"

namespace Tests {
namespace {

constexpr int kInjectedCode = 77;

template <std::size_t size>
bool startsWithAny(std::string_view call, const std::array<std::string_view, size>& beginnings)
{
    return std::ranges::any_of(beginnings, [=](std::string_view beginning) { return call.starts_with(beginning); });
}

bool isLibraryCall(std::string_view call)
{
    constexpr std::array<std::string_view, 8> kClasses{"CoordinateReferenceSystem", "DatumDefinition", "Definition",
                                                       "EllipsoidDefinition",       "Format",          "Geodetic",
                                                       "TransformationInfo",        "Object::"};
    return startsWithAny(call, kClasses);
}

bool isHostObjectCall(std::string_view call)
{
    constexpr std::array<std::string_view, 3> kBeginnings{"QeDb", "qedb", "QeApDocManager"};
    return startsWithAny(call, kBeginnings);
}

/// C functions for memory.
bool isHostMemoryCall(std::string_view call)
{
    constexpr std::array<std::string_view, 3> kBeginnings{"qeut", "qeapp_", "qeHeap"};
    return startsWithAny(call, kBeginnings);
}

} // namespace

bool mayThrow(const std::string& call)
{
    return isLibraryCall(call) || isHostObjectCall(call);
}

bool throwsOnFailure(const std::string& call)
{
    return call == "qeHeapAlloc" || call == "FqGuardDisposable::FqGuardDisposable";
}

bool failsAsNotFound(const std::string& call)
{
    return call == "QeDbDictionary::getAt";
}

std::optional<int> distinctFailure(const std::string& call)
{
    const bool returnsCode = isLibraryCall(call) || isHostObjectCall(call) || isHostMemoryCall(call);
    return returnsCode ? std::optional(kInjectedCode) : std::nullopt;
}

bool isHostsOwnFailure(int result)
{
    constexpr std::array<int, 8> kOwn{kInjectedCode,        Qeapp::eOutOfMemory, Qeapp::eOpenForWrite,
                                      Qeapp::eOpenForRead,  Qeapp::eKeyNotFound, Qeapp::eDuplicateKey,
                                      Qeapp::eInvalidInput, Qeapp::eLockConflict};
    return std::ranges::find(kOwn, result) != kOwn.end();
}

} // namespace Tests
