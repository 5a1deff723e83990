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

std::string checkRegistryFile()
{
    disconnectRegistry();
    const auto failure = registryFailureOf([] { const RegistryTransaction check(RegistryTransaction::Intent::read); });
    return failure ? displayName(registryFile()) + ": " + failure->what() : std::string();
}

void setRegistryWait(std::chrono::milliseconds most, std::function<void(std::chrono::milliseconds waited)> waiting)
{
    registryWait().most = most;
    registryWait().waiting = std::move(waiting);
}

} // namespace Embedded
