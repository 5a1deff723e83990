// The list of reactors, and the flag that all clients share.
#include "coordsys/orvel_coordinate_system.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

namespace Reactors = Zentara::Gis::Orvel::CoordinateSystem;

/// Registers other reactors first, so that the list has to grow.
class AddReactor : public Call {
public:
    explicit AddReactor(std::size_t others) : others_(others, CountingReactor(Veto::none))
    {
        for (CountingReactor& other : others_)
            EXPECT_EQ(Reactors::AddCoordinateSystemReactor(&other), Qeapp::eOk);
    }
    ~AddReactor() override
    {
        for (CountingReactor& other : others_)
            EXPECT_EQ(Reactors::RemoveCoordinateSystemReactor(&other), Qeapp::eOk);
        const bool isRegistered = Reactors::RemoveCoordinateSystemReactor(&added_) == Qeapp::eOk;
        EXPECT_EQ(isRegistered, wasAdded_);
    }
    int make(Fixture& /*fixture*/) override
    {
        const Qeapp::ErrorStatus result = Reactors::AddCoordinateSystemReactor(&added_);
        wasAdded_ = result == Qeapp::eOk;
        return result;
    }

private:
    std::vector<CountingReactor> others_;
    CountingReactor added_{Veto::none};
    bool wasAdded_ = false;
};

/// `wasAdded` says whether the reactor is registered before; `others` is the number of other reactors.
class RemoveReactor : public Call {
public:
    RemoveReactor(bool wasAdded, std::size_t others) : others_(others, CountingReactor(Veto::none))
    {
        if (wasAdded) {
            EXPECT_EQ(Reactors::AddCoordinateSystemReactor(&reactor_), Qeapp::eOk);
        }
        for (CountingReactor& other : others_)
            EXPECT_EQ(Reactors::AddCoordinateSystemReactor(&other), Qeapp::eOk);
    }
    ~RemoveReactor() override
    {
        for (CountingReactor& other : others_)
            EXPECT_EQ(Reactors::RemoveCoordinateSystemReactor(&other), Qeapp::eOk);
    }
    int make(Fixture& /*fixture*/) override { return Reactors::RemoveCoordinateSystemReactor(&reactor_); }

private:
    std::vector<CountingReactor> others_;
    CountingReactor reactor_{Veto::none};
};

class SetFlag : public Call {
public:
    explicit SetFlag(bool value) : value_(value) {}
    ~SetFlag() override { EXPECT_EQ(Reactors::SetInitializeGeodataParameters(false), Qeapp::eOk); }
    int make(Fixture& /*fixture*/) override { return Reactors::SetInitializeGeodataParameters(value_); }

private:
    bool value_;
};

class GetFlag : public Call {
public:
    explicit GetFlag(bool value) : value_(value), read_(!value)
    {
        EXPECT_EQ(Reactors::SetInitializeGeodataParameters(value), Qeapp::eOk);
    }
    ~GetFlag() override { EXPECT_EQ(Reactors::SetInitializeGeodataParameters(false), Qeapp::eOk); }
    int make(Fixture& /*fixture*/) override { return Reactors::GetInitializeGeodataParameters(read_); }
    void expectOutParameters(const Outcome& /*outcome*/) const override { EXPECT_EQ(read_, value_); }

private:
    bool value_;
    bool read_;
};

/// Adds the fixture's reactor, which is registered already.
class AddRegisteredReactor : public Call {
public:
    int make(Fixture& fixture) override { return Reactors::AddCoordinateSystemReactor(&fixture.reactor()); }
};

Scenario listScenario(const std::string& function, const std::string& name, std::function<std::unique_ptr<Call>()> call)
{
    return {.function = function,
            .name = name,
            .initialState = emptyDrawing,
            .call = std::move(call),
            .catchesBadAlloc = true};
}

/// A scenario in which nothing can fail.
Scenario infallible(const std::string& function, const std::string& name, std::function<std::unique_ptr<Call>()> call,
                    int expected = Qeapp::eOk)
{
    Scenario scenario = listScenario(function, name, std::move(call));
    scenario.initialState = [] { return withReactor(emptyDrawing()); };
    scenario.canFail = false;
    scenario.expected = expected;
    return scenario;
}

} // namespace

Scenarios reactorListScenarios()
{
    const std::string adding = "AddCoordinateSystemReactor";
    const std::string removing = "RemoveCoordinateSystemReactor";
    return {
        listScenario(adding, "first", calling<AddReactor>(0U)),
        listScenario(adding, "third", calling<AddReactor>(2U)),
        listScenario(adding, "fifth", calling<AddReactor>(4U)),
        infallible(adding, "twice", calling<AddRegisteredReactor>(), Qeapp::eInvalidInput),
        infallible(removing, "one of two", calling<RemoveReactor>(true, 0U)),
        infallible(removing, "one of six", calling<RemoveReactor>(true, 4U)),
        infallible(removing, "not registered", calling<RemoveReactor>(false, 1U), Qeapp::eInvalidInput),
        infallible("SetInitializeGeodataParameters", "to true", calling<SetFlag>(true)),
        infallible("SetInitializeGeodataParameters", "to false", calling<SetFlag>(false)),
        infallible("GetInitializeGeodataParameters", "true", calling<GetFlag>(true)),
        infallible("GetInitializeGeodataParameters", "false", calling<GetFlag>(false)),
    };
}

} // namespace Tests
