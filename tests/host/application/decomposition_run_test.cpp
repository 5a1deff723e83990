#include <functional>
#include <stdexcept>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/application/application.h"
#include "embedded/host/application/decomposition_run.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/host_error.h"
#include "host/database/drawing_test.h"
#include "support/error_text.h"

namespace Tests {
namespace {

using Embedded::DecompositionRun;

constexpr auto kOldVersion = static_cast<QeDb::QeDbDwgVersion>(29);

/// Is registered during its lifetime. Runs the work of the test and records its notifications.
class Converter final : public QeDbDecompositionReactor {
public:
    using Work = std::function<Qeapp::ErrorStatus(QeDbSaveErrorRecorder*, QeDbSaveErrorMessageRecorder*)>;

    explicit Converter(std::string& notifications) : notifications_(notifications)
    {
        EXPECT_EQ(qedbGetDecompositionManager()->addReactor(this), Qeapp::eOk);
    }
    ~Converter() { EXPECT_EQ(qedbGetDecompositionManager()->removeReactor(this), Qeapp::eOk); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion version,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override
    {
        notifications_ += "decompose" + std::to_string(version) + ' ';
        return work ? work(errors, messages) : Qeapp::eOk;
    }
    void saveCompleted(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion /*version*/) override
    {
        notifications_ += "completed ";
    }
    void saveAborted(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion /*version*/) override
    {
        notifications_ += "aborted ";
    }

    Work work;

private:
    std::string& notifications_;
};

class DecompositionRunTest : public DrawingTest {
protected:
    Qeapp::ErrorStatus addConvertedXrecord()
    {
        addXrecord(L"converted");
        return Qeapp::eOk;
    }

    std::string notifications;
};

TEST_F(DecompositionRunTest, RunWithoutReactors_Succeeds)
{
    DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(errorText(run.result()), "");
    run.complete();
}

TEST_F(DecompositionRunTest, Reactors_AreCalledInTheOrderOfTheirRegistration)
{
    Converter first(notifications);
    Converter second(notifications);
    first.work = [&](auto*, auto*) { return notifications += "1 ", Qeapp::eOk; };
    second.work = [&](auto*, auto*) { return notifications += "2 ", Qeapp::eOk; };
    DecompositionRun(database, kOldVersion).complete();
    EXPECT_EQ(notifications, "decompose29 1 decompose29 2 completed completed ");
}

TEST_F(DecompositionRunTest, CompletedRun_KeepsTheChangesOfTheReactors)
{
    Converter converter(notifications);
    converter.work = [&](auto*, auto*) { return addConvertedXrecord(); };
    DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(transactions().numActiveTransactions(), 1) << "until the drawing is written";
    EXPECT_EQ(keys(), L"converted");
    run.complete();
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
    EXPECT_EQ(keys(), L"converted");
}

TEST_F(DecompositionRunTest, RunThatIsNotCompleted_IsUndone)
{
    const auto before = contents();
    Converter converter(notifications);
    converter.work = [&](auto*, auto*) { return addConvertedXrecord(); };
    {
        const DecompositionRun run(database, kOldVersion);
        EXPECT_EQ(errorText(run.result()), "");
    }
    EXPECT_EQ(notifications, "decompose29 aborted ");
    EXPECT_EQ(contents(), before);
}

TEST_F(DecompositionRunTest, FailingReactor_StopsTheRunAndUndoesIt)
{
    const auto before = contents();
    Converter first(notifications);
    Converter second(notifications);
    first.work = [&](auto*, auto*) {
        static_cast<void>(addConvertedXrecord()); // it fails after half of its work
        return Qeapp::eNotApplicable;
    };
    DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(Embedded::hostStatus(run.result()), Qeapp::eNotApplicable);
    EXPECT_EQ(errorText(run.result()), "the drawing's contents cannot be converted for drawing version 29 (status 2)");
    EXPECT_EQ(notifications, "decompose29 aborted aborted ");
    EXPECT_EQ(contents(), before) << "at once";
    run.complete();
    EXPECT_EQ(notifications, "decompose29 aborted aborted ") << "a failed run cannot be completed";
}

TEST_F(DecompositionRunTest, RecordedError_StopsTheRunThoughTheReactorReturnsOk)
{
    Converter converter(notifications);
    converter.work = [](QeDbSaveErrorRecorder* errors, auto*) { return errors->recordError(Qeapp::eInvalidInput); };
    const DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(Embedded::hostStatus(run.result()), Qeapp::eInvalidInput);
    EXPECT_NE(errorText(run.result()), "");
}

TEST_F(DecompositionRunTest, RecordedMessage_IsTheResult)
{
    Converter converter(notifications);
    converter.work = [](auto*, QeDbSaveErrorMessageRecorder* messages) {
        return messages->recordError(Qeapp::eVetoed, L"no caf\u00e9");
    };
    const DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(Embedded::hostStatus(run.result()), Qeapp::eVetoed);
    EXPECT_EQ(errorText(run.result()), "no caf\xc3\xa9");
}

TEST_F(DecompositionRunTest, FirstOfSeveralErrors_IsTheResult)
{
    Converter converter(notifications);
    converter.work = [](QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) {
        EXPECT_EQ(errors->recordError(Qeapp::eOk), Qeapp::eInvalidInput) << "success is not an error";
        EXPECT_EQ(messages->recordError(Qeapp::eVetoed, nullptr), Qeapp::eOk);
        EXPECT_EQ(errors->recordError(Qeapp::eNoObject), Qeapp::eOk);
        return Qeapp::eKeyNotFound;
    };
    EXPECT_EQ(Embedded::hostStatus(DecompositionRun(database, kOldVersion).result()), Qeapp::eVetoed);
}

TEST_F(DecompositionRunTest, TransactionLeftActiveByAReactor_EndsWithTheRun)
{
    Converter converter(notifications);
    converter.work = [&](auto*, auto*) {
        begin();
        return addConvertedXrecord();
    };
    {
        const DecompositionRun run(database, kOldVersion);
    }
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
    EXPECT_EQ(keys(), L"");
    DecompositionRun(database, kOldVersion).complete();
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
    EXPECT_EQ(keys(), L"converted");
}

TEST_F(DecompositionRunTest, OuterTransaction_StaysActive)
{
    begin();
    DecompositionRun(database, kOldVersion).complete();
    EXPECT_EQ(transactions().numActiveTransactions(), 1);
    abort();
}

TEST_F(DecompositionRunTest, ChangesOfAThrowingReactor_AreUndone)
{
    Converter converter(notifications);
    converter.work = [&](auto*, auto*) -> Qeapp::ErrorStatus {
        static_cast<void>(addConvertedXrecord()); // undone with the rest
        throw std::runtime_error("out of paper");
    };
    EXPECT_THROW(DecompositionRun(database, kOldVersion), std::runtime_error);
    EXPECT_EQ(notifications, "decompose29 aborted ");
    EXPECT_EQ(keys(), L"");
}

TEST_F(DecompositionRunTest, FailedTransactionStart_StopsTheRun)
{
    Converter converter(notifications);
    const Embedded::ScopedFault fault({.call = "QeDbTransactionManager::startTransaction", .code = {}});
    const DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(Embedded::hostStatus(run.result()), Qeapp::eNoTransaction);
    EXPECT_NE(errorText(run.result()), "");
    EXPECT_EQ(notifications, "");
}

TEST_F(DecompositionRunTest, HostWithoutAManager_CallsNoReactor)
{
    Converter converter(notifications);
    Embedded::setHostParts({.decompositionManager = false});
    DecompositionRun(database, kOldVersion).complete();
    Embedded::setHostParts({});
    EXPECT_EQ(notifications, "");
}

TEST_F(DecompositionRunTest, Reactors_AreRegisteredOnceAndCounted)
{
    using Embedded::ResourceCounters;
    QeDbDecompositionManager& manager = *qedbGetDecompositionManager();
    Converter converter(notifications);
    EXPECT_EQ(ResourceCounters::now()[Embedded::ResourceKind::decompositionReactor], 1);
    EXPECT_EQ(manager.addReactor(&converter), Qeapp::eDuplicateKey);
    EXPECT_EQ(manager.addReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(manager.removeReactor(nullptr), Qeapp::eKeyNotFound);
    EXPECT_EQ(ResourceCounters::now()[Embedded::ResourceKind::decompositionReactor], 1);
}

TEST_F(DecompositionRunTest, ReactorWhoseRemovalFails_IsRemovedAnyway)
{
    class Silent final : public QeDbDecompositionReactor {};
    Silent silent;
    QeDbDecompositionManager& manager = *qedbGetDecompositionManager();
    ASSERT_EQ(manager.addReactor(&silent), Qeapp::eOk);
    {
        const Embedded::ScopedFault fault({.call = "QeDbDecompositionManager::removeReactor"});
        EXPECT_EQ(manager.removeReactor(&silent), Qeapp::eOutOfMemory);
    }
    EXPECT_EQ(manager.removeReactor(&silent), Qeapp::eKeyNotFound);
}

TEST_F(DecompositionRunTest, DefaultReactor_LetsTheRunSucceed)
{
    class Silent final : public QeDbDecompositionReactor {};
    Silent silent;
    ASSERT_EQ(qedbGetDecompositionManager()->addReactor(&silent), Qeapp::eOk);
    DecompositionRun run(database, kOldVersion);
    EXPECT_EQ(errorText(run.result()), "");
    run.complete();
    EXPECT_EQ(qedbGetDecompositionManager()->removeReactor(&silent), Qeapp::eOk);
}

TEST_F(DecompositionRunTest, DrawingVersion_IsTheOneThatWasSet)
{
    EXPECT_EQ(database.drawingVersion(), QeDb::kCurrentDwg);
    database.imp().version = kOldVersion;
    EXPECT_EQ(database.drawingVersion(), kOldVersion);
}

} // namespace
} // namespace Tests
