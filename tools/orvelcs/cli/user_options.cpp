#include "orvelcs/cli/user_options.h"

#include "embedded/base/path.h"
#include "embedded/windows/registry_file.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kLongestFolder = 259; // in characters; the module takes no notice of a longer one

} // namespace

void addUserOptions(CLI::App& program, UserOptions& options)
{
    options.folderOption =
        addArgument(program, "--user-dir DIR", options.folder, "the folder of the user's settings file");
    options.registryOption =
        addArgument(program, "--registry FILE", options.registry, "the file that stands for the registry of the user");
}

void applyUserOptions(const UserOptions& options)
{
    if (options.folderOption->count() > 0) {
        if (wideArgument("--user-dir", options.folder).size() > kLongestFolder)
            throw wrongUsage("--user-dir", "is longer than 259 characters");
        if (!setVariable(kUserFolderVariable, options.folder))
            throw Failure("--user-dir", "cannot be set");
    }
    if (options.registryOption->count() > 0) {
        if (options.registry.empty())
            throw wrongUsage("--registry", "is empty");
        Embedded::useRegistryFile(Embedded::pathFromUtf8(options.registry));
    }
}

} // namespace Orvelcs
