// Very many registered reactors.
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace Tests {
namespace {

class CountingReactor : public Cs::OrvelCoordinateSystemReactor {
public:
    explicit CountingReactor(std::size_t& heard) : heard_(heard) {}
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t* const) override { ++heard_; }

private:
    std::size_t& heard_;
};

class ManyReactors : public CoordsysTest {
protected:
    /// The variable ORVEL_REACTORS asks for more than an ordinary run has.
    static std::size_t count()
    {
        const char* const wanted = std::getenv("ORVEL_REACTORS");
        return wanted != nullptr ? std::stoul(wanted) : ORVEL_MANY_REACTORS;
    }

    void addAll()
    {
        for (std::size_t number = 0; number < count(); ++number) {
            reactors.push_back(std::make_unique<CountingReactor>(heard));
            ASSERT_EQ(Cs::AddCoordinateSystemReactor(reactors.back().get()), Qeapp::eOk);
        }
    }
    void expectHeardBy(std::size_t number)
    {
        heard = 0;
        Cs::NotifyCoordinateSystemChanged(database(), L"EPSG:25832");
        EXPECT_EQ(heard, number);
    }

    std::vector<std::unique_ptr<CountingReactor>> reactors;
    std::size_t heard = 0;
};

TEST_F(ManyReactors, AllHearANotice_AndAreRemovedFirstToLast)
{
    addAll();
    expectHeardBy(count());
    for (const auto& each : reactors)
        ASSERT_EQ(Cs::RemoveCoordinateSystemReactor(each.get()), Qeapp::eOk);
    expectHeardBy(0);
}

TEST_F(ManyReactors, AllHearANotice_AndAreRemovedLastToFirst)
{
    addAll();
    expectHeardBy(count());
    for (auto each = reactors.rbegin(); each != reactors.rend(); ++each)
        ASSERT_EQ(Cs::RemoveCoordinateSystemReactor(each->get()), Qeapp::eOk);
    expectHeardBy(0);
}

} // namespace
} // namespace Tests
