#include "orvelcs/cli/output_file.h"

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "orvelcs/cli/failure.h"
#include "platform/host/error_status.h"

namespace Orvelcs {
namespace {

Failure writeFailure(const std::string& file, const Embedded::Error& error)
{
    const ResultCode code{Qeapp::eFileWriteFailed, "eFileWriteFailed"};
    return Failure(file, code.text() + ": " + error.message, ExitStatus::failed, code);
}

/// Returns false where something has the name already.
Embedded::Expected<bool> writeNewFile(const std::filesystem::path& path, std::string_view bytes)
{
    Embedded::Expected<Embedded::StagedFile> staged = Embedded::StagedFile::create(path);
    if (!staged)
        return Embedded::failure(std::move(staged).error());
    return staged->write(bytes).and_then([&] { return staged->publish(); });
}

} // namespace

void writeOutputFile(const std::string& file, std::string_view bytes, OverwritingFiles overwriting)
{
    const std::filesystem::path path = Embedded::pathFromUtf8(file);
    const auto kind = Embedded::fileKind(path);
    const bool isNoFile = kind && *kind != Embedded::FileKind::regular; // which replacing refuses with its reason
    if (overwriting == OverwritingFiles::allowed || isNoFile) {
        if (const auto replaced = Embedded::replaceFile(path, bytes); !replaced)
            throw writeFailure(file, replaced.error());
        return;
    }
    const Embedded::Expected<bool> isNew = writeNewFile(path, bytes);
    if (!isNew)
        throw writeFailure(file, isNew.error());
    if (!*isNew)
        throw Failure(file, kExists);
}

} // namespace Orvelcs
