// The drawings that a command works on: opened in the host, saved back, one after another.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/output.h"
#include "platform/host.h"

namespace Orvelcs {

/// "eFileDamaged (51): objects[3].owner: …", without the file's name, which stands before it.
std::string describe(const std::string& file, const Embedded::Error& error);

/// A drawing that cannot be loaded or saved, with the host's result.
class DrawingFailure : public Failure {
public:
    DrawingFailure(const std::string& file, const Embedded::Error& error)
        : Failure(file, describe(file, error)), result_(Embedded::hostStatus(error))
    {
    }
    Qeapp::ErrorStatus result() const { return result_; }

private:
    Qeapp::ErrorStatus result_;
};
/// Throws DrawingFailure for an Error.
void require(const std::string& file, const Embedded::Expected<void>& result);

/// What is said of a file that is there already.
inline constexpr const char* kExists = "exists; --force overwrites it";

/// A drawing that is the host's current document for the length of a scope. "-" is standard input, and standard output
/// when it is saved.
class OpenDrawing {
public:
    /// `output` shows that it waits for another process, and must outlive it.
    OpenDrawing(std::string file, Embedded::DrawingAccess access, const Output& output);
    OpenDrawing(const OpenDrawing&) = delete;
    OpenDrawing& operator=(const OpenDrawing&) = delete;
    ~OpenDrawing();

    [[nodiscard]] Embedded::Expected<void> load();
    /// To where it came from, in the version that it has.
    [[nodiscard]] Embedded::Expected<void> save(Output& output);

    /// What of the drawing could not be read since it was loaded. The module's answers do not tell it from what is
    /// absent.
    [[nodiscard]] Embedded::Expected<void> loadingResult() const { return Embedded::loadingResult(*database()); }

    QeDbDatabase* database() const { return document_->database(); }
    int version() const { return database()->drawingVersion(); }

private:
    std::string file_;
    Embedded::DrawingAccess access_;
    const Output& output_;
    QeApDocument* document_ = nullptr;
};

/// Saves in a drawing version into a file, or prints what would stand there for "-".
[[nodiscard]] Embedded::Expected<void> saveDrawing(QeDbDatabase& database, const std::string& file,
                                                   QeDb::QeDbDwgVersion version, Embedded::Overwriting overwriting,
                                                   Output& output);

/// What became of one drawing of a batch, and its part of the JSON document.
struct DrawingOutcome {
    ExitStatus status = ExitStatus::done;
    Json json;
};

/// Runs `work` on each file in the order given, with progress where there are several, and prints the JSON document:
/// an object for one drawing, an array for several.
ExitStatus forEachDrawing(const std::vector<std::string>& files, Output& output,
                          const std::function<DrawingOutcome(const std::string& file)>& work);

/// Throws Failure for an empty name, for "-" among several drawings, and where the drawing that it prints would meet
/// other results.
void checkFileNames(const std::vector<std::string>& files, bool drawingIsPrinted, const Output& output);

} // namespace Orvelcs
