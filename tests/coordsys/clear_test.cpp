#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

class Clear : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus clear() { return Cs::ClearCoordinateSystem(database()); }
    /// Makes the call fail and expects the result, an unchanged drawing and no notice but the question.
    void expectUnchangedWhenFailing(const char* call, int code, int result)
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

TEST_F(Clear, Clearing_RemovesEveryStoredForm)
{
    storeAllForms(kAssignedCode);
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(Clear, Clearing_AsksAndNotifiesWithANullName)
{
    storeAllForms(kAssignedCode);
    ASSERT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::changed, std::nullopt}}));
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(2, database()));
}

TEST_F(Clear, EmptyDrawing_IsClearedSuccessfully)
{
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::changed, std::nullopt}}));
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(Clear, ClearedDrawing_ReadsAsNoCoordinateSystem)
{
    storeAllForms(kAssignedCode);
    ASSERT_EQ(clear(), Qeapp::eOk);
    Orvel::HostString code;
    EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), database()), Qeapp::eOk);
    EXPECT_EQ(code.get(), nullptr);
}

TEST_F(Clear, Clearing_NeedsNoReactors)
{
    storeAllForms(kAssignedCode);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(Clear, Veto_ChangesNothing)
{
    storeAllForms(kAssignedCode);
    const auto before = drawing.contents();
    reactor.answer = [](const Notice&) { return false; };
    EXPECT_EQ(clear(), 325);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt}, {Event::vetoed, std::nullopt}}));
}

TEST_F(Clear, FailingStartOfTheTransaction_Returns8)
{
    storeAllForms(kAssignedCode);
    expectUnchangedWhenFailing("QeDbTransactionManager::startTransaction", 6, 8);
}

TEST_F(Clear, HostFailure_IsReturnedAndChangesNothing)
{
    storeAllForms(kAssignedCode);
    expectUnchangedWhenFailing("QeDbDatabase::getRegAppTable", 31, 31);
    expectUnchangedWhenFailing("QeDbObject::setXData", 40, 40);
    expectUnchangedWhenFailing("QeDbDictionary::remove", 33, 33);
    expectUnchangedWhenFailing("qedbGetGeoDataObjId", 3, 3);
    expectUnchangedWhenFailing("qedbOpenQeDbObject", 30, 30);
    expectUnchangedWhenFailing("QeDbGeoData::setCoordinateSystem", 999, 999);
    expectUnchangedWhenFailing("QeDbTransactionManager::endTransaction", 998, 998);
}

TEST_F(Clear, LookupThatReturns16Or22_Succeeds)
{
    for (const int code : {16, 22}) {
        const ScopedFault fault({.call = "qedbGetGeoDataObjId", .code = code});
        EXPECT_EQ(clear(), Qeapp::eOk) << code;
    }
}

TEST_F(Clear, DrawingThatIsOpenForRead_IsUnchanged)
{
    storeAllForms(kAssignedCode);
    const auto before = drawing.contents();
    {
        Orvel::NamedObjects reader;
        ASSERT_EQ(reader.openIn(database(), QeDb::kForRead), Qeapp::eOk);
        EXPECT_EQ(clear(), Qeapp::eOpenForRead);
    }
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(Clear, ClearingInAnAbortedTransaction_IsUndone)
{
    storeAllForms(kAssignedCode);
    const auto before = drawing.contents();
    {
        const Orvel::Transaction outer(database()->transactionManager());
        ASSERT_EQ(clear(), Qeapp::eOk);
    }
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
