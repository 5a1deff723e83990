#include "embedded/windows/registry_file.h"

#include <optional>

#include "embedded/windows/current_registry.h"
#include "embedded/windows/registry_failure.h"
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
    chosenFile() = file;
}

std::filesystem::path registryFile()
{
    if (!chosenFile().empty())
        return chosenFile();
    const auto folder = userFolder("XDG_CONFIG_HOME", ".config");
    return folder ? *folder / "orvel" / "registry.jsonl" : std::filesystem::path();
}

std::string checkRegistryFile()
{
    try {
        static_cast<void>(currentRegistry().current()); // only asked whether it can be read
        return {};
    } catch (const RegistryFailure& failure) {
        return failure.message;
    }
}

RegistryJournal& currentRegistry()
{
    static std::optional<RegistryJournal> journal;
    std::filesystem::path file = registryFile();
    if (!journal || journal->file() != file)
        journal.emplace(std::move(file));
    return *journal;
}

} // namespace Embedded
