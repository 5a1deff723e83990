// Decomposition for a save: calls the reactors inside a transaction.
#pragma once

#include <string>

#include "embedded/base/error.h"
#include "platform/export.h"
#include "platform/host/database.h"
#include "platform/host/error_status.h"

namespace Embedded {

/// Asks every registered reactor to decompose the drawing for the version, inside a transaction of its own. The first
/// result other than eOk, and the first error recorded, end the round and undo it at once.
///
/// After a successful round the transaction is still active. The caller writes the drawing and then calls complete().
/// The destructor undoes a run that was not completed.
class QEHOST_API DecompositionRun {
public:
    DecompositionRun(QeDbDatabase& database, QeDb::QeDbDwgVersion version);
    /// Aborts the run and calls saveAborted of the reactors, unless the run has ended.
    ~DecompositionRun();
    DecompositionRun(const DecompositionRun&) = delete;
    DecompositionRun& operator=(const DecompositionRun&) = delete;

    /// The Error has the code that was recorded or returned first, or eNoTransaction when no transaction could be
    /// started; its message is the recorded one, or names the version and the code.
    const Expected<void>& result() const { return result_; }

    /// Keeps what the reactors did and calls their saveCompleted. Does nothing for a run that failed or ended.
    void complete();

private:
    struct Started {};
    DecompositionRun(QeDbDatabase& database, QeDb::QeDbDwgVersion version, Started started);
    void askReactors();
    void fail(Qeapp::ErrorStatus status, const std::string& message);
    void abort();

    QeDbDatabase& database_;
    QeDb::QeDbDwgVersion version_;
    int depth_; // of transactions before the run
    bool active_ = false;
    Expected<void> result_;
};

} // namespace Embedded
