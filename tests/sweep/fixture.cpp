#include "sweep/fixture.h"

#include <filesystem>
#include <stdexcept>

#include "support/drawing.h"
#include "support/file_text.h"
#include "sweep/drawing_contents.h"
#include "transformation/registry_settings.h"
#include "transformation/registry_strings.h"

namespace Tests {
namespace {

using Names = std::vector<std::wstring>;

void require(bool done, const char* what)
{
    if (!done)
        throw std::runtime_error(std::string("cannot set up a fixture: ") + what);
}

std::optional<std::string> readIfPresent(const std::filesystem::path& file)
{
    return std::filesystem::exists(file) ? std::optional(readFile(file)) : std::nullopt;
}

void replaceFile(const std::filesystem::path& file, const std::optional<std::string>& bytes)
{
    std::filesystem::remove(file);
    if (bytes)
        writeFile(file, *bytes);
}

/// The values in the registry's order.
std::vector<std::wstring> readRegistryValues()
{
    const std::wstring key = Orvel::registrySettingsKey();
    Names names;
    std::vector<std::wstring> values;
    if (!Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, key, names))
        return values;
    for (const std::wstring& name : names) {
        std::wstring value;
        require(Orvel::RegistryQueryString(HKEY_CURRENT_USER, key, name, value), "registry value");
        values.push_back(value);
    }
    return values;
}

} // namespace

std::string describeDifference(const StoredState& left, const StoredState& right)
{
    std::string difference;
    if (left.drawing != right.drawing)
        difference += left.drawing + "\ndiffers from\n" + right.drawing;
    if (left.settingsFile != right.settingsFile)
        difference += "settings file: " + left.settingsFile.value_or("none") + "\ndiffers from\n" +
                      right.settingsFile.value_or("none");
    if (left.registryValues != right.registryValues)
        difference += "registry: " + std::to_string(left.registryValues.size()) + " values differ from " +
                      std::to_string(right.registryValues.size());
    if (left.savedDrawing != right.savedDrawing)
        difference += "saved drawing";
    return difference;
}

bool haveSameContents(const StoredState& left, const StoredState& right)
{
    return objectsByPath(left.drawing) == objectsByPath(right.drawing) && left.settingsFile == right.settingsFile &&
           left.registryValues == right.registryValues &&
           left.savedDrawing.has_value() == right.savedDrawing.has_value();
}

Fixture::Fixture(const InitialState& initialState, const TemporaryFolder& folder)
    : folder_(folder.path()),
      drawingFile_(folder.path() / "drawing.qedb"),
      hasReactor_(initialState.hasReactor),
      userFolder_("VORLEN_USER_DICTIONARY_PATH", folder.path().string()),
      document_(loadFromBytes(initialState.drawing)),
      reactor_(initialState.veto)
{
    replaceFile(settingsFile(), initialState.settingsFile);
    replaceFile(drawingFile_, initialState.savedDrawing);
    if (initialState.usesRegistry) {
        std::filesystem::remove(folder_ / "registry.db");
        registry_.emplace(folder, folder_ / "registry.db");
        storeRegistryValues(initialState.registryValues);
    }
    if (initialState.isLockedElsewhere)
        otherLock_.emplace(document_.get());
    if (hasReactor_)
        require(Zentara::Gis::Orvel::CoordinateSystem::AddCoordinateSystemReactor(&reactor_) == Qeapp::eOk, "reactor");
}

Fixture::~Fixture()
{
    if (hasReactor_) {
        EXPECT_EQ(Zentara::Gis::Orvel::CoordinateSystem::RemoveCoordinateSystemReactor(&reactor_), Qeapp::eOk);
    }
}

StoredState Fixture::storedState() const
{
    return {drawingContents(*database()), readIfPresent(settingsFile()),
            registry_ ? readRegistryValues() : std::vector<std::wstring>(), readIfPresent(drawingFile_)};
}

bool Fixture::hasNoSystem() const
{
    const std::string contents = drawingContents(*database());
    const auto has = [&](const char* part) { return countOccurrences(contents, part) > 0; };
    const bool hasGeoDataText = has("  coordinate system ") && !has("  coordinate system \"\"");
    return !has("  extended data of ") && !has("  entry \"ORVEL_CSINDWG_REGAPP\"") && !hasGeoDataText;
}

void Fixture::storeRegistryValues(const std::vector<std::wstring>& values) const
{
    int number = 0;
    for (const std::wstring& value : values)
        require(Orvel::RegistrySetString(HKEY_CURRENT_USER, Orvel::registrySettingsKey(),
                                         L"Item" + std::to_wstring(++number), value),
                "registry value");
}

} // namespace Tests
