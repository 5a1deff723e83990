#include "orvelcs/cli/output_file.h"

#include <utility>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "orvelcs/cli/failure.h"
#include "platform/host/error_status.h"

namespace Orvelcs {
namespace {

template <class Value>
Value requireWritten(const std::string& file, Embedded::Expected<Value> result)
{
    const ResultCode code{Qeapp::eFileWriteFailed, "eFileWriteFailed"};
    if (!result)
        throw Failure(file, code.text() + ": " + result.error().message, ExitStatus::failed, code);
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

/// Something that is no regular file is replaced too, which is refused with the reason.
bool isReplaced(const std::string& file, OverwritingFiles overwriting)
{
    const auto kind = Embedded::fileKind(Embedded::pathFromUtf8(file));
    if (overwriting == OverwritingFiles::allowed || (kind && *kind != Embedded::FileKind::regular))
        return true;
    if (kind)
        throw Failure(file, kExists);
    return false;
}

Embedded::StagedFile makeStagedFile(const std::string& file, bool isReplaced)
{
    std::filesystem::path target = Embedded::pathFromUtf8(file);
    if (isReplaced)
        target = requireWritten(file, Embedded::replaceableFile(target));
    return requireWritten(file, Embedded::StagedFile::create(target));
}

} // namespace

OutputFile::OutputFile(std::string name, OverwritingFiles overwriting)
    : name_(std::move(name)), replaces_(isReplaced(name_, overwriting)), staged_(makeStagedFile(name_, replaces_))
{
}

void OutputFile::write(std::string_view bytes)
{
    constexpr std::size_t kBufferInBytes = std::size_t{64} * 1024;
    buffer_ += bytes;
    if (buffer_.size() >= kBufferInBytes)
        writeBuffer();
}

void OutputFile::writeBuffer()
{
    requireWritten(name_, staged_.write(buffer_));
    buffer_.clear();
}

void OutputFile::complete()
{
    writeBuffer();
    if (replaces_)
        requireWritten(name_, staged_.replaceTarget());
    else if (!requireWritten(name_, staged_.publish()))
        throw Failure(name_, kExists);
}

void writeOutputFile(const std::string& file, std::string_view bytes, OverwritingFiles overwriting)
{
    OutputFile output(file, overwriting);
    output.write(bytes);
    output.complete();
}

} // namespace Orvelcs
