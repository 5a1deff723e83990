#include <array>

#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class ExtendedData : public DrawingTest {
protected:
    void SetUp() override
    {
        registerApplication(L"KTN");
        registerApplication(L"ALPHA");
    }

    /// Sets data of the named objects dictionary: group codes, each followed by its value.
    template <class... Values>
    Qeapp::ErrorStatus set(Values... values)
    {
        const ResbufChain chain(qeutBuildList(values..., QeRb::kListEnd));
        return namedObjects(QeDb::kForWrite)->setXData(chain.get());
    }

    std::string get(const wchar_t* application = nullptr)
    {
        const ResbufChain chain(namedObjects()->xData(application));
        return textOf(chain.get());
    }
};

TEST_F(ExtendedData, ObjectWithoutExtendedData_ReturnsNull)
{
    EXPECT_EQ(namedObjects()->xData(), nullptr);
    EXPECT_EQ(namedObjects()->xData(L"KTN"), nullptr);
}

TEST_F(ExtendedData, Data_BeginsWithItsApplication)
{
    ASSERT_EQ(set(1001, L"KTN", 1000, L"code", 1040, 1.5), Qeapp::eOk);
    EXPECT_EQ(get(L"KTN"), "1001:KTN 1000:code 1040:1.5");
}

TEST_F(ExtendedData, ApplicationNames_IgnoreCase)
{
    ASSERT_EQ(set(1001, L"ktn", 1000, L"code"), Qeapp::eOk);
    EXPECT_EQ(get(L"Ktn"), "1001:KTN 1000:code") << "in the spelling of the registration";
}

TEST_F(ExtendedData, DataOfAllApplications_AreOrderedByName)
{
    ASSERT_EQ(set(1001, L"KTN", 1000, L"k", 1001, L"ALPHA", 1000, L"a"), Qeapp::eOk);
    EXPECT_EQ(get(), "1001:ALPHA 1000:a 1001:KTN 1000:k");
}

TEST_F(ExtendedData, DataOfAnotherApplication_StayUnchanged)
{
    ASSERT_EQ(set(1001, L"ALPHA", 1000, L"a"), Qeapp::eOk);
    ASSERT_EQ(set(1001, L"KTN", 1000, L"k"), Qeapp::eOk);
    EXPECT_EQ(get(L"ALPHA"), "1001:ALPHA 1000:a");
}

TEST_F(ExtendedData, NameWithoutData_RemovesTheData)
{
    ASSERT_EQ(set(1001, L"KTN", 1000, L"k"), Qeapp::eOk);
    ASSERT_EQ(set(1001, L"KTN"), Qeapp::eOk);
    EXPECT_EQ(get(), "");
    EXPECT_EQ(set(1001, L"KTN"), Qeapp::eOk) << "also without data";
}

TEST_F(ExtendedData, UnregisteredApplication_IsRefusedAndNothingChanges)
{
    ASSERT_EQ(set(1001, L"KTN", 1000, L"old"), Qeapp::eOk);
    EXPECT_EQ(set(1001, L"KTN", 1000, L"new", 1001, L"NOBODY"), Qeapp::eRegappNotRegistered);
    EXPECT_EQ(get(), "1001:KTN 1000:old");
}

TEST_F(ExtendedData, InvalidChains_AreRefused)
{
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->setXData(nullptr), Qeapp::eInvalidResbuf);
    EXPECT_EQ(set(1000, L"code", 1001, L"KTN"), Qeapp::eInvalidResbuf);
    EXPECT_EQ(set(1001, L"KTN", 300, L"text"), Qeapp::eInvalidResbuf);
    EXPECT_EQ(get(), "");
}

TEST_F(ExtendedData, Chunks_HoldAtMost127Bytes)
{
    std::array<char, 128> bytes{};
    const QeBinaryChunk longest{127, bytes.data()};
    const QeBinaryChunk tooLong{128, bytes.data()};
    EXPECT_EQ(set(1001, L"KTN", 1004, &tooLong), Qeapp::eInvalidResbuf);
    EXPECT_EQ(set(1001, L"KTN", 1004, &longest), Qeapp::eOk);
}

TEST_F(ExtendedData, ObjectThatIsNotOpenForWrite_RefusesData)
{
    const ResbufChain chain(qeutBuildList(1001, L"KTN", 1000, L"code", QeRb::kListEnd));
    EXPECT_EQ(namedObjects()->setXData(chain.get()), Qeapp::eNotOpenForWrite);
    QeDbXrecord homeless;
    EXPECT_EQ(homeless.setXData(chain.get()), Qeapp::eNotInDatabase);
}

TEST_F(ExtendedData, ErasedApplication_HidesItsData)
{
    const QeDbObjectId application = registerApplication(L"LATER");
    ASSERT_EQ(set(1001, L"LATER", 1000, L"code"), Qeapp::eOk);
    erase(application);
    EXPECT_EQ(get(), "");
    EXPECT_EQ(set(1001, L"LATER"), Qeapp::eRegappNotRegistered);
    erase(application, false);
    EXPECT_EQ(get(), "1001:LATER 1000:code");
}

TEST_F(ExtendedData, RenamedApplication_KeepsItsData)
{
    const QeDbObjectId application = registerApplication(L"BEFORE");
    ASSERT_EQ(set(1001, L"BEFORE", 1000, L"code"), Qeapp::eOk);
    EXPECT_EQ(open<QeDbRegAppTableRecord>(application, QeDb::kForWrite)->setName(L"AFTER"), Qeapp::eOk);
    EXPECT_EQ(get(L"BEFORE"), "");
    EXPECT_EQ(get(L"AFTER"), "1001:AFTER 1000:code");
}

TEST_F(ExtendedData, ReturnedChain_IsACopy)
{
    ASSERT_EQ(set(1001, L"KTN", 1000, L"code"), Qeapp::eOk);
    {
        const ResbufChain copy(namedObjects()->xData(L"KTN"));
        copy.get()->rbnext->resval.rstring[0] = L'X';
    }
    EXPECT_EQ(get(L"KTN"), "1001:KTN 1000:code");
}

} // namespace
} // namespace Tests
