#include "support/win32/heap/phases.h"

#include <algorithm>

#include "support/win32/heap/system_memory.h"

namespace GuardedHeap {
namespace {

constexpr std::size_t kNamesInRoom = 1024;
constexpr std::size_t kRooms = 256;
constexpr std::size_t kLongestName = 112;

struct Name {
    char text[kLongestName];
};

struct Names {
    Name* rooms[kRooms]; // names never move: the report of a leak reads them long after
    std::uint32_t used;
    std::uint32_t current;
};
constinit Names names{};

} // namespace

void enterPhase(std::string_view name)
{
    if (name.empty() || names.used == kNamesInRoom * kRooms) {
        names.current = 0;
        return;
    }
    Name*& room = names.rooms[names.used / kNamesInRoom];
    if (room == nullptr)
        room = newPagesOf<Name>(kNamesInRoom);
    std::ranges::copy(name.substr(0, kLongestName - 1), room[names.used % kNamesInRoom].text);
    names.current = ++names.used;
}

std::uint32_t currentPhase()
{
    return names.current;
}

std::string_view phaseName(std::uint32_t phase)
{
    return phase == 0 ? "no test" : names.rooms[(phase - 1) / kNamesInRoom][(phase - 1) % kNamesInRoom].text;
}

} // namespace GuardedHeap
