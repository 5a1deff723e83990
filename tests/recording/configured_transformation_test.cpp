// Finding a configured transformation when the library fails or succeeds without a result.
#include <optional>

#include "recording/recording_test.h"
#include "transformation/configured_transformation.h"

namespace Tests {
namespace {

constexpr const char* kLoadTransformation = "GeodeticTransformationDefinition::Load";
constexpr const char* kLoadPath = "GeodeticPathDefinition::Load";

class ConfiguredTransformation : public RecordingTest {
protected:
    ConfiguredTransformation()
    {
        answers().catalog[L"shift"] = {.type = Type::transformation, .code = L"shift", .reversible = true};
        answers().catalog[L"path"] = {.type = Type::path, .code = L"path", .reversible = true};
    }

    static std::wstring item(const std::wstring& source, const std::wstring& target, const std::wstring& name, int type)
    {
        return L"<Item><SourceCs>" + source + L"</SourceCs><TargetCs>" + target + L"</TargetCs><Name>" + name +
               L"</Name><Type>" + std::to_wstring(type) + L"</Type><Note></Note></Item>";
    }
    /// The name and kind of the transformation; nothing if none is info.
    static std::optional<std::wstring> find(const std::wstring& text, const wchar_t* source = L"A",
                                            const wchar_t* target = L"B")
    {
        const Orvel::LibraryObject<Library::TransformationInfo> info(
            Orvel::FindConfiguredTransformation(source, target, text.c_str()));
        if (!info)
            return std::nullopt;
        return info->GetName() + (L" " + std::to_wstring(info->GetKind()));
    }

    const std::wstring forward = item(L"A", L"B", L"shift", 2);
    const std::wstring reverse = item(L"B", L"A", L"shift", 2);
    const std::wstring reversePath = item(L"B", L"A", L"path", 1);
};

TEST_F(ConfiguredTransformation, ReversibleDefinition_IsFoundInReverse)
{
    EXPECT_EQ(find(reverse), L"shift 2");
    EXPECT_EQ(find(reversePath), L"path 1");
}

TEST_F(ConfiguredTransformation, DefinitionThatIsReturnedWithAFailure_IsUsed)
{
    fail(kLoadTransformation);
    fail(kLoadPath);
    EXPECT_EQ(find(reverse), L"shift 2");
    EXPECT_EQ(find(reversePath), L"path 1");
}

TEST_F(ConfiguredTransformation, MissingDefinition_IsNotReversible)
{
    answers().withoutObject = {kLoadTransformation, kLoadPath};
    EXPECT_EQ(find(reverse), std::nullopt);
    EXPECT_EQ(find(reversePath), std::nullopt);
}

TEST_F(ConfiguredTransformation, FailingQuery_IsNotReversible)
{
    fail("GeodeticTransformationDefinition::IsReversible");
    fail("GeodeticPathDefinition::IsReversible");
    EXPECT_EQ(find(reverse), std::nullopt);
    EXPECT_EQ(find(reversePath), std::nullopt);
}

TEST_F(ConfiguredTransformation, InfoThatCannotBeCreated_FindsNothing)
{
    for (const char* const call :
         {"TransformationInfo::CreateInstance", "TransformationInfo::SetName", "TransformationInfo::SetKind"}) {
        fail(call);
        EXPECT_EQ(find(forward), std::nullopt) << call;
        answers().statuses.clear();
    }
    answers().withoutObject = {"TransformationInfo::CreateInstance"};
    EXPECT_EQ(find(forward), std::nullopt);
}

TEST_F(ConfiguredTransformation, CodesInEitherOrder_AreFound)
{
    EXPECT_EQ(find(forward, L"A", L"B"), L"shift 2");
    EXPECT_EQ(find(item(L"B", L"A", L"shift", 2), L"B", L"A"), L"shift 2");
}

TEST_F(ConfiguredTransformation, CodesThatDifferInOtherCharacters_AreNotFound)
{
    EXPECT_EQ(find(forward, L"a", L"b"), L"shift 2");
    EXPECT_EQ(find(item(L"@", L"B", L"shift", 2), L"`", L"B"), std::nullopt);
    EXPECT_EQ(find(item(L"A", L"{", L"shift", 2), L"A", L"["), std::nullopt);
    EXPECT_EQ(find(item(L"`", L"@", L"shift", 2), L"`", L"@"), L"shift 2") << "the two codes differ";
}

} // namespace
} // namespace Tests
