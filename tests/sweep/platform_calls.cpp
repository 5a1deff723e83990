#include "sweep/platform_calls.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/host/error_status.h"

namespace Tests {
namespace {

constexpr int kPlanned = 77;

template <std::size_t size>
bool startsWithOneOf(std::string_view call, const std::array<std::string_view, size>& beginnings)
{
    return std::ranges::any_of(beginnings, [=](std::string_view beginning) { return call.starts_with(beginning); });
}

bool isOfTheLibrary(std::string_view call)
{
    constexpr std::array<std::string_view, 8> kClasses{"CoordinateReferenceSystem", "DatumDefinition", "Definition",
                                                       "EllipsoidDefinition",       "Format",          "Geodetic",
                                                       "TransformationInfo",        "Object::"};
    return startsWithOneOf(call, kClasses);
}

bool isOfTheHostsObjects(std::string_view call)
{
    constexpr std::array<std::string_view, 3> kBeginnings{"QeDb", "qedb", "QeApDocManager"};
    return startsWithOneOf(call, kBeginnings);
}

/// Functions for memory with the manners of C.
bool isOfTheHostsMemory(std::string_view call)
{
    constexpr std::array<std::string_view, 3> kBeginnings{"qeut", "qeapp_", "qeHeap"};
    return startsWithOneOf(call, kBeginnings);
}

} // namespace

bool mayThrow(const std::string& call)
{
    return isOfTheLibrary(call) || isOfTheHostsObjects(call);
}

bool throwsByItself(const std::string& call)
{
    return call == "qeHeapAlloc" || call == "FqGuardDisposable::FqGuardDisposable";
}

bool failsAsNotThere(const std::string& call)
{
    return call == "QeDbDictionary::getAt";
}

std::optional<int> recognisableFailure(const std::string& call)
{
    const bool carriesOne = isOfTheLibrary(call) || isOfTheHostsObjects(call) || isOfTheHostsMemory(call);
    return carriesOne ? std::optional(kPlanned) : std::nullopt;
}

bool isHostsOwnFailure(int result)
{
    constexpr std::array<int, 8> kOwn{kPlanned,
                                      Qeapp::eOutOfMemory,
                                      Qeapp::eOpenForWrite,
                                      Qeapp::eOpenForRead,
                                      Qeapp::eKeyNotFound,
                                      Qeapp::eDuplicateKey,
                                      Qeapp::eInvalidInput,
                                      Qeapp::eLockConflict};
    return std::ranges::find(kOwn, result) != kOwn.end();
}

} // namespace Tests
