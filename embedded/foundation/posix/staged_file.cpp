#include "embedded/foundation/staged_file.h"

#include <system_error>

#include "embedded/foundation/posix/temporary_file.h"

namespace Embedded {
namespace {

template <class Step>
auto withSystemError(Step step)
{
    try {
        return step();
    } catch (const WriteFailure& failure) {
        throw std::system_error(failure.error, std::generic_category());
    }
}

std::filesystem::path folderOf(const std::filesystem::path& file)
{
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

} // namespace

StagedFile::StagedFile(const std::filesystem::path& target)
{
    TemporaryFile::removeAbandoned(folderOf(target));
    file_ = withSystemError([&] { return std::make_unique<TemporaryFile>(folderOf(target), mode_t{0666}); });
}

StagedFile::~StagedFile() = default;

const std::filesystem::path& StagedFile::name() const
{
    return file_->name();
}

bool StagedFile::publishAs(const std::filesystem::path& target)
{
    return withSystemError([&] {
        file_->flush();
        const bool isPublished = file_->renameToNew(target);
        flushFolder(folderOf(target));
        return isPublished;
    });
}

void StagedFile::replace(const std::filesystem::path& target)
{
    withSystemError([&] {
        file_->flush();
        file_->renameTo(target);
        flushFolder(folderOf(target));
    });
}

} // namespace Embedded
