// A drawing saved by the host, for which the module's decomposition reactor converts it.
#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "frame/application.h"
#include "sweep/scenario.h"
#include "sweep/systems.h"

namespace Tests {
namespace {

constexpr auto kOldVersion = static_cast<QeDb::QeDbDwgVersion>(29);

/// With the module loaded for as long as it takes.
class Save : public Call {
public:
    Save(QeDb::QeDbDwgVersion version, bool toFile) : version_(version), toFile_(toFile)
    {
        EXPECT_EQ(orvelApplication().load(), Qeapp::eOk);
    }
    ~Save() override { EXPECT_EQ(orvelApplication().unload(), Qeapp::eOk); }
    int make(Stage& stage) override
    {
        if (toFile_)
            return Embedded::hostStatus(Embedded::saveDrawing(*stage.database(), stage.drawingFile(), version_,
                                                              Embedded::Overwriting::drawings));
        const Embedded::Expected<std::string> bytes = Embedded::saveDrawingToBytes(*stage.database(), version_);
        bytes_ = bytes.value_or("");
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

Scenario saving(const std::string& name, std::function<Setting()> setting, QeDb::QeDbDwgVersion version,
                bool toFile = false, int expected = 0)
{
    return {.function = "saving a drawing",
            .name = name,
            .setting = std::move(setting),
            .call = calling<Save>(version, toFile),
            .promise = Promise::allOrNothing,
            .expected = expected,
            .survivesHostShortage = false, // the JSON library's destructors allocate
            .answersOutOfMemory = true};
}

Setting savedBefore()
{
    Setting setting = drawingWithGeoData();
    setting.savedDrawing = emptyDrawing().drawing;
    return setting;
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
