#include <gtest/gtest.h>

#include "coordsys/orvel_coordinate_system.h"

namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

bool flag()
{
    bool value = false;
    EXPECT_EQ(Cs::GetInitializeGeodataParameters(value), Qeapp::eOk);
    return value;
}

/// Read before any test can set it.
const bool flagAtStart = [] {
    bool value = true;
    static_cast<void>(Cs::GetInitializeGeodataParameters(value)); // always succeeds
    return value;
}();

class GeodataInitialization : public testing::Test {
protected:
    ~GeodataInitialization() override
    {
        static_cast<void>(Cs::SetInitializeGeodataParameters(false));
    } // always succeeds
};

TEST_F(GeodataInitialization, IsFalseBeforeItIsSet)
{
    EXPECT_FALSE(flagAtStart);
}

TEST_F(GeodataInitialization, IsWhatWasSetLast)
{
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(flag());
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(false), Qeapp::eOk);
    EXPECT_FALSE(flag());
}

TEST_F(GeodataInitialization, StaysAsItIsWhenSetAgain)
{
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(flag());
}

TEST_F(GeodataInitialization, ReadingDoesNotChangeIt)
{
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(flag());
    EXPECT_TRUE(flag());
}

} // namespace
