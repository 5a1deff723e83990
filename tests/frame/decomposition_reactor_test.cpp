#include "frame/decomposition_reactor.h"

#include <algorithm>
#include <optional>

#include "embedded/host/application/decomposition_run.h"
#include "embedded/host/database/host_error.h"
#include "frame_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

constexpr auto k29 = static_cast<QeDb::QeDbDwgVersion>(29);
constexpr auto k30 = static_cast<QeDb::QeDbDwgVersion>(30);

/// Stores the recorded codes and returns the result that the test sets.
class ErrorRecorder final : public QeDbSaveErrorRecorder {
public:
    std::vector<int> codes;
    Qeapp::ErrorStatus result = Qeapp::eOk;

    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code) override
    {
        codes.push_back(code);
        return result;
    }
};

/// Stores the recorded codes with their messages and returns the result that the test sets.
class MessageRecorder final : public QeDbSaveErrorMessageRecorder {
public:
    struct Entry {
        int code = 0;
        std::optional<std::wstring> message;
        friend bool operator==(const Entry&, const Entry&) = default;
    };
    std::vector<Entry> entries;
    Qeapp::ErrorStatus result = Qeapp::eOk;

    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message) override
    {
        entries.push_back({code, message != nullptr ? std::optional<std::wstring>(message) : std::nullopt});
        return result;
    }
};

class DecompositionReactor : public FrameTest {
protected:
    Drawing drawing;
    OrvelCoordsysCoreDecompositionReactor reactor;
    ErrorRecorder errors;
    MessageRecorder messages;

    void storeSystem() { drawing.withGeoData(serializedText(catalogSystem(L"EPSG:25832").get())); }
    /// Stores a code that neither the drawing nor the catalog defines, so that the conversion returns eNotApplicable.
    void storeUnknownCode() { drawing.withLegacyCode(L"MINE:1"); }

    Qeapp::ErrorStatus decompose(QeDb::QeDbDwgVersion version)
    {
        return reactor.decomposeForSave(drawing.database(), version, &errors, &messages);
    }
    void expectNothingRecorded() const
    {
        EXPECT_TRUE(errors.codes.empty());
        EXPECT_TRUE(messages.entries.empty());
    }
};

TEST_F(DecompositionReactor, Version29_GetsTheLegacyForms)
{
    storeSystem();
    EXPECT_EQ(decompose(k29), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
    EXPECT_TRUE(drawing.xrecord().has_value());
    EXPECT_TRUE(drawing.geoDataText().value_or(L"").starts_with(L"PROJCS["));
    expectNothingRecorded();
}

TEST_F(DecompositionReactor, Version30_GetsOnlyTheGeoDataText)
{
    storeSystem();
    const std::wstring text = drawing.geoDataText().value_or(L"");
    ASSERT_EQ(decompose(k29), Qeapp::eOk);
    EXPECT_EQ(decompose(k30), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), text);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    expectNothingRecorded();
}

TEST_F(DecompositionReactor, OldestAndNewestVersions_GetTheirForms)
{
    storeSystem();
    EXPECT_EQ(decompose(QeDb::kOldestDwg), Qeapp::eOk);
    EXPECT_TRUE(drawing.xrecord().has_value());
    EXPECT_EQ(decompose(QeDb::kCurrentDwg), Qeapp::eOk);
    EXPECT_FALSE(drawing.xrecord().has_value());
}

TEST_F(DecompositionReactor, DrawingWithoutASystem_SucceedsAtAnyVersion)
{
    for (int version = QeDb::kOldestDwg; version <= QeDb::kCurrentDwg; ++version) {
        EXPECT_EQ(decompose(static_cast<QeDb::QeDbDwgVersion>(version)), Qeapp::eOk) << version;
        EXPECT_EQ(drawing.legacyChain(), std::nullopt) << version;
        EXPECT_EQ(drawing.xrecord(), std::nullopt) << version;
        EXPECT_EQ(drawing.geoDataText(), std::nullopt) << version;
    }
    expectNothingRecorded();
}

TEST_F(DecompositionReactor, NullDatabase_MeansTheWorkingDatabase)
{
    auto* const document = Embedded::openDocument(std::make_unique<QeDbDatabase>());
    EXPECT_EQ(reactor.decomposeForSave(nullptr, k29, nullptr, nullptr), Qeapp::eOk);
    EXPECT_EQ(Embedded::closeDocument(document), Qeapp::eOk);
    EXPECT_EQ(reactor.decomposeForSave(nullptr, k29, nullptr, nullptr), 124);
}

TEST_F(DecompositionReactor, Success_NeedsNoRecorder)
{
    storeSystem();
    EXPECT_EQ(reactor.decomposeForSave(drawing.database(), k29, nullptr, nullptr), Qeapp::eOk);
}

TEST_F(DecompositionReactor, Failure_IsRecordedOnlyByTheFirstRecorder)
{
    storeUnknownCode();
    EXPECT_EQ(decompose(k29), Qeapp::eOk) << "the result of the recorder";
    EXPECT_EQ(errors.codes, std::vector<int>{2});
    EXPECT_TRUE(messages.entries.empty());
}

TEST_F(DecompositionReactor, Failure_ReturnsTheResultOfTheFirstRecorder)
{
    storeUnknownCode();
    errors.result = static_cast<Qeapp::ErrorStatus>(kInjectedResult);
    EXPECT_EQ(decompose(k29), kInjectedResult);
}

TEST_F(DecompositionReactor, FailureWithOnlyTheFirstRecorder_IsRecorded)
{
    storeUnknownCode();
    EXPECT_EQ(reactor.decomposeForSave(drawing.database(), k30, &errors, nullptr), Qeapp::eOk);
    EXPECT_EQ(errors.codes, std::vector<int>{2});
}

TEST_F(DecompositionReactor, FailureWithOnlyTheSecondRecorder_IsRecordedWithAnEmptyMessage)
{
    storeUnknownCode();
    EXPECT_EQ(reactor.decomposeForSave(drawing.database(), k29, nullptr, &messages), Qeapp::eOk);
    EXPECT_EQ(messages.entries, (std::vector<MessageRecorder::Entry>{{2, L""}}));
}

TEST_F(DecompositionReactor, FailureWithOnlyTheSecondRecorder_ReturnsItsResult)
{
    storeUnknownCode();
    messages.result = static_cast<Qeapp::ErrorStatus>(kInjectedResult);
    EXPECT_EQ(reactor.decomposeForSave(drawing.database(), k29, nullptr, &messages), kInjectedResult);
}

TEST_F(DecompositionReactor, FailureWithoutARecorder_IsReturned)
{
    storeUnknownCode();
    EXPECT_EQ(reactor.decomposeForSave(drawing.database(), k29, nullptr, nullptr), 2);
}

TEST_F(DecompositionReactor, HostResult_IsRecordedUnchanged)
{
    storeSystem();
    const ScopedFault fault({.call = "QeDbObject::setXData", .occurrence = 2, .code = kInjectedResult});
    EXPECT_EQ(decompose(k29), Qeapp::eOk);
    EXPECT_EQ(errors.codes, std::vector<int>{kInjectedResult});
}

/// The reactor that the module registers and that the host's save calls.
class RegisteredReactor : public DecompositionReactor {
protected:
    void SetUp() override { ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk); }
};

TEST_F(RegisteredReactor, SaveConvertsTheDrawing)
{
    storeSystem();
    Embedded::DecompositionRun run(*drawing.database(), k29);
    ASSERT_TRUE(run.result()) << run.result().error().text();
    run.complete();
    EXPECT_TRUE(drawing.xrecord().has_value());
}

TEST_F(RegisteredReactor, FailureStopsTheSaveAndChangesNothing)
{
    storeUnknownCode();
    const auto before = drawing.contents();
    const Embedded::DecompositionRun run(*drawing.database(), k29);
    EXPECT_EQ(Embedded::hostStatus(run.result()), Qeapp::eNotApplicable);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(RegisteredReactor, SaveAfterASecondLoadConvertsOnce)
{
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    storeSystem();
    const auto calls = recordCalls([&] { Embedded::DecompositionRun(*drawing.database(), k29).complete(); });
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "DefinitionStream::Deserialize_s"), 1);
}

TEST_F(RegisteredReactor, SaveAfterUnloadDoesNotConvert)
{
    ASSERT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    storeSystem();
    const auto before = drawing.contents();
    Embedded::DecompositionRun(*drawing.database(), k29).complete();
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
} // namespace Tests
