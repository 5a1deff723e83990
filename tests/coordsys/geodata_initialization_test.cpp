#include <gtest/gtest.h>

#include "coordsys/orvel_coordinate_system.h"

namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

bool readFlag()
{
    bool value = false;
    EXPECT_EQ(Cs::GetInitializeGeodataParameters(value), Qeapp::eOk);
    return value;
}

/// The flag before any test sets it.
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

TEST_F(GeodataInitialization, IsFalseAtFirst)
{
    EXPECT_FALSE(flagAtStart);
}

TEST_F(GeodataInitialization, HasTheLastSetValue)
{
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(readFlag());
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(false), Qeapp::eOk);
    EXPECT_FALSE(readFlag());
}

TEST_F(GeodataInitialization, IsUnchangedWhenSetToTheSameValue)
{
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(readFlag());
}

TEST_F(GeodataInitialization, IsUnchangedByReading)
{
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    EXPECT_TRUE(readFlag());
    EXPECT_TRUE(readFlag());
}

} // namespace
