#include "support/win32/heap/damage_report.h"

#include "support/win32/heap/loaded_modules.h"
#include "support/win32/heap/phases.h"

namespace GuardedHeap {
namespace {

std::string_view nameOf(Damage damage)
{
    switch (damage) {
    case Damage::overrun:
        return "write behind a block";
    case Damage::underrun:
        return "write before a block";
    case Damage::writeAfterFree:
        return "write to a freed block";
    case Damage::secondFree:
        return "second free of a block";
    }
    return "damage";
}

void describePlace(Report& report, const Block& block, std::ptrdiff_t place)
{
    report << "the byte at ";
    if (place < 0)
        report << "-" << static_cast<std::size_t>(-place);
    else
        report << static_cast<std::size_t>(place);
    report << " is " << Hexadecimal{static_cast<std::size_t>(block.start[place])};
    report.endLine();
}

} // namespace

void describeHistory(Report& report, const Block& block)
{
    report << "  allocated in " << phaseName(block.phase) << " by";
    name(report, block.allocatedAt);
    report.endLine();
    if (block.isLive())
        return;
    report << "  freed by";
    name(report, block.freedAt);
    report.endLine();
}

void reportDamage(Damage damage, const Block& block, std::ptrdiff_t place, const CallTrace& finder)
{
    Report report;
    report << nameOf(damage) << " of " << block.size << " bytes";
    report.endLine();
    if (damage != Damage::secondFree) {
        report << "  ";
        describePlace(report, block, place);
    }
    describeHistory(report, block);
    report << "  found in " << phaseName(currentPhase()) << (finder[0] != nullptr ? " by" : "");
    name(report, finder);
    report.endProcess(kDamageExitCode);
}

void reportForeignAddress(std::string_view operation, const void* address, const CallTrace& caller)
{
    Report report;
    report << operation << " of an address that no allocation gave, or that was freed long ago: "
           << Hexadecimal{reinterpret_cast<std::size_t>(address)};
    report.endLine();
    report << "  found in " << phaseName(currentPhase()) << " by";
    name(report, caller);
    report.endProcess(kDamageExitCode);
}

} // namespace GuardedHeap
