// The functions that read, replace and empty a transformation configuration.
#include "coordsys/orvel_transformation_config.h"
#include "storage/host_holders.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"
#include "transformation/transformation_test.h"

namespace Tests {
namespace {

using Target = Cs::CsTransformationConfigTargetType;

const std::wstring& oneElement()
{
    static const std::wstring text = itemElement(L"EPSG:4275", L"EPSG:4326", L"NTF to WGS 84 (1)");
    return text;
}

const std::wstring& otherElement()
{
    static const std::wstring text =
        itemElement(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)", 2, L"a longer note");
    return text;
}

/// Releases the text only when the function returned true; otherwise the text is the module's own.
class ReadConfiguration : public Call {
public:
    explicit ReadConfiguration(Target target) : target_(target) {}
    ~ReadConfiguration() override
    {
        if (read_)
            qeutDelBuffer(text_);
    }
    int make(Fixture& /*fixture*/) override
    {
        read_ = Cs::GetCsTransformationConfig(text_, target_);
        return asResult(read_);
    }
    void expectOutParameters(const Outcome& /*outcome*/) const override
    {
        ASSERT_NE(text_, nullptr);
        EXPECT_TRUE(read_ || *text_ == L'\0') << "the text would leak";
    }

private:
    Target target_;
    wchar_t* text_ = nullptr;
    bool read_ = false;
};

class ReplaceConfiguration : public Call {
public:
    ReplaceConfiguration(Target target, std::wstring text) : target_(target), text_(std::move(text)) {}
    int make(Fixture& /*fixture*/) override { return asResult(Cs::SetCsTransformationConfig(text_.c_str(), target_)); }

private:
    Target target_;
    std::wstring text_;
};

class EmptyConfiguration : public Call {
public:
    explicit EmptyConfiguration(Target target) : target_(target) {}
    int make(Fixture& /*fixture*/) override { return asResult(Cs::ClearCsTransformationConfig(target_)); }

private:
    Target target_;
};

InitialState configured()
{
    return withReactor(configuredDrawing(oneElement()));
}

InitialState unconfigured()
{
    return withReactor(emptyDrawing());
}

InitialState lockedElsewhere()
{
    InitialState initialState = configured();
    initialState.isLockedElsewhere = true;
    return initialState;
}

InitialState withSettingsFile()
{
    return withReactor(configuredUser({oneElement()}));
}

InitialState withRegistry(std::vector<std::wstring> values)
{
    InitialState initialState = withReactor(emptyDrawing());
    initialState.usesRegistry = true;
    initialState.registryValues = std::move(values);
    return initialState;
}

Scenario reading(const std::string& name, InitialState (*initialState)(), Target target, int expected = kTrue)
{
    return {.function = "GetCsTransformationConfig",
            .name = name,
            .initialState = initialState,
            .call = calling<ReadConfiguration>(target),
            .expected = expected};
}

Scenario replacing(const std::string& name, InitialState (*initialState)(), Target target, Promise promise,
                   int expected = kTrue)
{
    return {.function = "SetCsTransformationConfig",
            .name = name,
            .initialState = initialState,
            .call = calling<ReplaceConfiguration>(target, oneElement() + otherElement()),
            .promise = promise,
            .expected = expected};
}

Scenario emptying(const std::string& name, std::function<InitialState()> initialState, Target target, Promise promise,
                  int expected = kTrue)
{
    return {.function = "ClearCsTransformationConfig",
            .name = name,
            .initialState = std::move(initialState),
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
        reading("of a drawing without one", unconfigured, Target::Drawing, kFalse),
        reading("of the user", withSettingsFile, Target::User),
        reading("of a user without one", unconfigured, Target::User, kFalse),
        replacing("first of the drawing", unconfigured, Target::Drawing, Promise::formerOrNew),
        replacing("another of the drawing", configured, Target::Drawing, Promise::formerOrNew),
        replacing("locked elsewhere", lockedElsewhere, Target::Drawing, Promise::formerOrNew, kFalse),
        replacing("first of the user", unconfigured, Target::User, Promise::partsMayRemain),
        replacing("another of the user", withSettingsFile, Target::User, Promise::partsMayRemain),
        emptying("drawing without one", unconfigured, Target::Drawing, Promise::formerOrNew),
        emptying("drawing", configured, Target::Drawing, Promise::formerOrNew),
        emptying("locked elsewhere", lockedElsewhere, Target::Drawing, Promise::formerOrNew, kFalse),
        emptying(
            "user without one", [] { return withRegistry({}); }, Target::User, Promise::partsMayRemain),
        emptying(
            "user", [=] { return withRegistry(three); }, Target::User, Promise::partsMayRemain),
    };
}

} // namespace Tests
