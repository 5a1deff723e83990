#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "embedded/windows/user_folder.h"
#include "platform/win32.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPathCharacters = 260;

bool folderExists(const fs::path& folder, bool create)
{
    std::error_code error;
    if (create)
        fs::create_directories(folder, error); // the next call sees whether it succeeded
    return fs::is_directory(folder, error);
}

} // namespace

BOOL SHGetSpecialFolderPathW(HWND, wchar_t* path, int folder, BOOL create)
{
    if (path == nullptr)
        return FALSE;
    path[0] = L'\0';
    if (const auto fault = Embedded::FaultInjection::injectedFailure("SHGetSpecialFolderPathW", FALSE))
        return *fault;
    if (folder != CSIDL_LOCAL_APPDATA)
        return FALSE;
    const auto found = Embedded::userFolder("XDG_DATA_HOME", ".local/share");
    if (!found)
        return FALSE;
    const std::wstring text = Embedded::wideFromUtf8(found->string());
    if (text.size() >= kPathCharacters || !folderExists(*found, create != FALSE))
        return FALSE;
    std::copy_n(text.c_str(), text.size() + 1, path);
    return TRUE;
}
