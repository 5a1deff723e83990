// Each operation, with each of the platform calls that it makes failing in turn.
#include <functional>
#include <new>

#include "storage/definition_xrecord.h"
#include "support/coordsys_test.h"
#include "support/excused_calls.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;

/// What came of an operation: its result, or nothing where it ended with std::bad_alloc.
using Outcome = std::optional<Qeapp::ErrorStatus>;
using Operation = std::function<Qeapp::ErrorStatus(QeDbDatabase*)>;
using Preparation = std::function<void(Drawing&)>;

class FailingCalls : public PlatformTest {
protected:
    Notices log;
    RecordingReactor reactor{log};
    std::size_t failed = 0;

    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    /// Fails call after call until the operation makes no further one.
    void failEachCall(const Preparation& prepare, const Operation& operation, const ExcusedCalls& excused)
    {
        for (std::size_t number = 1; failCall(number, prepare, operation, excused); ++number)
            ++failed;
        EXPECT_GT(failed, 0U) << "the operation made no fallible call";
    }

private:
    Outcome run(const Operation& operation, QeDbDatabase* database)
    {
        try {
            return operation(database);
        } catch (const std::bad_alloc&) {
            return std::nullopt;
        }
    }

    /// False when the operation made fewer calls.
    bool failCall(std::size_t number, const Preparation& prepare, const Operation& operation,
                  const ExcusedCalls& excused)
    {
        Drawing drawing;
        prepare(drawing);
        log.clear();
        const std::string before = drawing.contents();
        const auto held = Embedded::ResourceCounters::now();
        FaultInjection::arm({.call = "", .occurrence = number, .code = {}});
        const Outcome outcome = run(operation, drawing.database());
        FaultInjection::disarm();
        if (FaultInjection::failedCalls() == 0)
            return false;
        const std::string call = FaultInjection::seen().at(number - 1);
        SCOPED_TRACE("call " + std::to_string(number) + ", " + call);
        EXPECT_EQ(Embedded::ResourceCounters::difference(held, Embedded::ResourceCounters::now()), "");
        expectFailure(outcome, call, excused);
        expectDrawing(outcome, drawing, before);
        return true;
    }

    static void expectFailure(const Outcome& outcome, const std::string& call, const ExcusedCalls& excused)
    {
        EXPECT_TRUE(outcome != Qeapp::eOk || excused.contains(call)) << "the operation succeeded";
    }

    /// Unchanged until reactors hear of the removal, cleared until they hear of the assignment; and they hear of the
    /// assignment when it is done.
    void expectDrawing(const Outcome& outcome, const Drawing& drawing, const std::string& before)
    {
        if (outcome == Qeapp::eOk && !log.empty())
            return;
        if (log.empty() || log.back().event != Event::changed) {
            EXPECT_EQ(drawing.contents(), before);
            return;
        }
        EXPECT_EQ(log.back().name, std::nullopt);
        EXPECT_EQ(drawing.geoDataText().value_or(L""), L"");
        EXPECT_EQ(drawing.legacyChain(), std::nullopt);
        EXPECT_EQ(drawing.xrecord(), std::nullopt);
    }
};

void prepareNothing(Drawing&)
{
}

void prepareGeoData(Drawing& drawing)
{
    drawing.withGeoData(serializedText(catalogSystem(L"EPSG:25832").get()));
}

void prepareLegacyCode(Drawing& drawing)
{
    drawing.withLegacyCode(L"EPSG:25832");
}

void prepareAllForms(Drawing& drawing)
{
    prepareGeoData(drawing);
    prepareLegacyCode(drawing);
    EXPECT_EQ(Orvel::WriteCsDefinitionXrecord(catalogSystem(L"EPSG:25832").get(), drawing.database()), Qeapp::eOk);
}

Qeapp::ErrorStatus readDefinitions(QeDbDatabase* database)
{
    ArrayHolder definitions;
    return Cs::GetCoordinateSystem(definitions.put(), database);
}

Qeapp::ErrorStatus readSystem(QeDbDatabase* database)
{
    SystemHolder definition;
    bool known = false;
    return Cs::GetCoordinateSystem(definition.put(), &known, database);
}

Qeapp::ErrorStatus readCode(QeDbDatabase* database)
{
    Orvel::HostString code;
    return Cs::GetCoordinateSystem(code.put(), database);
}

Operation assignDefinition(const SystemHolder& definition)
{
    return [&](QeDbDatabase* database) { return Cs::SetCoordinateSystem(definition.get(), database); };
}

Qeapp::ErrorStatus assignCode(QeDbDatabase* database)
{
    return Cs::SetCoordinateSystem(L"EPSG:2263", database);
}

Qeapp::ErrorStatus assignEmptyCode(QeDbDatabase* database)
{
    return Cs::SetCoordinateSystem(L"", database);
}

Qeapp::ErrorStatus clear(QeDbDatabase* database)
{
    return Cs::ClearCoordinateSystem(database);
}

TEST_F(FailingCalls, ReadingTheDefinitionsOfAnEmptyDrawing)
{
    failEachCall(prepareNothing, readDefinitions, kReadingWithoutALegacyCode);
}

TEST_F(FailingCalls, ReadingTheDefinitionsFromGeoData)
{
    failEachCall(prepareGeoData, readDefinitions, kReadingWithoutALegacyCode);
}

TEST_F(FailingCalls, ReadingTheDefinitionsOfALegacyCode)
{
    failEachCall(prepareLegacyCode, readDefinitions, kReadingOfALegacyCode);
}

TEST_F(FailingCalls, ReadingTheDefinitionsFromTheXrecord)
{
    failEachCall(prepareAllForms, readDefinitions, kReadingOfTheXrecord);
}

TEST_F(FailingCalls, ReadingTheSystemFromGeoData)
{
    failEachCall(prepareGeoData, readSystem, kReadingWithoutALegacyCode + kCatalogCheck);
}

TEST_F(FailingCalls, ReadingTheSystemOfALegacyCode)
{
    failEachCall(prepareLegacyCode, readSystem, kReadingOfALegacyCode + kCatalogCheck);
}

TEST_F(FailingCalls, ReadingTheSystemFromTheXrecord)
{
    failEachCall(prepareAllForms, readSystem, kReadingOfTheXrecord + kCatalogCheck);
}

TEST_F(FailingCalls, ReadingTheCodeFromGeoData)
{
    failEachCall(prepareGeoData, readCode, kReadingWithoutALegacyCode);
}

TEST_F(FailingCalls, ReadingTheCodeFromTheXrecord)
{
    failEachCall(prepareAllForms, readCode, kReadingOfTheXrecord);
}

TEST_F(FailingCalls, AssigningADefinitionToAnEmptyDrawing)
{
    const SystemHolder definition = catalogSystem(L"EPSG:2263");
    failEachCall(prepareNothing, assignDefinition(definition), kAssigning + kMakingGeoData);
}

TEST_F(FailingCalls, AssigningADefinitionOverAllForms)
{
    const SystemHolder definition = catalogSystem(L"EPSG:2263");
    failEachCall(prepareAllForms, assignDefinition(definition), kAssigning);
}

TEST_F(FailingCalls, AssigningACodeOverAllForms)
{
    failEachCall(prepareAllForms, assignCode, kAssigning);
}

TEST_F(FailingCalls, AssigningAnEmptyCodeOverAllForms)
{
    failEachCall(prepareAllForms, assignEmptyCode, {});
}

TEST_F(FailingCalls, ClearingAnEmptyDrawing)
{
    failEachCall(prepareNothing, clear, {});
}

TEST_F(FailingCalls, ClearingAllForms)
{
    failEachCall(prepareAllForms, clear, {});
}

} // namespace
