// The part of StagedFile that differs from system to system. Everything here throws std::system_error, which the
// functions of staged_file.h turn into an Error.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

namespace Embedded {

class StagedFileImp {
public:
    static std::unique_ptr<StagedFileImp> create(const std::filesystem::path& target);
    StagedFileImp(const StagedFileImp&) = delete;
    StagedFileImp& operator=(const StagedFileImp&) = delete;
    virtual ~StagedFileImp() = default;

    const std::filesystem::path& target() const { return target_; }
    const std::filesystem::path& temporaryName() const { return name_; }
    virtual void write(std::string_view bytes) = 0;
    virtual bool publish() = 0;
    virtual void replaceTarget() = 0;

protected:
    explicit StagedFileImp(std::filesystem::path target) : target_(std::move(target)) {}

    std::filesystem::path target_;
    std::filesystem::path name_; // empty once the file has the target's name
};

/// The file that the links lead to.
std::filesystem::path followLinks(std::filesystem::path file);
/// Throws unless the file can be written to or does not exist.
void requireReplaceable(const std::filesystem::path& file);

} // namespace Embedded
