#include <functional>

#include "support/coordsys_test.h"
#include "support/scoped_document.h"

namespace {

using namespace Tests;

/// Every function that has a database argument, with null for it, and out-parameters that tell whether it wrote.
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

    void expectAnArrayReadingTouchesNothing()
    {
        auto* definitions = formerArray.get();
        EXPECT_EQ(Cs::GetCoordinateSystem(definitions, nullptr, &status), 124);
        EXPECT_EQ(definitions, formerArray.get());
        EXPECT_EQ(status, 77);
    }
    void expectASystemReadingTouchesNothing()
    {
        auto* definition = former.get();
        EXPECT_EQ(Cs::GetCoordinateSystem(definition, &known, nullptr, &status), 124);
        EXPECT_EQ(definition, former.get());
        EXPECT_TRUE(known);
        EXPECT_EQ(status, 77);
    }
    void expectACodeReadingTouchesNothing()
    {
        wchar_t* code = formerCode;
        EXPECT_EQ(Cs::GetCoordinateSystem(code, nullptr), 124);
        EXPECT_EQ(code, formerCode);
    }
    void expectNoAssignment(const wchar_t* code)
    {
        EXPECT_EQ(Cs::SetCoordinateSystem(code, nullptr, &status), 124);
        EXPECT_EQ(status, 77);
        EXPECT_EQ(log, Notices());
    }
    void expectNoAssignmentOfADefinition()
    {
        EXPECT_EQ(Cs::SetCoordinateSystem(former.get(), nullptr, &status), 124);
        EXPECT_EQ(status, 77);
        EXPECT_EQ(log, Notices());
    }
    void expectNoClearing()
    {
        EXPECT_EQ(Cs::ClearCoordinateSystem(nullptr), 124);
        EXPECT_EQ(log, Notices());
    }
};

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_AnArrayReadingTouchesNothing)
{
    expectAnArrayReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_ASystemReadingTouchesNothing)
{
    expectASystemReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_ACodeReadingTouchesNothing)
{
    expectACodeReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_AnAssignmentOfACodeIsRefused)
{
    expectNoAssignment(L"EPSG:25832");
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_TheDatabaseIsMissedBeforeTheCode)
{
    expectNoAssignment(L"MINE:1");
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_AnAssignmentOfADefinitionIsRefused)
{
    expectNoAssignmentOfADefinition();
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_ClearingIsRefused)
{
    expectNoClearing();
}

TEST_F(DatabaseArgument, WithoutAWorkingDatabase_NoFallibleCallIsMade)
{
    Embedded::FaultInjection::watch();
    expectAnArrayReadingTouchesNothing();
    expectASystemReadingTouchesNothing();
    expectACodeReadingTouchesNothing();
    expectNoAssignment(L"EPSG:25832");
    expectNoAssignmentOfADefinition();
    expectNoClearing();
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>());
}

TEST_F(DatabaseArgument, WithoutApplicationServices_AnArrayReadingTouchesNothing)
{
    const ScopedDocument document;
    const ScopedHostParts shutdown({.applicationServices = false});
    expectAnArrayReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutApplicationServices_ASystemReadingTouchesNothing)
{
    const ScopedDocument document;
    const ScopedHostParts shutdown({.applicationServices = false});
    expectASystemReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutApplicationServices_ACodeReadingTouchesNothing)
{
    const ScopedDocument document;
    const ScopedHostParts shutdown({.applicationServices = false});
    expectACodeReadingTouchesNothing();
}

TEST_F(DatabaseArgument, WithoutApplicationServices_AssigningAndClearingAreRefused)
{
    const ScopedDocument document;
    const ScopedHostParts shutdown({.applicationServices = false});
    expectNoAssignment(L"EPSG:25832");
    expectNoAssignmentOfADefinition();
    expectNoClearing();
}

TEST_F(DatabaseArgument, NullOnAssigningACode_MeansTheWorkingDatabase)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, document.database()));
    Orvel::HostString code;
    ASSERT_EQ(Cs::GetCoordinateSystem(code.put(), document.database()), Qeapp::eOk);
    EXPECT_STREQ(code.get(), L"EPSG:25832");
}

TEST_F(DatabaseArgument, NullOnAssigningADefinition_MeansTheWorkingDatabase)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(former.get(), nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, document.database()));
}

TEST_F(DatabaseArgument, NullOnClearing_MeansTheWorkingDatabase)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::ClearCoordinateSystem(nullptr), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(2, document.database()));
}

TEST_F(DatabaseArgument, NullOnReading_MeansTheWorkingDatabase)
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

TEST_F(DatabaseArgument, AGivenDatabase_IsPreferredToTheWorkingOne)
{
    const ScopedDocument document;
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", database()), Qeapp::eOk);
    Orvel::HostString code;
    EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), nullptr), Qeapp::eOk);
    EXPECT_EQ(code.get(), nullptr);
}

TEST_F(DatabaseArgument, AGivenDatabase_NeedsNoApplicationServices)
{
    const ScopedHostParts shutdown({.applicationServices = false});
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", database()), Qeapp::eOk);
}

} // namespace
