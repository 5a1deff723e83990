// The three functions that read a drawing's coordinate system.
#include "coordsys/orvel_coordinate_system.h"
#include "storage/host_holders.h"
#include "storage/library_holder.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"
#include "sweep/status_parameter.h"

namespace Tests {
namespace {

namespace Reading = Zentara::Gis::Orvel::CoordinateSystem;
using Orvel::LibraryObject;

class ReadDefinitions : public Call {
public:
    int make(Fixture& fixture) override
    {
        return Reading::GetCoordinateSystem(definitions_.put(), fixture.database(), &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        expectReported(outcome, status_);
        EXPECT_TRUE(outcome != returning(0) || definitions_) << "success without an array";
    }

private:
    LibraryObject<Reading::DefinitionBaseArray> definitions_;
    StatusParameter status_ = kStatusBefore;
};

/// The status of a failed catalog check is that of the reading before.
class ReadSystem : public Call {
public:
    int make(Fixture& fixture) override
    {
        return Reading::GetCoordinateSystem(definition_.put(), &known_, fixture.database(), &status_);
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_TRUE(outcome == returning(0) || !outcome.returned() || !known_) << "known after a failure";
        EXPECT_FALSE(known_ && !definition_) << "known, and not there";
        if (!definition_)
            expectReported(outcome, status_);
    }

private:
    LibraryObject<Reading::CoordinateReferenceSystemDefinition> definition_;
    bool known_ = true;
    StatusParameter status_ = kStatusBefore;
};

class ReadCode : public Call {
public:
    int make(Fixture& fixture) override { return Reading::GetCoordinateSystem(code_.put(), fixture.database()); }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_TRUE(outcome == returning(0) || !code_) << "a code after a failure";
    }

private:
    Orvel::HostString code_;
};

struct ReadForm {
    std::string name;
    InitialState (*initialState)();
    int definitionResult; // of reading the definition, and of reading the definitions
    int codeResult;
};

const std::vector<ReadForm>& readForms()
{
    static const std::vector<ReadForm> forms{
        {"empty drawing", emptyDrawing, 0, 0},
        {"from GeoData", drawingWithGeoData, 0, 0},
        {"by a legacy code", drawingWithLegacyCode, 0, 0},
        {"from the xrecord", drawingWithAllForms, 0, 0},
        {"of a user's own", drawingWithUsersSystem, 0, Qeapp::eInvalidInput},
        {"unknown legacy code", drawingWithUnknownLegacyCode, Qeapp::eNotApplicable, Qeapp::eNotApplicable},
    };
    return forms;
}

} // namespace

Scenarios readingScenarios()
{
    Scenarios scenarios;
    for (const ReadForm& form : readForms()) {
        scenarios.push_back({.function = "GetCoordinateSystem(array)",
                             .name = form.name,
                             .initialState = form.initialState,
                             .call = calling<ReadDefinitions>(),
                             .expected = form.definitionResult});
        scenarios.push_back({.function = "GetCoordinateSystem(definition)",
                             .name = form.name,
                             .initialState = form.initialState,
                             .call = calling<ReadSystem>(),
                             .expected = form.definitionResult});
        scenarios.push_back({.function = "GetCoordinateSystem(code)",
                             .name = form.name,
                             .initialState = form.initialState,
                             .call = calling<ReadCode>(),
                             .expected = form.codeResult});
    }
    return scenarios;
}

} // namespace Tests
