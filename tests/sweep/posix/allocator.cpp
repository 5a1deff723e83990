// The process has one `new`, which serves the platform's libraries as well. An allocation belongs to the first caller
// on the stack that is not the standard library.
#include "sweep/allocations.h"

#include <dlfcn.h>
#include <unwind.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/host/resbuf.h"

namespace Tests {
namespace {

enum class Owner : std::uint8_t { unknown, standardLibrary, program, host, other };

struct KnownCaller {
    std::uintptr_t address = 0;
    Owner owner = Owner::unknown;
};

/// Caches the owner of each address that allocates, in a hash table with linear probing. Finding the owner takes long,
/// and there are some thousand addresses.
constexpr unsigned kBitsOfTable = 16;
std::array<KnownCaller, std::size_t{1} << kBitsOfTable> knownCallers;

/// Fibonacci hashing: the upper bits of the product with 2^64 over the golden ratio.
std::size_t slotFor(std::uintptr_t address)
{
    return std::uint64_t{address} * 0x9E3779B97F4A7C15U >> (64 - kBitsOfTable);
}

const void* findLibraryBase(const void* address)
{
    Dl_info found{};
    return dladdr(address, &found) != 0 ? found.dli_fbase : nullptr;
}

/// The loader takes a template instance of the standard library from the first file that has it, program or library, so
/// the name decides as well.
bool isStandard(const Dl_info& place)
{
    const std::string_view file = place.dli_fname != nullptr ? place.dli_fname : "";
    const std::string_view name = place.dli_sname != nullptr ? place.dli_sname : "";
    return file.find("libstdc++") != std::string_view::npos || name.starts_with("_ZNSt") ||
           name.starts_with("_ZNKSt") || name.starts_with("_ZSt") || name.starts_with("_ZN9__gnu_cxx");
}

Owner findOwner(const void* address)
{
    static const void* const program = findLibraryBase(reinterpret_cast<const void*>(&allocatorAt));
    static const void* const host = findLibraryBase(reinterpret_cast<const void*>(&qeutNewRb));
    Dl_info place{};
    if (dladdr(address, &place) == 0)
        return Owner::other;
    if (isStandard(place))
        return Owner::standardLibrary;
    if (place.dli_fbase == program)
        return Owner::program;
    return place.dli_fbase == host ? Owner::host : Owner::other;
}

Owner lookUpOwner(std::uintptr_t address)
{
    std::size_t place = slotFor(address);
    while (knownCallers[place].address != address && knownCallers[place].address != 0)
        place = (place + 1) % knownCallers.size();
    KnownCaller& known = knownCallers[place];
    if (known.address == 0)
        known = {address, findOwner(reinterpret_cast<const void*>(
                              address - 1))}; // an address within the call instruction, not after it
    return known.owner;
}

struct Walk {
    std::uintptr_t from; // earlier frames than the one of this address belong to `new`
    bool hasBegun = false;
    Owner owner = Owner::unknown;
};

_Unwind_Reason_Code visit(_Unwind_Context* frame, void* argument)
{
    Walk& walk = *static_cast<Walk*>(argument);
    const std::uintptr_t address = _Unwind_GetIP(frame);
    walk.hasBegun = walk.hasBegun || address == walk.from;
    if (!walk.hasBegun)
        return _URC_NO_REASON;
    walk.owner = lookUpOwner(address);
    return walk.owner == Owner::standardLibrary ? _URC_NO_REASON : _URC_END_OF_STACK;
}

Owner findOwnerOnStack(std::uintptr_t address)
{
    const Owner direct = lookUpOwner(address);
    if (direct != Owner::standardLibrary)
        return direct;
    Walk walk{address};
    static_cast<void>(_Unwind_Backtrace(visit, &walk)); // the visitor stops it and stores the owner
    return walk.owner;
}

} // namespace

Allocator allocatorAt(const void* caller)
{
    switch (findOwnerOnStack(reinterpret_cast<std::uintptr_t>(caller))) {
    case Owner::program:
        return Allocator::module;
    case Owner::host:
        return Allocator::host;
    default:
        return Allocator::other;
    }
}

} // namespace Tests
