#include "orvelcs/drawing/user_stores_lock.h"

#include <array>
#include <system_error>

#include "embedded/base/path.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/wait.h"
#include "orvelcs/drawing/settings_file.h"
#include "platform/win32.h"

namespace Orvelcs {
namespace {

constexpr const char* kLockName = "orvelcs.lock";

/// The module finds no folder where the user's local application data have none.
std::filesystem::path findSettingsFile()
{
    if (std::filesystem::path file = settingsFile(); !file.empty())
        return file;
    std::array<wchar_t, 260> made{}; // as long as the system's own folder paths are
    static_cast<void>(SHGetSpecialFolderPathW(nullptr, made.data(), CSIDL_LOCAL_APPDATA, TRUE)); // asked again next
    std::filesystem::path file = settingsFile();
    if (file.empty())
        throw Failure(settingsFileName(), "there is no folder for it; name one with --user-dir");
    return file;
}

std::filesystem::path createSettingsFolder()
{
    const std::filesystem::path folder = settingsFolder(findSettingsFile());
    std::error_code error;
    if (!folder.empty())
        std::filesystem::create_directories(Embedded::systemPath(folder), error);
    if (error)
        throw Failure(Embedded::displayName(folder), "cannot be made: " + error.message());
    return folder;
}

} // namespace

std::unique_ptr<LockFile> lockUserStores(const Output& output)
{
    const std::filesystem::path file = createSettingsFolder() / kLockName;
    auto lock = std::make_unique<LockFile>(file);
    Embedded::LockWait wait = waitFor("the user's configuration", output);
    for (int attempt = 0; !lock->tryLock(); ++attempt) {
        if (!wait.pause(attempt))
            throw Failure(Embedded::displayName(file), lockedMessage());
    }
    output.hideProgress();
    return lock;
}

} // namespace Orvelcs
