#include "fuzz/session.h"

#include <array>
#include <exception>
#include <memory>
#include <utility>

#include "embedded/host/application/application.h"
#include "frame/application.h"
#include "fuzz/oracle.h"
#include "fuzz/sample_definitions.h"
#include "storage/library_holder.h"
#include "support/drawing.h"

namespace Fuzz {

Session::Session(Input input)
    : source_(input), document_(Embedded::openDocument(std::make_unique<QeDbDatabase>(nextVersion())))
{
    require(Orvel::moduleApplication().load() == Qeapp::eOk, "the module can be loaded");
}

Session::~Session()
{
    releaseNamedObjects();
    while (!snapshots_.empty())
        abortTransaction();
    if (isRegistered_)
        removeReactor();
    require(Orvel::moduleApplication().unload() == Qeapp::eOk, "the module can be unloaded");
    require(Embedded::closeDocument(document_) == Qeapp::eOk, "the document is not locked");
}

const std::vector<Session::Step>& Session::steps()
{
    static const std::vector<Step> all{
        {&Session::startTransaction, true},
        {&Session::commitTransaction, true},
        {&Session::abortTransaction, true},
        {&Session::holdNamedObjects, true},
        {&Session::releaseNamedObjects, true},
        {&Session::putForeignXrecord},
        {&Session::putDefinitionChain},
        {&Session::putLegacyCode},
        {&Session::putGeoDataText},
        {&Session::save},
        {&Session::planFault},
        {&Session::assignCode},
        {&Session::assignDefinition},
        {&Session::clear},
        {&Session::readDefinitions},
        {&Session::readDefinition},
        {&Session::readCode},
        {&Session::applyStorageVersion},
        {&Session::serialize},
        {&Session::addReactor},
        {&Session::removeReactor},
        {&Session::setVeto},
        {&Session::setConfiguration},
        {&Session::clearConfiguration},
        {&Session::findConfigured},
    };
    return all;
}

void Session::step()
{
    const Step& step = steps()[source_.below(steps().size())];
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    (this->*step.make)();
    const std::string left = Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now());
    require(step.holds || left.empty(), "a step holds nothing after it; it holds " + left);
}

std::wstring Session::nextCode()
{
    static constexpr std::array kOthers{L"", L"EPSG:1", L"epsg:25832", L"nonsense"};
    const std::vector<SampleDefinition>& samples = sampleDefinitions();
    const std::size_t choice = source_.below(samples.size() + kOthers.size());
    return choice < samples.size() ? samples[choice].code : kOthers.at(choice - samples.size());
}

QeDb::QeDbDwgVersion Session::nextVersion()
{
    constexpr int kVersions = QeDb::kCurrentDwg - QeDb::kOldestDwg + 1;
    return static_cast<QeDb::QeDbDwgVersion>(QeDb::kOldestDwg + static_cast<int>(source_.below(kVersions)));
}

Qeapp::ErrorStatus Session::callWithFault(const std::function<Qeapp::ErrorStatus()>& call)
{
    const bool isPlanned = fault_.has_value();
    if (isPlanned)
        Embedded::FaultInjection::arm(*fault_);
    fault_.reset();
    Qeapp::ErrorStatus result = Qeapp::eOutOfMemory;
    try {
        result = call();
    } catch (const std::exception&) { // an exception of the library or of an allocation passes through the module
        result = Qeapp::eOutOfMemory;
    }
    Embedded::FaultInjection::disarm();
    hasCallFailed_ = isPlanned && Embedded::FaultInjection::failedCalls() > 0;
    return result;
}

std::optional<std::string> Session::contents() const
{
    if (held_ && held_->isWriteEnabled())
        return std::nullopt;
    return Tests::drawingContents(*database());
}

std::optional<std::wstring> Session::storedCode()
{
    std::optional<std::string> now = contents();
    if (!now || lastReading_.contents != now)
        lastReading_ = {std::move(now), readStoredCode()};
    return lastReading_.code;
}

std::optional<std::wstring> Session::readStoredCode() const
{
    Orvel::LibraryObject<Cs::CoordinateReferenceSystemDefinition> definition;
    if (Cs::GetCoordinateSystem(definition.put(), nullptr, database()) != Qeapp::eOk)
        return std::nullopt;
    const wchar_t* code = L"";
    require(!definition || definition->GetCode(code) == Orvel::Library::statusOk, "a definition has a code");
    return code;
}

void Session::requireUnchanged(const std::optional<std::string>& before, std::string_view promise) const
{
    require(!before || Tests::drawingContents(*database()) == *before, promise);
}

} // namespace Fuzz
