#include <functional>

#include "support/coordsys_test.h"
#include "support/scoped_document.h"

namespace {

using namespace Tests;

/// Calls every function with a null database. Out-parameters with known values show whether it wrote them.
class DatabaseArgument : public CoordsysTest {
protected:
    SystemHolder former = catalogSystem(L"EPSG:2263");
    ArrayHolder formerArray;
    wchar_t formerCode[7] = L"former";
    bool known = true;

    void SetUp() override
    {
        ASSERT_EQ(Library::DefinitionBaseArray::CreateInstance(formerArray.put()), Library::statusOk);
        ASSERT_EQ(reactor.add(), Qeapp::eOk);
    }

    void expectArrayNotRead()
    {
        auto* definitions = formerArray.get();
        EXPECT_EQ(Cs::GetCoordinateSystem(definitions, nullptr, &status), 124);
        EXPECT_EQ(definitions, formerArray.get());
        EXPECT_EQ(status, 77);
    }
    void expectSystemNotRead()
    {
        auto* definition = former.get();
        EXPECT_EQ(Cs::GetCoordinateSystem(definition, &known, nullptr, &status), 124);
        EXPECT_EQ(definition, former.get());
        EXPECT_TRUE(known);
        EXPECT_EQ(status, 77);
    }
    void expectCodeNotRead()
    {
        wchar_t* code = formerCode;
        EXPECT_EQ(Cs::GetCoordinateSystem(code, nullptr), 124);
        EXPECT_EQ(code, formerCode);
    }
    void expectNotAssigned(const wchar_t* code)
    {
        EXPECT_EQ(Cs::SetCoordinateSystem(code, nullptr, &status), 124);
        EXPECT_EQ(status, 77);
        EXPECT_EQ(log, Notices());
    }
    void expectDefinitionNotAssigned()
    {
        EXPECT_EQ(Cs::SetCoordinateSystem(former.get(), nullptr, &status), 124);
        EXPECT_EQ(status, 77);
        EXPECT_EQ(log, Notices());
    }
    void expectNotCleared()
    {
        EXPECT_EQ(Cs::ClearCoordinateSystem(nullptr), 124);
        EXPECT_EQ(log, Notices());
    }
    void expectNoDatabase()
    {
        expectArrayNotRead();
        expectSystemNotRead();
        expectCodeNotRead();
        expectNotAssigned(L"EPSG:25832");
        expectDefinitionNotAssigned();
        expectNotCleared();
    }
};

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_AnUnknownCodeReturns124)
{
    expectNotAssigned(L"MINE:1");
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_EveryFunctionReturns124WithoutAFallibleCall)
{
    Embedded::FaultInjection::watch();
    expectNoDatabase();
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>());
}

TEST_F(DatabaseArgument, WithoutApplicationServices_EveryFunctionReturns124)
{
    const ScopedDocument document;
    const ScopedHostParts shutdown({.applicationServices = false});
    expectNoDatabase();
}

TEST_F(DatabaseArgument, NullDatabase_MeansTheWorkingDatabaseForACode)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, document.database()));
    Orvel::HostString code;
    ASSERT_EQ(Cs::GetCoordinateSystem(code.put(), document.database()), Qeapp::eOk);
    EXPECT_STREQ(code.get(), L"EPSG:25832");
}

TEST_F(DatabaseArgument, NullDatabase_MeansTheWorkingDatabaseForADefinition)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(former.get(), nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, document.database()));
}

TEST_F(DatabaseArgument, NullDatabase_MeansTheWorkingDatabaseForClearing)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::ClearCoordinateSystem(nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(2, document.database()));
}

TEST_F(DatabaseArgument, NullDatabase_MeansTheWorkingDatabaseForReading)
{
    const ScopedDocument document;
    ASSERT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", nullptr), Qeapp::eOk);
    ArrayHolder definitions;
    SystemHolder definition;
    Orvel::HostString code;
    EXPECT_EQ(Cs::GetCoordinateSystem(definitions.put(), nullptr), Qeapp::eOk);
    EXPECT_EQ(describe(definitions).size(), 3U);
    EXPECT_EQ(Cs::GetCoordinateSystem(definition.put(), nullptr, nullptr), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), nullptr), Qeapp::eOk);
    EXPECT_STREQ(code.get(), L"EPSG:25832");
}

TEST_F(DatabaseArgument, GivenDatabase_IsUsedInsteadOfTheWorkingDatabase)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", database()), Qeapp::eOk);
    Orvel::HostString code;
    EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), nullptr), Qeapp::eOk);
    EXPECT_EQ(code.get(), nullptr);
}

TEST_F(DatabaseArgument, GivenDatabase_NeedsNoApplicationServices)
{
    const ScopedHostParts shutdown({.applicationServices = false});
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", database()), Qeapp::eOk);
}

} // namespace
