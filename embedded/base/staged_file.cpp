#include "embedded/base/staged_file.h"

#include "embedded/base/path.h"
#include "embedded/base/staged_file_imp.h"
#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

constexpr const char* kFailed = "cannot be written";

Expected<void> writeAndReplace(const std::filesystem::path& target, std::string_view bytes)
{
    return StagedFile::create(target).and_then(
        [&](StagedFile staged) { return staged.write(bytes).and_then([&] { return staged.replaceTarget(); }); });
}

} // namespace

StagedFile::StagedFile(std::unique_ptr<StagedFileImp> imp) : imp_(std::move(imp))
{
}

StagedFile::StagedFile(StagedFile&& other) noexcept = default;
StagedFile& StagedFile::operator=(StagedFile&& other) noexcept = default;
StagedFile::~StagedFile() = default;

Expected<StagedFile> StagedFile::create(const std::filesystem::path& target)
{
    return catchSystemError(kFailed, displayName(target), [&] { return StagedFile(StagedFileImp::create(target)); });
}

const std::filesystem::path& StagedFile::temporaryName() const
{
    return imp_->temporaryName();
}

Expected<void> StagedFile::write(std::string_view bytes)
{
    return catchSystemError(kFailed, displayName(imp_->target()), [&] { imp_->write(bytes); });
}

Expected<bool> StagedFile::publish()
{
    return catchSystemError(kFailed, displayName(imp_->target()), [&] { return imp_->publish(); });
}

Expected<void> StagedFile::replaceTarget()
{
    return catchSystemError(kFailed, displayName(imp_->target()), [&] { imp_->replaceTarget(); });
}

Expected<std::filesystem::path> replaceableFile(const std::filesystem::path& file)
{
    return catchSystemError(kFailed, displayName(file), [&] {
        std::filesystem::path target = followLinks(file);
        requireReplaceable(target);
        return target;
    });
}

Expected<void> replaceFile(const std::filesystem::path& file, std::string_view bytes)
{
    return replaceableFile(file)
        .and_then([&](const std::filesystem::path& target) { return writeAndReplace(target, bytes); })
        .map_error([&](Error error) {
            error.place = displayName(file); // not the file that a link leads to
            return error;
        });
}

} // namespace Embedded
