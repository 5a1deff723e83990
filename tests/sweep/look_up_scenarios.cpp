// The function that finds which transformation is configured for two coordinate systems.
#include "coordsys/orvel_transformation_config.h"
#include "storage/library_holder.h"
#include "sweep/scenario.h"
#include "transformation/transformation_test.h"

namespace Tests {
namespace {

constexpr const wchar_t* kTransformation = L"NTF to WGS 84 (1)"; // reversible, as the path is
constexpr const wchar_t* kPath = L"Amersfoort to ED50 (1)";
constexpr int kPathType = 1;
constexpr int kTransformationType = 2;

class LookUp : public Call {
public:
    explicit LookUp(const wchar_t* expectedName) : expectedName_(expectedName) {}
    int make(Fixture& /*fixture*/) override
    {
        found_.reset(Cs::GetCsConfiguredTransformationInfo(L"EPSG:4275", L"EPSG:4326"));
        return asResult(static_cast<bool>(found_));
    }
    void expectOutParameters(const Outcome& /*outcome*/) const override
    {
        if (found_) {
            EXPECT_STREQ(found_->GetName(), expectedName_);
        }
    }

private:
    const wchar_t* expectedName_;
    Orvel::LibraryObject<Cs::TransformationInfo> found_;
};

std::wstring forwards(const wchar_t* name)
{
    return itemElement(L"EPSG:4275", L"EPSG:4326", name, kTransformationType);
}

std::wstring backwards(const wchar_t* name, int type)
{
    return itemElement(L"EPSG:4326", L"EPSG:4275", name, type);
}

std::wstring others()
{
    return itemElement(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)");
}

Scenario lookingUp(const std::string& name, std::function<InitialState()> initialState, const wchar_t* expectedName,
                   int expected = kTrue)
{
    return {.function = "GetCsConfiguredTransformationInfo",
            .name = name,
            .initialState = std::move(initialState),
            .call = calling<LookUp>(expectedName),
            .expected = expected};
}

} // namespace

Scenarios lookUpScenarios()
{
    const auto inDrawing = [](const std::wstring& text) { return [=] { return configuredDrawing(text); }; };
    const auto inFile = [](const std::wstring& text) { return [=] { return configuredUser({others(), text}); }; };
    return {
        lookingUp("in the drawing", inDrawing(others() + forwards(kTransformation)), kTransformation),
        lookingUp("in the user's file", inFile(forwards(kTransformation)), kTransformation),
        lookingUp("transformation in reverse", inDrawing(backwards(kTransformation, kTransformationType)),
                  kTransformation),
        lookingUp("path in reverse", inFile(backwards(kPath, kPathType)), kPath),
        lookingUp("nowhere", inDrawing(others()), L"", kFalse),
    };
}

} // namespace Tests
