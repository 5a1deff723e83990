#include "orvelcs/drawing/staging_folder.h"

#include <system_error>

#include "embedded/base/path.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/user_options.h"

namespace Orvelcs {
namespace {

constexpr const char* kStagingName = ".orvelcs-new";

void requireDone(const std::filesystem::path& folder, const char* what, const std::error_code& error)
{
    if (error)
        throw Failure(Embedded::displayName(folder), std::string(what) + ": " + error.message());
}

/// As it is found from every working folder, and however long its name is.
std::filesystem::path stagingFolderIn(const std::filesystem::path& parent)
{
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(parent, error);
    requireDone(parent, "cannot be looked up", error);
    return Embedded::systemPath(whole / kStagingName);
}

} // namespace

StagingFolder::StagingFolder(const std::filesystem::path& parent)
    : folder_(stagingFolderIn(parent)), variable_(variable(kUserFolderVariable))
{
    std::error_code error;
    workingFolder_ = std::filesystem::current_path(error); // one that was removed cannot be gone back to
    std::filesystem::remove_all(folder_, error);
    requireDone(parent / kStagingName, "cannot be removed", error);
    if (!std::filesystem::create_directory(folder_, error) && !error)
        error = std::make_error_code(std::errc::file_exists);
    requireDone(parent / kStagingName, "cannot be made", error);
    // The file that is replaced may be one that others must not read.
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, error);
    requireDone(parent / kStagingName, "cannot be made private", error);
    std::filesystem::current_path(parent, error);
    requireDone(parent, "cannot be entered", error);
    if (!setVariable(kUserFolderVariable, kStagingName))
        throw Failure(Embedded::displayName(parent), "cannot be made the folder of the settings file");
}

StagingFolder::~StagingFolder()
{
    std::error_code error;
    static_cast<void>(setVariable(kUserFolderVariable, variable_)); // it had this value before
    if (!workingFolder_.empty())
        std::filesystem::current_path(workingFolder_, error); // nothing depends on it from here on
    std::filesystem::remove_all(folder_, error);              // what stays is removed by the next change
}

} // namespace Orvelcs
