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
    int make(Stage& stage) override
    {
        return Assigning::SetCoordinateSystem(definition_.get(), stage.database(), &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override { expectReported(outcome, status_); }

private:
    SystemHolder definition_;
    StatusParameter status_ = kStatusBefore;
};

class AssignCode : public Call {
public:
    explicit AssignCode(const wchar_t* code) : code_(code) {}
    int make(Stage& stage) override { return Assigning::SetCoordinateSystem(code_, stage.database(), &status_); }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_TRUE(status_ == 0 || (status_ == 52 && outcome != returning(0))) << "status " << status_;
    }

private:
    const wchar_t* code_;
    StatusParameter status_ = kStatusBefore;
};

Setting heardEmptyDrawing()
{
    return heard(emptyDrawing());
}

Setting heardGeoData()
{
    return heard(drawingWithGeoData());
}

Setting heardAllForms()
{
    return heard(drawingWithAllForms());
}

Setting vetoedAtOnce()
{
    return heard(drawingWithAllForms(), Veto::everything);
}

Setting vetoedAtTheRemoval()
{
    return heard(drawingWithAllForms(), Veto::removals);
}

struct Assignment {
    std::string name;
    Setting (*setting)();
    const wchar_t* code;
    int expected;
};

const std::vector<Assignment>& assignments()
{
    static const std::vector<Assignment> all{
        {"first use", heardEmptyDrawing, kOtherCode, 0},
        {"replacement", heardGeoData, kOtherCode, 0},
        {"over all forms", heardAllForms, kOtherCode, 0},
        {"removal", heardAllForms, nullptr, 0},
        {"veto", vetoedAtOnce, kOtherCode, Qeapp::eVetoed},
        {"veto of the removal", vetoedAtTheRemoval, kOtherCode, Qeapp::eVetoed},
    };
    return all;
}

} // namespace

Scenarios assigningScenarios()
{
    Scenarios scenarios{{.function = "SetCoordinateSystem(code)",
                         .name = "unknown code",
                         .setting = heardGeoData,
                         .call = calling<AssignCode>(L"NOBODYS:1"),
                         .promise = Promise::readsOnly,
                         .expected = Qeapp::eInvalidInput}};
    for (const Assignment& assignment : assignments()) {
        scenarios.push_back({.function = "SetCoordinateSystem(definition)",
                             .name = assignment.name,
                             .setting = assignment.setting,
                             .call = calling<AssignDefinition>(assignment.code),
                             .promise = Promise::removedOrNothing,
                             .expected = assignment.expected});
        scenarios.push_back({.function = "SetCoordinateSystem(code)",
                             .name = assignment.name,
                             .setting = assignment.setting,
                             .call = calling<AssignCode>(assignment.code),
                             .promise = Promise::removedOrNothing,
                             .expected = assignment.expected});
    }
    return scenarios;
}

} // namespace Tests
