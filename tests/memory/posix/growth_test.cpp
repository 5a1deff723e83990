// Uses one drawing many times. The memory of the host, the module and the library must not grow.
#include <cstdlib>
#include <functional>
#include <iostream>

#include "coordsys/orvel_transformation_config.h"
#include "memory/posix/allocated_bytes.h"
#include "storage/host_holders.h"
#include "support/coordsys_test.h"
#include "support/scoped_document.h"

namespace Tests {
namespace {

constexpr auto kTheDrawing = Cs::CsTransformationConfigTargetType::Drawing;
constexpr int kRoundsToWarmUp = 50;
/// The library may still fill its caches after the first rounds. A leak of one byte a round would exceed this.
constexpr std::size_t kMaxGrowthInBytes = 4096;

/// The variable ORVEL_ROUNDS overrides the number.
int roundCount()
{
    const char* const value = std::getenv("ORVEL_ROUNDS");
    return value != nullptr ? std::atoi(value) : ORVEL_MEMORY_ROUNDS;
}

class Growth : public PlatformTest {
protected:
    void expectNoGrowth(const std::function<void()>& round)
    {
        for (int count = 0; count < kRoundsToWarmUp; ++count)
            round();
        const Embedded::ResourceCounts resources = Embedded::ResourceCounters::now();
        const std::size_t before = allocatedBytes();
        for (int count = 0; count < roundCount() && !HasFailure(); ++count)
            round();
        EXPECT_EQ(Embedded::ResourceCounters::difference(resources, Embedded::ResourceCounters::now()), "");
        const std::size_t now = allocatedBytes();
        EXPECT_LE(now, before + kMaxGrowthInBytes);
        std::cout << roundCount() << " rounds: " << static_cast<long>(now) - static_cast<long>(before)
                  << " bytes more\n";
    }
    void assign(const wchar_t* code) { EXPECT_EQ(Cs::SetCoordinateSystem(code, drawing.database()), Qeapp::eOk); }
    void expectCode(const wchar_t* expected)
    {
        Orvel::HostString code;
        EXPECT_EQ(Cs::GetCoordinateSystem(code.put(), drawing.database()), Qeapp::eOk);
        EXPECT_STREQ(code.get(), expected);
    }
    void convert(QeDb::QeDbDwgVersion version)
    {
        Library::Status status = kUntouched;
        EXPECT_EQ(Cs::ApplyCoordinateSystemStorageVersion(drawing.database(), version, &status), Qeapp::eOk);
    }

    ScopedDocument drawing;
};

TEST_F(Growth, AssigningReadingConvertingAndClearing_LeaksNothing)
{
    bool odd = false;
    expectNoGrowth([&] {
        odd = !odd;
        const wchar_t* const code = odd ? L"EPSG:25832" : L"EPSG:27700";
        assign(code);
        expectCode(code);
        convert(static_cast<QeDb::QeDbDwgVersion>(27));
        expectCode(code);
        convert(QeDb::kCurrentDwg);
        EXPECT_EQ(Cs::ClearCoordinateSystem(drawing.database()), Qeapp::eOk);
    });
}

TEST_F(Growth, ReplacingTheConfiguration_LeaksNothing)
{
    const std::wstring text(1000, L'x');
    expectNoGrowth([&] {
        EXPECT_TRUE(Cs::SetCsTransformationConfig(text.c_str(), kTheDrawing));
        Orvel::HostString read;
        ASSERT_TRUE(Cs::GetCsTransformationConfig(read.put(), kTheDrawing));
        EXPECT_EQ(read.get(), text);
        EXPECT_TRUE(Cs::ClearCsTransformationConfig(kTheDrawing));
    });
}

TEST_F(Growth, AbortedConversion_LeaksNothing)
{
    QeDbTransactionManager& transactions = *drawing.database()->transactionManager();
    assign(L"EPSG:25832");
    expectNoGrowth([&] {
        EXPECT_NE(transactions.startTransaction(), nullptr);
        convert(static_cast<QeDb::QeDbDwgVersion>(27));
        EXPECT_EQ(transactions.abortTransaction(), Qeapp::eOk);
    });
}

} // namespace
} // namespace Tests
