// The fixture for the coordinate-system functions: a drawing, a log of notices, and a status to write to.
#pragma once

#include <algorithm>
#include <string>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/diagnostics/fault_injection.h"
#include "storage/definition_xrecord.h"
#include "support/drawing.h"
#include "support/library_definitions.h"
#include "support/platform_test.h"
#include "support/recording_reactor.h"

namespace Tests {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

/// A library status that no function writes. It shows that a status was not written.
inline constexpr auto kUntouched = static_cast<Library::Status>(77);

/// The code of the system that tests assign.
inline constexpr const wchar_t* kAssignedCode = L"EPSG:25832";

/// The library's call that looks a system up in the catalog.
inline constexpr const char* kLoadSystem = "CoordinateReferenceSystemDefinition::Load";

/// Counts how often the call was made since FaultInjection::watch or FaultInjection::arm.
inline std::size_t countCalls(const std::string& call)
{
    return static_cast<std::size_t>(std::ranges::count(Embedded::FaultInjection::seen(), call));
}

class CoordsysTest : public PlatformTest {
protected:
    Drawing drawing;
    Notices log;
    RecordingReactor reactor{log};
    Library::Status status = kUntouched;

    QeDbDatabase* database() const { return drawing.database(); }

    Qeapp::ErrorStatus assign(const wchar_t* code) { return Cs::SetCoordinateSystem(code, database(), &status); }
    Qeapp::ErrorStatus assign(const SystemHolder& definition)
    {
        return Cs::SetCoordinateSystem(definition.get(), database(), &status);
    }
    /// Stores the system without reactors or a status, like an earlier assignment.
    void storeSystem(const wchar_t* code) { drawing.withGeoData(serializedText(catalogSystem(code).get())); }
    /// Stores the definition xrecord, as an older drawing version has it.
    void storeXrecord(const SystemHolder& system) const
    {
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(system.get(), database()), Qeapp::eOk);
    }
    /// Stores the system in each of the three forms.
    void storeAllForms(const wchar_t* code)
    {
        storeSystem(code);
        drawing.withLegacyCode(code);
        storeXrecord(catalogSystem(code));
    }
    /// Reads the drawing's system and gives its kind and code, or "none".
    std::wstring describeStoredSystem() const
    {
        SystemHolder definition;
        EXPECT_EQ(Cs::GetCoordinateSystem(definition.put(), nullptr, database()), Qeapp::eOk);
        return describe(definition.get());
    }
};

} // namespace Tests
