// Opens drawings in the host and saves them, one after another.
#pragma once

#include <memory>
#include <string>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/output.h"
#include "orvelcs/cli/output_file.h"
#include "platform/host.h"

namespace Orvelcs {

/// "eFileDamaged (51): objects[3].owner: …". The file's name, which stands before it in messages, is left out.
std::string describe(const std::string& file, const Embedded::Error& error);

/// What the host's Error is as a Failure of the drawing.
Failure drawingFailure(const std::string& file, const Embedded::Error& error);
/// Throws that Failure for an Error.
void require(const std::string& file, const Embedded::Expected<void>& result);

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
    /// Saves it where it came from, in its own version.
    [[nodiscard]] Embedded::Expected<void> save(Output& output);

    /// What could not be read of the drawing since it was loaded. The results of the module do not distinguish it from
    /// what is absent.
    [[nodiscard]] Embedded::Expected<void> loadingResult() const { return Embedded::loadingResult(*database()); }

    QeDbDatabase* database() const { return document_->database(); }
    int version() const { return database()->drawingVersion(); }

private:
    std::string file_;
    Embedded::DrawingAccess access_;
    const Output& output_;
    QeApDocument* document_ = nullptr;
};

/// Saves the drawing in a drawing version into a file; for "-", prints the bytes.
[[nodiscard]] Embedded::Expected<void> saveDrawing(QeDbDatabase& database, const std::string& file,
                                                   QeDb::QeDbDwgVersion version, Embedded::Overwriting overwriting,
                                                   Output& output);

} // namespace Orvelcs
