// The host saves a drawing, and the module's decomposition reactor converts it first.
#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "frame/application.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

constexpr auto kOldVersion = static_cast<QeDb::QeDbDwgVersion>(29);

/// The module is loaded as long as the object lives.
class Save : public Call {
public:
    Save(QeDb::QeDbDwgVersion version, bool toFile) : version_(version), toFile_(toFile)
    {
        EXPECT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    }
    ~Save() override { EXPECT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk); }
    int make(Fixture& fixture) override
    {
        if (toFile_)
            return Embedded::hostStatus(Embedded::saveDrawing(*fixture.database(), fixture.drawingFile(), version_,
                                                              Embedded::Overwriting::drawings));
        Embedded::Expected<std::string> bytes = Embedded::saveDrawingToBytes(*fixture.database(), version_);
        if (bytes)
            bytes_ = *std::move(bytes);
        return Embedded::hostStatus(bytes);
    }
    void expectOutParameters(const Outcome& outcome) const override
    {
        EXPECT_FALSE(outcome == returning(0) && !toFile_ && bytes_.empty()) << "nothing was written";
    }

private:
    QeDb::QeDbDwgVersion version_;
    bool toFile_;
    std::string bytes_;
};

Scenario saving(const std::string& name, std::function<InitialState()> initialState, QeDb::QeDbDwgVersion version,
                bool toFile = false, int expected = 0)
{
    return {.function = "saving a drawing",
            .name = name,
            .initialState = std::move(initialState),
            .call = calling<Save>(version, toFile),
            .promise = Promise::allOrNothing,
            .expected = expected,
            .survivesHostShortage = false, // the JSON library's destructors allocate
            .catchesBadAlloc = true};
}

InitialState savedBefore()
{
    InitialState initialState = drawingWithGeoData();
    initialState.savedDrawing = emptyDrawing().drawing;
    return initialState;
}

} // namespace

Scenarios savingScenarios()
{
    return {
        saving("for an older version", drawingWithGeoData, kOldVersion),
        saving("for an older version again", drawingWithAllForms, kOldVersion),
        saving("refused conversion", drawingWithUnknownLegacyCode, kOldVersion, false, Qeapp::eNotApplicable),
        saving("over a file", savedBefore, kOldVersion, true),
    };
}

} // namespace Tests
