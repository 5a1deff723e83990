#include "storage/definition_xrecord.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

class Clear : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus clear() { return Cs::ClearCoordinateSystem(database()); }
    void giveAllForms()
    {
        storeSystem(L"EPSG:25832");
        drawing.withLegacyCode(L"EPSG:25832");
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(catalogSystem(L"EPSG:25832").get(), database()), Qeapp::eOk);
    }
    /// Expects the result when the named call fails with the code, and that the reactors were only asked.
    void expectNothingWhenFailing(const char* call, int code, int result)
    {
        const auto before = drawing.contents();
        log.clear();
        {
            const ScopedFault fault({.call = call, .code = code});
            EXPECT_EQ(clear(), result) << call;
        }
        EXPECT_EQ(drawing.contents(), before) << call;
        EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}})) << call;
    }
};

TEST_F(Clear, RemovesEveryStoredForm)
{
    giveAllForms();
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(Clear, AsksAndTellsWithANullName)
{
    giveAllForms();
    ASSERT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::changed, std::nullopt}}));
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(2, database()));
}

TEST_F(Clear, DrawingWithNothingStored_IsSuccess)
{
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::changed, std::nullopt}}));
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(Clear, ClearedDrawing_ReadsAsNoCoordinateSystem)
{
    giveAllForms();
    ASSERT_EQ(clear(), Qeapp::eOk);
    Orvel::HostString code;
    EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), database()), Qeapp::eOk);
    EXPECT_EQ(code.get(), nullptr);
}

TEST_F(Clear, WithoutReactors_IsDoneAllTheSame)
{
    giveAllForms();
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(Clear, Veto_ChangesNothing)
{
    giveAllForms();
    const auto before = drawing.contents();
    reactor.answer = [](const Notice&) { return false; };
    EXPECT_EQ(clear(), 325);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::vetoed, std::nullopt}}));
}

TEST_F(Clear, NoTransaction_IsResult8)
{
    giveAllForms();
    expectNothingWhenFailing("QeDbTransactionManager::startTransaction", 6, 8);
}

TEST_F(Clear, HostFailures_PassOnAndChangeNothing)
{
    giveAllForms();
    expectNothingWhenFailing("QeDbDatabase::getRegAppTable", 31, 31);
    expectNothingWhenFailing("QeDbObject::setXData", 40, 40);
    expectNothingWhenFailing("QeDbDictionary::remove", 33, 33);
    expectNothingWhenFailing("qedbGetGeoDataObjId", 3, 3);
    expectNothingWhenFailing("qedbOpenQeDbObject", 30, 30);
    expectNothingWhenFailing("QeDbGeoData::setCoordinateSystem", 999, 999);
    expectNothingWhenFailing("QeDbTransactionManager::endTransaction", 998, 998);
}

TEST_F(Clear, HostAnswersThatMeanThatNothingIsThere_AreNoFailures)
{
    for (const int code : {16, 22}) {
        const ScopedFault fault({.call = "qedbGetGeoDataObjId", .code = code});
        EXPECT_EQ(clear(), Qeapp::eOk) << code;
    }
}

TEST_F(Clear, ADrawingThatSomeoneReads_IsRefusedAndUnchanged)
{
    giveAllForms();
    const auto before = drawing.contents();
    {
        Orvel::NamedObjects reader;
        ASSERT_EQ(reader.openIn(database(), QeDb::kForRead), Qeapp::eOk);
        EXPECT_EQ(clear(), Qeapp::eOpenForRead);
    }
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(Clear, InsideATransactionThatIsAborted_IsUndone)
{
    giveAllForms();
    const auto before = drawing.contents();
    {
        const Orvel::Transaction outer(database()->transactionManager());
        ASSERT_EQ(clear(), Qeapp::eOk);
    }
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
