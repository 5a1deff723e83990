// The exported functions for the stores.
#include "coordsys/orvel_transformation_config.h"

#include "embedded/host/application/application.h"
#include "storage/library_holder.h"
#include "transformation/registry_settings.h"
#include "transformation/user_settings_file.h"
#include "transformation_test.h"

namespace Tests {
namespace {

using Target = Cs::CsTransformationConfigTargetType;

constexpr auto kUnknownTarget = static_cast<Target>(3);
const Notices kOneNotice{{Event::transformationChanged, std::nullopt}};

class TransformationConfig : public TransformationTest {
protected:
    const std::wstring one = itemElement(L"A", L"B", L"one");
    const std::wstring two = itemElement(L"A", L"B", L"two");

    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    static ReadText get(Target target)
    {
        return readWith([&](wchar_t*& text) { return Cs::GetCsTransformationConfig(text, target); });
    }
    static bool set(const std::wstring& text, Target target)
    {
        return Cs::SetCsTransformationConfig(text.c_str(), target);
    }
    /// The name of the configured transformation; no value for null.
    static std::optional<std::wstring> findConfiguredName(const wchar_t* source, const wchar_t* target)
    {
        const Orvel::LibraryObject<Cs::TransformationInfo> info(Cs::GetCsConfiguredTransformationInfo(source, target));
        return info ? std::optional<std::wstring>(info->GetName()) : std::nullopt;
    }
};

TEST_F(TransformationConfig, TextForTheDrawing_IsReadForTheDrawingOnly)
{
    EXPECT_TRUE(set(one, Target::Drawing));
    EXPECT_EQ(get(Target::Drawing), (ReadText{true, one}));
    EXPECT_EQ(get(Target::User), kNothingRead);
}

TEST_F(TransformationConfig, TextForTheUser_IsWrittenToTheSettingsFile)
{
    EXPECT_TRUE(set(one, Target::User));
    EXPECT_EQ(get(Target::User), (ReadText{true, one}));
    EXPECT_EQ(get(Target::Drawing), kNothingRead);
    EXPECT_TRUE(std::filesystem::exists(settingsFile()));
}

TEST_F(TransformationConfig, MissingText_IsTheSameEmptyTextForDrawingAndUser)
{
    wchar_t* drawing = nullptr;
    wchar_t* user = nullptr;
    wchar_t* again = nullptr;
    EXPECT_FALSE(Cs::GetCsTransformationConfig(drawing, Target::Drawing));
    EXPECT_FALSE(Cs::GetCsTransformationConfig(user, Target::User));
    EXPECT_FALSE(Cs::GetCsTransformationConfig(again, Target::User));
    EXPECT_EQ(user, drawing);
    EXPECT_EQ(again, drawing);
    EXPECT_STREQ(drawing, L"");
}

TEST_F(TransformationConfig, OtherTargets_AreNotRead)
{
    for (const int target : {0, 3, -1}) {
        wchar_t former[] = L"former";
        wchar_t* text = former;
        EXPECT_FALSE(Cs::GetCsTransformationConfig(text, static_cast<Target>(target)));
        EXPECT_EQ(text, former);
    }
}

TEST_F(TransformationConfig, OtherTargets_AreNotWrittenButNotify)
{
    const auto before = contents();
    EXPECT_FALSE(set(one, kUnknownTarget));
    EXPECT_EQ(log, kOneNotice);
    EXPECT_FALSE(Cs::ClearCsTransformationConfig(kUnknownTarget));
    EXPECT_EQ(log.size(), 2U);
    EXPECT_EQ(contents(), before);
    EXPECT_FALSE(std::filesystem::exists(settingsFile()));
}

TEST_F(TransformationConfig, Change_NotifiesEveryReactorInOrder)
{
    RecordingReactor second(log, "B");
    ASSERT_EQ(second.add(), Qeapp::eOk);
    EXPECT_TRUE(set(one, Target::User));
    EXPECT_EQ(log, (Notices{{Event::transformationChanged, std::nullopt, "A"},
                            {Event::transformationChanged, std::nullopt, "B"}}));
}

TEST_F(TransformationConfig, Notice_ComesAfterTheChange)
{
    ReadText seen;
    reactor.action = [&](const Notice&) { seen = get(Target::Drawing); };
    EXPECT_TRUE(set(one, Target::Drawing));
    EXPECT_EQ(seen, (ReadText{true, one}));
}

TEST_F(TransformationConfig, FailedWrite_Notifies)
{
    const Embedded::ForeignDocumentLock other(document.get());
    EXPECT_FALSE(set(one, Target::Drawing));
    EXPECT_EQ(log, kOneNotice);
    EXPECT_FALSE(Cs::ClearCsTransformationConfig(Target::Drawing));
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(TransformationConfig, UserWithoutASettingsFolder_IsNotWritten)
{
    userFolder.set((folder.path() / "missing").string());
    EXPECT_FALSE(set(one, Target::User));
    EXPECT_EQ(log, kOneNotice);
}

TEST_F(TransformationConfig, Reading_NotifiesNoReactor)
{
    get(Target::Drawing);
    get(Target::User);
    EXPECT_EQ(findConfiguredName(L"A", L"B"), std::nullopt);
    EXPECT_EQ(log, Notices());
}

TEST_F(TransformationConfig, ReactorException_ReachesTheCallerAfterTheChange)
{
    reactor.action = [](const Notice&) { throw std::runtime_error("reactor"); };
    EXPECT_THROW(set(one, Target::Drawing), std::runtime_error);
    EXPECT_EQ(get(Target::Drawing), (ReadText{true, one}));
}

TEST_F(TransformationConfig, ClearedDrawing_HasAnEmptyText)
{
    ASSERT_TRUE(set(one, Target::Drawing));
    EXPECT_TRUE(Cs::ClearCsTransformationConfig(Target::Drawing));
    EXPECT_EQ(get(Target::Drawing), (ReadText{true, L""}));
}

TEST_F(TransformationConfig, ClearedUser_KeepsTheSettingsFileAndClearsTheRegistry)
{
    ASSERT_TRUE(set(one, Target::User));
    ASSERT_TRUE(Orvel::WriteRegistryTransformationSettings(two.c_str()));
    EXPECT_TRUE(Cs::ClearCsTransformationConfig(Target::User));
    EXPECT_EQ(get(Target::User), (ReadText{true, one}));
    EXPECT_EQ(readWith(Orvel::ReadRegistryTransformationSettings), (ReadText{true, L""}));
}

TEST_F(TransformationConfig, NoticeOfAClearedUser_ComesOnceAfterTheClearing)
{
    ASSERT_TRUE(Orvel::WriteRegistryTransformationSettings(two.c_str()));
    ReadText seen;
    reactor.action = [&](const Notice&) { seen = readWith(Orvel::ReadRegistryTransformationSettings); };
    EXPECT_TRUE(Cs::ClearCsTransformationConfig(Target::User));
    EXPECT_EQ(log, kOneNotice);
    EXPECT_EQ(seen, (ReadText{true, L""}));
}

TEST_F(TransformationConfig, ClearingWithoutARegistry_ReturnsFalse)
{
    const Embedded::ScopedFault fault({.call = "RegCreateKeyExW"});
    EXPECT_FALSE(Cs::ClearCsTransformationConfig(Target::User));
    EXPECT_EQ(log, kOneNotice);
}

TEST_F(TransformationConfig, DrawingsItem_IsPreferredToTheUsersItem)
{
    ASSERT_TRUE(set(one, Target::Drawing));
    ASSERT_TRUE(set(two, Target::User));
    EXPECT_EQ(findConfiguredName(L"A", L"B"), L"one");
}

TEST_F(TransformationConfig, Codes_AreFoundInTheOrderOfTheItem)
{
    ASSERT_TRUE(set(itemElement(L"A", L"B", L"one") + itemElement(L"B", L"A", L"two"), Target::Drawing));
    EXPECT_EQ(findConfiguredName(L"A", L"B"), L"one");
    EXPECT_EQ(findConfiguredName(L"B", L"A"), L"two");
}

TEST_F(TransformationConfig, DrawingWithoutTheItem_GivesTheUsersItem)
{
    ASSERT_TRUE(set(itemElement(L"A", L"C", L"other"), Target::Drawing));
    ASSERT_TRUE(set(two, Target::User));
    EXPECT_EQ(findConfiguredName(L"a", L"b"), L"two");
}

TEST_F(TransformationConfig, ClearedDrawing_GivesTheUsersItem)
{
    ASSERT_TRUE(set(one, Target::Drawing));
    ASSERT_TRUE(set(two, Target::User));
    ASSERT_TRUE(Cs::ClearCsTransformationConfig(Target::Drawing));
    EXPECT_EQ(findConfiguredName(L"A", L"B"), L"two");
}

TEST_F(TransformationConfig, WithoutAWorkingDrawing_TheUsersItemIsFound)
{
    ASSERT_TRUE(set(two, Target::User));
    qedbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(findConfiguredName(L"A", L"B"), L"two");
    qedbHostApplicationServices()->setWorkingDatabase(document.database());
}

TEST_F(TransformationConfig, DrawingsReverseItem_IsPreferredToTheUsersForwardItem)
{
    ASSERT_TRUE(set(itemElement(L"B", L"A", L"NTF to WGS 84 (1)"), Target::Drawing));
    ASSERT_TRUE(set(two, Target::User));
    EXPECT_EQ(findConfiguredName(L"A", L"B"), L"NTF to WGS 84 (1)");
}

TEST_F(TransformationConfig, NullOrEqualCodes_FindNothingWithoutReadingAStore)
{
    ASSERT_TRUE(set(itemElement(L"A", L"a", L"same"), Target::Drawing));
    Embedded::FaultInjection::watch();
    EXPECT_EQ(findConfiguredName(nullptr, L"B"), std::nullopt);
    EXPECT_EQ(findConfiguredName(L"A", nullptr), std::nullopt);
    EXPECT_EQ(findConfiguredName(L"A", L"a"), std::nullopt);
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>());
}

} // namespace
} // namespace Tests
