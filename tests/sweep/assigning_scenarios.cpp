// The two functions that assign a coordinate system.
#include "coordsys/orvel_coordinate_system.h"
#include "support/library_definitions.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"
#include "sweep/status_parameter.h"

namespace Tests {
namespace {

namespace Assigning = Zentara::Gis::Orvel::CoordinateSystem;

/// The definition outlives the call that borrows it.
class AssignDefinition : public Call {
public:
    explicit AssignDefinition(const wchar_t* code) : definition_(code != nullptr ? catalogSystem(code) : SystemHolder())
    {
    }
    int make(Fixture& fixture) override
    {
        return Assigning::SetCoordinateSystem(definition_.get(), fixture.database(), &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override { expectReported(outcome, status_); }

private:
    SystemHolder definition_;
    StatusParameter status_ = kStatusBefore;
};

class AssignCode : public Call {
public:
    explicit AssignCode(const wchar_t* code) : code_(code) {}
    int make(Fixture& fixture) override { return Assigning::SetCoordinateSystem(code_, fixture.database(), &status_); }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_TRUE(status_ == 0 || (status_ == 52 && outcome != returning(0))) << "status " << status_;
    }

private:
    const wchar_t* code_;
    StatusParameter status_ = kStatusBefore;
};

InitialState emptyDrawingWithReactor()
{
    return withReactor(emptyDrawing());
}

InitialState geoDataWithReactor()
{
    return withReactor(drawingWithGeoData());
}

InitialState allFormsWithReactor()
{
    return withReactor(drawingWithAllForms());
}

InitialState vetoOfEverything()
{
    return withReactor(drawingWithAllForms(), Veto::everything);
}

InitialState vetoOfTheRemoval()
{
    return withReactor(drawingWithAllForms(), Veto::removals);
}

struct Assignment {
    std::string name;
    InitialState (*initialState)();
    const wchar_t* code;
    int expected;
};

const std::vector<Assignment>& assignments()
{
    static const std::vector<Assignment> all{
        {"first use", emptyDrawingWithReactor, kOtherCode, 0},
        {"replacement", geoDataWithReactor, kOtherCode, 0},
        {"over all forms", allFormsWithReactor, kOtherCode, 0},
        {"removal", allFormsWithReactor, nullptr, 0},
        {"veto", vetoOfEverything, kOtherCode, Qeapp::eVetoed},
        {"veto of the removal", vetoOfTheRemoval, kOtherCode, Qeapp::eVetoed},
    };
    return all;
}

} // namespace

Scenarios assigningScenarios()
{
    Scenarios scenarios{{.function = "SetCoordinateSystem(code)",
                         .name = "unknown code",
                         .initialState = geoDataWithReactor,
                         .call = calling<AssignCode>(L"NOBODYS:1"),
                         .promise = Promise::readsOnly,
                         .expected = Qeapp::eInvalidInput},
                        {.function = "SetCoordinateSystem(code)",
                         .name = "removal by an empty code",
                         .initialState = allFormsWithReactor,
                         .call = calling<AssignCode>(L""),
                         .promise = Promise::removedOrNothing}};
    for (const Assignment& assignment : assignments()) {
        scenarios.push_back({.function = "SetCoordinateSystem(definition)",
                             .name = assignment.name,
                             .initialState = assignment.initialState,
                             .call = calling<AssignDefinition>(assignment.code),
                             .promise = Promise::removedOrNothing,
                             .expected = assignment.expected});
        scenarios.push_back({.function = "SetCoordinateSystem(code)",
                             .name = assignment.name,
                             .initialState = assignment.initialState,
                             .call = calling<AssignCode>(assignment.code),
                             .promise = Promise::removedOrNothing,
                             .expected = assignment.expected});
    }
    return scenarios;
}

} // namespace Tests
