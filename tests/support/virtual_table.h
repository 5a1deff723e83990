// Reads an object's table of virtual functions. g++ and clang++ lay it out by the Itanium C++ ABI on every system. A
// virtual destructor has two slots.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <set>

namespace Tests {

template <std::size_t slots>
using VirtualTable = std::array<const void*, slots>;

template <std::size_t slots>
VirtualTable<slots> readVirtualTable(const void* object)
{
    const void* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    VirtualTable<slots> functions{};
    std::memcpy(functions.data(), table, sizeof functions);
    return functions;
}

/// The slots from `first` on in which the tables of the two objects differ.
template <std::size_t slots>
std::set<std::size_t> differingSlots(const void* left, const void* right, std::size_t first)
{
    const VirtualTable<slots> one = readVirtualTable<slots>(left);
    const VirtualTable<slots> other = readVirtualTable<slots>(right);
    std::set<std::size_t> differing;
    for (std::size_t slot = first; slot < slots; ++slot) {
        if (one[slot] != other[slot])
            differing.insert(slot);
    }
    return differing;
}

} // namespace Tests
