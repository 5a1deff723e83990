#include "orvelcs/drawing/drawings.h"

#include <fmt/format.h>

#include "embedded/base/path.h"
#include "embedded/host/application/application.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/wait.h"
#include "orvelcs/drawing/swapped_arguments.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kMostBytesInMemory = std::size_t{1} << 30; // of a drawing on standard input

Embedded::Expected<std::unique_ptr<QeDbDatabase>> loadFromStandardInput()
{
    try {
        return Embedded::loadDrawingFromBytes(readWhole(kStandardStream, kMostBytesInMemory));
    } catch (const Failure& failure) {
        return Embedded::failure(Qeapp::eFileDamaged, failure.what());
    }
}

} // namespace

std::string describe(const std::string& file, const Embedded::Error& error)
{
    const std::string result = resultName(Embedded::hostStatus(error));
    if (error.status == Qeapp::eFileLocked)
        return fmt::format("{}: {}", result, lockedMessage());
    std::string message = error.text();
    if (const std::string name = Embedded::displayName(Embedded::pathFromUtf8(file)); Embedded::isInFile(name, error))
        message.erase(0, name.size() + 2); // the colon and the blank behind it
    if (error.status == Qeapp::eFileNotFound)
        message += codeInPlaceOfFileClause(file);
    return message.empty() ? result : fmt::format("{}: {}", result, message);
}

Failure drawingFailure(const std::string& file, const Embedded::Error& error)
{
    return Failure(file, describe(file, error), ExitStatus::failed, resultCode(Embedded::hostStatus(error)));
}

void require(const std::string& file, const Embedded::Expected<void>& result)
{
    if (!result)
        throw drawingFailure(file, result.error());
}

OpenDrawing::OpenDrawing(std::string file, Embedded::DrawingAccess access, const Output& output)
    : file_(std::move(file)), access_(access), output_(output)
{
}

OpenDrawing::~OpenDrawing()
{
    if (document_ != nullptr)
        static_cast<void>(Embedded::closeDocument(document_)); // an open document without a lock can be closed
}

Embedded::Expected<void> OpenDrawing::load()
{
    Embedded::Expected<std::unique_ptr<QeDbDatabase>> database =
        file_ == kStandardStream
            ? loadFromStandardInput()
            : Embedded::loadDrawing(Embedded::pathFromUtf8(file_), access_, waitFor(file_, output_));
    if (!database)
        return Embedded::failure(std::move(database).error());
    document_ = Embedded::openDocument(std::move(*database));
    return {};
}

Embedded::Expected<void> OpenDrawing::save(Output& output)
{
    return saveDrawing(*database(), file_, database()->drawingVersion(), Embedded::Overwriting::drawings, output);
}

Embedded::Expected<void> saveDrawing(QeDbDatabase& database, const std::string& file, QeDb::QeDbDwgVersion version,
                                     Embedded::Overwriting overwriting, Output& output)
{
    if (file != kStandardStream)
        return Embedded::saveDrawing(database, Embedded::pathFromUtf8(file), version, overwriting,
                                     waitFor(file, output));
    Embedded::Expected<std::string> bytes = Embedded::saveDrawingToBytes(database, version);
    if (!bytes)
        return Embedded::failure(std::move(bytes).error());
    output.write(*bytes); // a failure is reported when the program ends
    return {};
}

} // namespace Orvelcs
