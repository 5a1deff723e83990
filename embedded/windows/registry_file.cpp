#include "embedded/windows/registry_file.h"

#include <utility>

#include "embedded/base/path.h"
#include "embedded/windows/registry_call.h"
#include "embedded/windows/registry_transaction.h"
#include "embedded/windows/user_folder.h"

namespace Embedded {
namespace {

std::filesystem::path& chosenFile()
{
    static std::filesystem::path file;
    return file;
}

} // namespace

void useRegistryFile(const std::filesystem::path& file)
{
    disconnectRegistry();
    chosenFile() = file;
}

std::filesystem::path registryFile()
{
    if (!chosenFile().empty())
        return chosenFile();
    const auto folder = userFolder("XDG_CONFIG_HOME", ".config");
    return folder ? *folder / "orvel" / "registry.db" : std::filesystem::path();
}

Expected<void> checkRegistryFile()
{
    disconnectRegistry();
    return catchRegistryError([] { const RegistryTransaction check(RegistryTransaction::Intent::read); })
        .map_error([](Error error) {
            error.place = displayName(registryFile());
            return error;
        });
}

void setRegistryWait(std::chrono::milliseconds longest, std::function<void(std::chrono::milliseconds waited)> onPause)
{
    registryWait().longest = longest;
    registryWait().onPause = std::move(onPause);
}

} // namespace Embedded
