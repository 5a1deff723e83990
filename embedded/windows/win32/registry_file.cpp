#include "embedded/windows/registry_file.h"

#include <windows.h>

#include <utility>

#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

constexpr const wchar_t* kRegistries = L"Software\\OrvelCoordsysCore\\Registries\\";

struct Choice {
    std::filesystem::path file;
    LSTATUS outcome = ERROR_SUCCESS;
};

Choice& currentChoice()
{
    static auto* const choice = new Choice; // for as long as anything may ask
    return *choice;
}

/// The process's HKEY_CURRENT_USER is this key from now on, which the system holds open itself.
LSTATUS replaceCurrentUser(const std::wstring& name)
{
    HKEY key = nullptr;
    LSTATUS outcome = RegCreateKeyExW(HKEY_CURRENT_USER, (kRegistries + name).c_str(), 0, nullptr,
                                      REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    if (outcome != ERROR_SUCCESS)
        return outcome;
    outcome = RegOverridePredefKey(HKEY_CURRENT_USER, key);
    static_cast<void>(RegCloseKey(key)); // see above
    return outcome;
}

} // namespace

void useRegistryFile(const std::filesystem::path& file)
{
    Choice choice{file, RegOverridePredefKey(HKEY_CURRENT_USER, nullptr)};
    if (choice.outcome == ERROR_SUCCESS && !file.empty())
        choice.outcome = replaceCurrentUser(file.lexically_normal().make_preferred().wstring());
    currentChoice() = std::move(choice);
}

std::filesystem::path registryFile()
{
    return currentChoice().file;
}

std::string checkRegistryFile()
{
    const LSTATUS outcome = currentChoice().outcome;
    return outcome == ERROR_SUCCESS ? std::string() : systemMessage(std::error_code(outcome, std::system_category()));
}

void setRegistryWait(std::chrono::milliseconds /*most*/, std::function<void(std::chrono::milliseconds)> /*waiting*/)
{
}

} // namespace Embedded
