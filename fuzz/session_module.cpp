// The clients' steps of a session.
#include <array>

#include "coordsys/orvel_transformation_config.h"
#include "fuzz/definition_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/sample_definitions.h"
#include "fuzz/session.h"
#include "storage/packed_definition.h"

namespace Fuzz {
namespace {

using Orvel::HostString;
using SystemHolder = Orvel::LibraryObject<Cs::CoordinateReferenceSystemDefinition>;
using ArrayHolder = Orvel::LibraryObject<Cs::DefinitionBaseArray>;

constexpr auto kDrawing = Cs::CsTransformationConfigTargetType::Drawing;

/// Null if the sample is not a system.
SystemHolder unpackSystem(const SampleDefinition& sample)
{
    DefinitionHolder definition = Orvel::DecodeDefinitionBytes(sample.packed.data(), sample.packed.size());
    auto* const system = dynamic_cast<Cs::CoordinateReferenceSystemDefinition*>(definition.get());
    if (system != nullptr)
        static_cast<void>(definition.release()); // the other holder owns it now
    return SystemHolder(system);
}

/// Nothing if there is no configuration.
std::optional<std::wstring> configuration()
{
    wchar_t* text = nullptr;
    if (!Cs::GetCsTransformationConfig(text, kDrawing))
        return std::nullopt;
    const HostString holder(text);
    return text;
}

std::wstring makeItem(const std::wstring& source, const std::wstring& target, int type)
{
    return L"<Item><Version>1.0</Version><SourceCs>" + source + L"</SourceCs><TargetCs>" + target +
           L"</TargetCs><Name>ED50 to WGS 84 (1)</Name><Type>" + std::to_wstring(type) + L"</Type><Note></Note></Item>";
}

} // namespace

void Session::assignCode()
{
    const std::wstring code = nextCode();
    const std::optional<std::string> before = contents();
    QeDbDatabase* const argument = nextDatabaseArgument();
    const Qeapp::ErrorStatus result = callWithFault([&] { return Cs::SetCoordinateSystem(code.c_str(), argument); });
    if (result == Qeapp::eVetoed)
        return requireUnchanged(before, "an assignment that was vetoed changes nothing");
    if (result == Qeapp::eOk && !held_ && !hasCallFailed_)
        require(storedCode().value_or(L"").empty() == code.empty(), "what was assigned can be read");
}

void Session::assignDefinition()
{
    const std::vector<SampleDefinition>& samples = sampleDefinitions();
    const SampleDefinition& sample = samples[source_.below(samples.size())];
    const SystemHolder system = unpackSystem(sample);
    const std::optional<std::string> before = contents();
    QeDbDatabase* const argument = nextDatabaseArgument();
    const Qeapp::ErrorStatus result = callWithFault([&] { return Cs::SetCoordinateSystem(system.get(), argument); });
    if (result == Qeapp::eVetoed)
        return requireUnchanged(before, "an assignment that was vetoed changes nothing");
    if (result == Qeapp::eOk && !held_ && !hasCallFailed_)
        require(storedCode() == (system ? sample.code : L""), "the system that was assigned is read");
}

void Session::clear()
{
    const std::optional<std::string> before = contents();
    QeDbDatabase* const argument = nextDatabaseArgument();
    const Qeapp::ErrorStatus result = callWithFault([&] { return Cs::ClearCoordinateSystem(argument); });
    if (result != Qeapp::eOk)
        return requireUnchanged(before, "a removal that failed changes nothing");
    require(held_ || hasCallFailed_ || storedCode() == L"", "a drawing that was cleared has no coordinate system");
}

void Session::readDefinitions()
{
    const std::optional<std::string> before = contents();
    ArrayHolder definitions;
    const Qeapp::ErrorStatus result =
        callWithFault([&] { return Cs::GetCoordinateSystem(definitions.put(), nextDatabaseArgument()); });
    require(result != Qeapp::eOk || definitions, "an array is handed out on success");
    requireUnchanged(before, "reading changes nothing");
}

void Session::readDefinition()
{
    const std::optional<std::string> before = contents();
    SystemHolder definition;
    bool isKnown = true;
    const Qeapp::ErrorStatus result =
        callWithFault([&] { return Cs::GetCoordinateSystem(definition.put(), &isKnown, nextDatabaseArgument()); });
    require(result == Qeapp::eOk || !isKnown, "what cannot be read is not known");
    requireUnchanged(before, "reading changes nothing");
}

void Session::readCode()
{
    const std::optional<std::string> before = contents();
    HostString code;
    const Qeapp::ErrorStatus result =
        callWithFault([&] { return Cs::GetCoordinateSystem(code.put(), nextDatabaseArgument()); });
    require(result == Qeapp::eOk || !code, "a code is handed out on success alone");
    requireUnchanged(before, "reading changes nothing");
}

void Session::applyStorageVersion()
{
    const QeDb::QeDbDwgVersion version = nextVersion();
    const std::optional<std::wstring> code = held_ ? std::nullopt : storedCode();
    QeDbDatabase* const argument = nextDatabaseArgument();
    const Qeapp::ErrorStatus result =
        callWithFault([&] { return Cs::ApplyCoordinateSystemStorageVersion(argument, version); });
    require(result != Qeapp::eOk || hasCallFailed_ || !code || storedCode() == code,
            "another storage version keeps the coordinate system");
}

void Session::serialize()
{
    const QeDb::QeDbDwgVersion version = nextVersion();
    const std::vector<SampleDefinition>& samples = sampleDefinitions();
    const SystemHolder system = unpackSystem(samples[source_.below(samples.size())]);
    Orvel::Holder<Orvel::HostBufferPolicy<unsigned char>> bytes;
    int length = 0;
    const Qeapp::ErrorStatus written =
        callWithFault([&] { return Cs::SerializeCoordinateSystem(system.get(), bytes.put(), length, version); });
    if (written != Qeapp::eOk)
        return require(!bytes, "a block is handed out on success alone");
    ArrayHolder definitions;
    require(Cs::DeserializeCoordinateSystem(definitions.put(), bytes.get(), length) == Qeapp::eOk,
            "a block that was written can be read");
    require(definitions->GetCount() == 1, "a block holds the system");
}

void Session::addReactor()
{
    const Qeapp::ErrorStatus result = Cs::AddCoordinateSystemReactor(&reactor_);
    require(result == (isRegistered_ ? Qeapp::eInvalidInput : Qeapp::eOk), "a reactor is registered once");
    isRegistered_ = true;
}

void Session::removeReactor()
{
    const Qeapp::ErrorStatus result = Cs::RemoveCoordinateSystemReactor(&reactor_);
    require(result == (isRegistered_ ? Qeapp::eOk : Qeapp::eInvalidInput), "a reactor that is registered is removed");
    isRegistered_ = false;
}

void Session::setVeto()
{
    reactor_.forbid(source_.below(2) == 1);
}

void Session::setConfiguration()
{
    const std::wstring source = nextCode();
    const std::wstring target = nextCode();
    const std::wstring text = makeItem(source, target, static_cast<int>(source_.below(4)));
    const std::optional<std::wstring> before = configuration();
    const Qeapp::ErrorStatus result = callWithFault(
        [&] { return Cs::SetCsTransformationConfig(text.c_str(), kDrawing) ? Qeapp::eOk : Qeapp::eInvalidInput; });
    require(configuration() == (result == Qeapp::eOk ? text : before),
            "the configuration is the new one, or the former");
}

void Session::clearConfiguration()
{
    const std::optional<std::wstring> before = configuration();
    const Qeapp::ErrorStatus result =
        callWithFault([&] { return Cs::ClearCsTransformationConfig(kDrawing) ? Qeapp::eOk : Qeapp::eInvalidInput; });
    require(configuration() == (result == Qeapp::eOk ? L"" : before), "the configuration is empty, or the former");
}

void Session::findConfigured()
{
    const std::wstring source = nextCode();
    const std::wstring target = nextCode();
    const std::optional<std::string> before = contents();
    Orvel::LibraryObject<Cs::TransformationInfo> info;
    static_cast<void>(callWithFault([&] {
        info.reset(Cs::GetCsConfiguredTransformationInfo(source.c_str(), target.c_str()));
        return Qeapp::eOk;
    })); // an exception counts as not found
    requireUnchanged(before, "a look-up changes nothing");
}

} // namespace Fuzz
