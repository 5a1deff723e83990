#include "embedded/windows/registry_file.h"

#include <windows.h>

#include <utility>

#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

constexpr const wchar_t* kRegistries = L"Software\\OrvelCoordsysCore\\Registries\\";

struct Choice {
    std::filesystem::path file;
    LSTATUS status = ERROR_SUCCESS; // of replacing HKEY_CURRENT_USER
};

Choice& currentChoice()
{
    static auto* const choice = new Choice; // never destroyed: a destructor may still use it
    return *choice;
}

/// Replaces HKEY_CURRENT_USER of this process by the key.
LSTATUS replaceCurrentUser(const std::wstring& name)
{
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, (kRegistries + name).c_str(), 0, nullptr,
                                     REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    status = RegOverridePredefKey(HKEY_CURRENT_USER, key);
    static_cast<void>(RegCloseKey(key)); // the system holds the key open itself
    return status;
}

} // namespace

void useRegistryFile(const std::filesystem::path& file)
{
    Choice choice{file, RegOverridePredefKey(HKEY_CURRENT_USER, nullptr)};
    if (choice.status == ERROR_SUCCESS && !file.empty())
        choice.status = replaceCurrentUser(file.lexically_normal().make_preferred().wstring());
    currentChoice() = std::move(choice);
}

std::filesystem::path registryFile()
{
    return currentChoice().file;
}

Expected<void> checkRegistryFile()
{
    const LSTATUS status = currentChoice().status;
    if (status == ERROR_SUCCESS)
        return {};
    return failure(status, systemMessage(std::error_code(status, std::system_category())));
}

void setRegistryWait(std::chrono::milliseconds /*longest*/, std::function<void(std::chrono::milliseconds)> /*onPause*/)
{
}

} // namespace Embedded
