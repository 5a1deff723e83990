#include "embedded/foundation/staged_file.h"

#include <system_error>

#include "embedded/foundation/system_path.h"
#include "embedded/foundation/win32/temporary_file.h"

namespace Embedded {
namespace {

template <class Step>
auto withSystemError(Step step)
{
    try {
        return step();
    } catch (const WriteFailure& failure) {
        throw std::system_error(static_cast<int>(failure.error), std::system_category());
    }
}

} // namespace

StagedFile::StagedFile(const std::filesystem::path& target)
{
    const std::filesystem::path folder = systemPath(target).parent_path();
    file_ = withSystemError([&] { return std::make_unique<TemporaryFile>(folder); });
    file_->close();
}

StagedFile::~StagedFile() = default;

const std::filesystem::path& StagedFile::name() const
{
    return file_->name();
}

bool StagedFile::publishAs(const std::filesystem::path& target)
{
    return withSystemError([&] { return file_->renameToNew(systemPath(target)); });
}

void StagedFile::replace(const std::filesystem::path& target)
{
    withSystemError([&] { file_->renameTo(systemPath(target)); });
}

} // namespace Embedded
