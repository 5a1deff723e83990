#include "support/local_application_data.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace Tests {
namespace {

constexpr const wchar_t* kFolders = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

} // namespace

void useLocalApplicationData(const std::filesystem::path& folder)
{
    const std::wstring text = folder.wstring();
    const LSTATUS status = RegSetKeyValueW(HKEY_CURRENT_USER, kFolders, L"Local AppData", REG_EXPAND_SZ, text.c_str(),
                                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("the folder cannot be chosen: " + std::to_string(status));
}

} // namespace Tests
