// The functions that read, replace and empty a transformation configuration.
#include "coordsys/orvel_transformation_config.h"
#include "storage/host_holders.h"
#include "sweep/configurations.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

using Target = Cs::CsTransformationConfigTargetType;

const std::wstring& oneElement()
{
    static const std::wstring text = elementOf(L"EPSG:4275", L"EPSG:4326", L"NTF to WGS 84 (1)");
    return text;
}

const std::wstring& otherElement()
{
    static const std::wstring text = elementOf(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)", 2, L"a longer note");
    return text;
}

/// What was read is given back on true alone; else it is a text of the module's own.
class ReadConfiguration : public Call {
public:
    explicit ReadConfiguration(Target target) : target_(target) {}
    ~ReadConfiguration() override
    {
        if (read_)
            qeutDelBuffer(text_);
    }
    int make(Stage& /*stage*/) override
    {
        read_ = Cs::GetCsTransformationConfig(text_, target_);
        return resultOf(read_);
    }
    void expectOutParameters(const Outcome& /*outcome*/) const override
    {
        ASSERT_NE(text_, nullptr);
        EXPECT_TRUE(read_ || *text_ == L'\0') << "a text that nobody releases";
    }

private:
    Target target_;
    wchar_t* text_ = nullptr;
    bool read_ = false;
};

class ReplaceConfiguration : public Call {
public:
    ReplaceConfiguration(Target target, std::wstring text) : target_(target), text_(std::move(text)) {}
    int make(Stage& /*stage*/) override { return resultOf(Cs::SetCsTransformationConfig(text_.c_str(), target_)); }

private:
    Target target_;
    std::wstring text_;
};

class EmptyConfiguration : public Call {
public:
    explicit EmptyConfiguration(Target target) : target_(target) {}
    int make(Stage& /*stage*/) override { return resultOf(Cs::ClearCsTransformationConfig(target_)); }

private:
    Target target_;
};

Setting configured()
{
    return heard(configuredDrawing(oneElement()));
}

Setting unconfigured()
{
    return heard(emptyDrawing());
}

Setting lockedElsewhere()
{
    Setting setting = configured();
    setting.isLockedElsewhere = true;
    return setting;
}

Setting withSettingsFile()
{
    return heard(configuredUser({oneElement()}));
}

Setting withRegistry(std::vector<std::wstring> values)
{
    Setting setting = heard(emptyDrawing());
    setting.usesRegistry = true;
    setting.registryValues = std::move(values);
    return setting;
}

Scenario reading(const std::string& name, Setting (*setting)(), Target target, int expected = kYes)
{
    return {.function = "GetCsTransformationConfig",
            .name = name,
            .setting = setting,
            .call = calling<ReadConfiguration>(target),
            .expected = expected};
}

Scenario replacing(const std::string& name, Setting (*setting)(), Target target, Promise promise, int expected = kYes)
{
    return {.function = "SetCsTransformationConfig",
            .name = name,
            .setting = setting,
            .call = calling<ReplaceConfiguration>(target, oneElement() + otherElement()),
            .promise = promise,
            .expected = expected};
}

Scenario emptying(const std::string& name, std::function<Setting()> setting, Target target, Promise promise,
                  int expected = kYes)
{
    return {.function = "ClearCsTransformationConfig",
            .name = name,
            .setting = std::move(setting),
            .call = calling<EmptyConfiguration>(target),
            .promise = promise,
            .expected = expected};
}

} // namespace

Scenarios configurationScenarios()
{
    const std::vector<std::wstring> three{oneElement(), otherElement(), oneElement()};
    return {
        reading("of the drawing", configured, Target::Drawing),
        reading("of a drawing without one", unconfigured, Target::Drawing, kNo),
        reading("of the user", withSettingsFile, Target::User),
        reading("of a user without one", unconfigured, Target::User, kNo),
        replacing("first of the drawing", unconfigured, Target::Drawing, Promise::formerOrNew),
        replacing("another of the drawing", configured, Target::Drawing, Promise::formerOrNew),
        replacing("locked elsewhere", lockedElsewhere, Target::Drawing, Promise::formerOrNew, kNo),
        replacing("first of the user", unconfigured, Target::User, Promise::partsMayRemain),
        replacing("another of the user", withSettingsFile, Target::User, Promise::partsMayRemain),
        emptying("drawing without one", unconfigured, Target::Drawing, Promise::formerOrNew),
        emptying("drawing", configured, Target::Drawing, Promise::formerOrNew),
        emptying("locked elsewhere", lockedElsewhere, Target::Drawing, Promise::formerOrNew, kNo),
        emptying(
            "user without one", [] { return withRegistry({}); }, Target::User, Promise::partsMayRemain),
        emptying(
            "user", [=] { return withRegistry(three); }, Target::User, Promise::partsMayRemain),
    };
}

} // namespace Tests
