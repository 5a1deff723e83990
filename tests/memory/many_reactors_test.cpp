// Registers, notifies and removes very many reactors.
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
    explicit CountingReactor(std::size_t& notifications) : notifications_(notifications) {}
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t* const) override { ++notifications_; }

private:
    std::size_t& notifications_;
};

class ManyReactors : public CoordsysTest {
protected:
    /// The variable ORVEL_REACTORS overrides the number.
    static std::size_t reactorCount()
    {
        const char* const value = std::getenv("ORVEL_REACTORS");
        return value != nullptr ? std::stoul(value) : ORVEL_MANY_REACTORS;
    }

    void addAll()
    {
        for (std::size_t number = 0; number < reactorCount(); ++number) {
            reactors.push_back(std::make_unique<CountingReactor>(notifications));
            ASSERT_EQ(Cs::AddCoordinateSystemReactor(reactors.back().get()), Qeapp::eOk);
        }
    }
    void expectNotifications(std::size_t number)
    {
        notifications = 0;
        Cs::NotifyCoordinateSystemChanged(database(), L"EPSG:25832");
        EXPECT_EQ(notifications, number);
    }

    std::vector<std::unique_ptr<CountingReactor>> reactors;
    std::size_t notifications = 0;
};

TEST_F(ManyReactors, AllReactors_AreNotifiedAndRemovedFirstToLast)
{
    addAll();
    expectNotifications(reactorCount());
    for (const auto& each : reactors)
        ASSERT_EQ(Cs::RemoveCoordinateSystemReactor(each.get()), Qeapp::eOk);
    expectNotifications(0);
}

TEST_F(ManyReactors, AllReactors_AreNotifiedAndRemovedLastToFirst)
{
    addAll();
    expectNotifications(reactorCount());
    for (auto each = reactors.rbegin(); each != reactors.rend(); ++each)
        ASSERT_EQ(Cs::RemoveCoordinateSystemReactor(each->get()), Qeapp::eOk);
    expectNotifications(0);
}

} // namespace
} // namespace Tests
