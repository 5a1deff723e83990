#include "embedded/host/application/decomposition_run.h"

#include "embedded/base/text.h"
#include "embedded/host/application/application.h"
#include "embedded/host/application/decomposition_manager.h"
#include "embedded/host/database/database.h"

namespace Embedded {
namespace {

/// Keeps the first error, from whichever of the two recorders.
class ErrorRecorder final : public QeDbSaveErrorRecorder, public QeDbSaveErrorMessageRecorder {
public:
    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code) override { return recordError(code, nullptr); }

    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message) override
    {
        if (code == Qeapp::eOk)
            return Qeapp::eInvalidInput;
        if (code_ == Qeapp::eOk) {
            code_ = code;
            message_ = message != nullptr ? utf8FromWide(message) : std::string();
        }
        return Qeapp::eOk;
    }

    Qeapp::ErrorStatus code() const { return code_; }
    const std::string& message() const { return message_; }

private:
    Qeapp::ErrorStatus code_ = Qeapp::eOk;
    std::string message_;
};

std::string defaultMessage(QeDb::QeDbDwgVersion version, Qeapp::ErrorStatus code)
{
    return "the drawing's contents cannot be converted for drawing version " + std::to_string(version) + " (status " +
           std::to_string(code) + ")";
}

template <class Visit>
void forEachReactor(Visit visit)
{
    if (QeHost::hostParts().decompositionManager)
        QeHost::decompositionManager().forEach(visit);
}

} // namespace

// The delegated constructor comes first, so that the destructor cleans up after a reactor that throws.
DecompositionRun::DecompositionRun(QeDbDatabase& database, QeDb::QeDbDwgVersion version)
    : DecompositionRun(database, version, Started{})
{
    if (active_)
        askReactors();
    else
        fail(Qeapp::eNoTransaction, {});
    if (!result_)
        abort();
}

DecompositionRun::DecompositionRun(QeDbDatabase& database, QeDb::QeDbDwgVersion version, Started /*started*/)
    : database_(database), version_(version), depth_(database.transactionManager()->numActiveTransactions())
{
    active_ = database_.transactionManager()->startTransaction() != nullptr;
}

DecompositionRun::~DecompositionRun()
{
    abort();
}

void DecompositionRun::askReactors()
{
    ErrorRecorder errors;
    forEachReactor([&](QeDbDecompositionReactor& reactor) {
        const Qeapp::ErrorStatus returned = reactor.decomposeForSave(&database_, version_, &errors, &errors);
        const Qeapp::ErrorStatus status = errors.code() != Qeapp::eOk ? errors.code() : returned;
        if (status != Qeapp::eOk)
            fail(status, errors.message());
        return status == Qeapp::eOk;
    });
}

void DecompositionRun::fail(Qeapp::ErrorStatus status, const std::string& message)
{
    result_ = failure(status, message.empty() ? defaultMessage(version_, status) : message);
}

// A reactor may have left transactions of its own active; they end with the run's.
void DecompositionRun::abort()
{
    if (!active_)
        return;
    active_ = false;
    database_.imp().transactions.abortTo(depth_);
    forEachReactor([&](QeDbDecompositionReactor& reactor) {
        reactor.saveAborted(&database_, version_);
        return true;
    });
}

void DecompositionRun::complete()
{
    if (!active_)
        return;
    database_.imp().transactions.commitTo(depth_); // without memory the run is still active, and is undone
    active_ = false;
    forEachReactor([&](QeDbDecompositionReactor& reactor) {
        reactor.saveCompleted(&database_, version_);
        return true;
    });
}

} // namespace Embedded
