// The hooks of port_check for the embedded platform.
//
// The environment variable ORVEL_WRONG_PORT makes the port wrong on purpose, so that tests see what port_check says of
// it: `save calls no reactor`, `save undoes nothing`, `no drawing`; or the name of a platform
// call that always fails, `*` for every call; with `=0` after the name it answers that number and does nothing.
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/application/application.h"
#include "embedded/host/application/decomposition_run.h"
#include "examples/port/port_check.h"
#include "platform/spatial_reference.h"

namespace {

namespace Library = Zentara::Infrastructure::SpatialReference;

std::map<QeDbDatabase*, QeApDocument*> documents;
void* loadedModule = nullptr;
std::size_t armedCall = 0;

constexpr const wchar_t* kUserDefinedCode = L"MINE:1";

/// Empty where the library cannot make it.
std::wstring userDefinedText()
{
    constexpr std::size_t kTextBytes = 65536;
    Library::CoordinateReferenceSystemDefinition* system = nullptr;
    const Library::Status made = Library::CoordinateReferenceSystemDefinition::CreateFromText(
        L"+proj=longlat +a=6378000 +rf=298 +no_defs", kUserDefinedCode, system);
    const std::unique_ptr<Library::CoordinateReferenceSystemDefinition, void (*)(const Library::Object*)> owner(
        system, Library::Object::Destroy);
    std::vector<unsigned char> bytes(kTextBytes);
    if (made != Library::statusOk ||
        Library::DefinitionStream::Serialize_s(system, bytes.data(), bytes.size(), Library::formatText, -1, true) !=
            Library::statusOk)
        return {};
    const std::wstring text = Embedded::wideFromUtf16le({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return text.substr(0, text.find(L'\0'));
}

const std::string& wrongness()
{
    static const char* const value = std::getenv("ORVEL_WRONG_PORT");
    static const std::string wrong = value != nullptr ? value : "";
    return wrong;
}

bool isWrong(const char* how)
{
    return wrongness() == how;
}

/// The calls that always fail; none for a right port and where something else is wrong.
std::optional<Embedded::FaultPlan> wrongCalls()
{
    const std::string& wrong = wrongness();
    if (wrong.empty() || wrong.find(' ') != std::string::npos)
        return std::nullopt;
    const std::size_t equals = wrong.find('=');
    Embedded::FaultPlan plan{.call = wrong.substr(0, equals), .fromThenOn = true};
    if (plan.call == "*")
        plan.call.clear();
    if (equals != std::string::npos)
        plan.code = std::stoi(wrong.substr(equals + 1));
    return plan;
}

/// Within the hooks themselves every call succeeds.
class RightCalls {
public:
    RightCalls() { Embedded::FaultInjection::disarm(); }
    RightCalls(const RightCalls&) = delete;
    RightCalls& operator=(const RightCalls&) = delete;
    ~RightCalls()
    {
        if (const std::optional<Embedded::FaultPlan> plan = wrongCalls())
            Embedded::FaultInjection::arm(*plan);
    }
};

} // namespace

namespace PortCheck {

QeDbDatabase* newDrawing()
{
    if (isWrong("no drawing"))
        return nullptr;
    const RightCalls right;
    auto database = std::make_unique<QeDbDatabase>();
    QeDbDatabase* const drawing = database.get();
    documents[drawing] = Embedded::openDocument(std::move(database));
    return drawing;
}

void closeDrawing(QeDbDatabase* drawing)
{
    const RightCalls right;
    static_cast<void>(Embedded::closeDocument(documents[drawing])); // fails when a wrong port leaves it locked
    documents.erase(drawing);
}

bool prepareForSave(QeDbDatabase* drawing, QeDb::QeDbDwgVersion version)
{
    if (isWrong("save calls no reactor"))
        return true;
    if (isWrong("save undoes nothing")) {
        const Qeapp::ErrorStatus result =
            Zentara::Gis::Orvel::CoordinateSystem::ApplyCoordinateSystemStorageVersion(drawing, version);
        return Embedded::DecompositionRun(*drawing, version).result().has_value() && result == Qeapp::eOk;
    }
    Embedded::DecompositionRun run(*drawing, version);
    if (!run.result())
        return false;
    run.complete();
    return true;
}

Systems systems()
{
    static const std::wstring text = userDefinedText();
    return {.projected = L"EPSG:25832",
            .geographic = L"EPSG:4326",
            .userDefinedCode = kUserDefinedCode,
            .userDefinedText = text.c_str(),
            .reversibleTransformation = L"EPSG:1763",
            .irreversibleTransformation = L"EPSG:3859",
            .reversiblePath = L"EPSG:4837"};
}

bool loadModule()
{
    if (loadedModule == nullptr)
        loadedModule = Embedded::loadModule(ORVEL_MODULE_FILE).value_or(nullptr);
    return loadedModule != nullptr;
}

bool unloadModule()
{
    if (Embedded::unloadModule(loadedModule) != Qeapp::eOk)
        return false;
    loadedModule = nullptr;
    return true;
}

bool failCall(std::size_t number)
{
    if (!wrongness().empty())
        return false;
    if (number == 0)
        Embedded::FaultInjection::disarm();
    else
        Embedded::FaultInjection::arm({.call = {}, .occurrence = number});
    armedCall = number;
    return true;
}

Calls callsMade()
{
    const std::vector<std::string>& seen = Embedded::FaultInjection::seen();
    const bool failed = Embedded::FaultInjection::failedCalls() != 0;
    return {.made = seen.size(), .failed = failed ? seen[armedCall - 1] : std::string()};
}

std::string heldNow()
{
    return Embedded::ResourceCounters::difference({}, Embedded::ResourceCounters::now());
}

} // namespace PortCheck
