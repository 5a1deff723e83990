// Finding the transformation of two codes in a configuration text.
#include "transformation/configured_transformation.h"

#include "storage/failing_calls.h"
#include "storage/library_holder.h"
#include "transformation_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::Library::TransformationInfo;

// Names of definitions in the catalog.
constexpr const wchar_t* kReversible = L"NTF to WGS 84 (1)";
constexpr const wchar_t* kIrreversible = L"WGS 84 to EGM2008 height (2)";
constexpr const wchar_t* kReversiblePath = L"Amersfoort to ED50 (1)";

struct Found {
    std::wstring name;
    int kind = 0;
    friend bool operator==(const Found&, const Found&) = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found)
{
    return out << '"' << Embedded::utf8FromWide(found.name) << "\" of kind " << found.kind;
}

class ConfiguredTransformation : public TransformationTest {
protected:
    /// The transformation that is found; no value for null.
    static std::optional<Found> find(const std::wstring& text, const wchar_t* source = L"A",
                                     const wchar_t* target = L"B")
    {
        const Orvel::LibraryObject<TransformationInfo> info(
            Orvel::FindConfiguredTransformation(source, target, text.c_str()));
        return info ? std::optional(Found{info->GetName(), info->GetKind()}) : std::nullopt;
    }
};

TEST_F(ConfiguredTransformation, ItemOfTheTwoCodes_IsFound)
{
    EXPECT_EQ(find(itemElement(L"A", L"B", L"n", 2)), (Found{L"n", 2}));
    EXPECT_EQ(find(itemElement(L"A", L"B", L"n", 1)), (Found{L"n", 1}));
}

TEST_F(ConfiguredTransformation, OtherTypes_HaveKindNone)
{
    EXPECT_EQ(find(itemElement(L"A", L"B", L"n", 0)), (Found{L"n", 0}));
    EXPECT_EQ(find(itemElement(L"A", L"B", L"n", 3)), (Found{L"n", 0}));
}

TEST_F(ConfiguredTransformation, NullArguments_FindNothing)
{
    const std::wstring text = itemElement(L"A", L"B", L"n");
    EXPECT_FALSE(Orvel::FindConfiguredTransformation(nullptr, L"B", text.c_str()));
    EXPECT_FALSE(Orvel::FindConfiguredTransformation(L"A", nullptr, text.c_str()));
    EXPECT_FALSE(Orvel::FindConfiguredTransformation(L"A", L"B", nullptr));
}

TEST_F(ConfiguredTransformation, EqualCodes_FindNothing)
{
    EXPECT_EQ(find(itemElement(L"EPSG:1", L"epsg:1", L"n"), L"EPSG:1", L"epsg:1"), std::nullopt);
}

TEST_F(ConfiguredTransformation, TextWithoutItems_FindsNothing)
{
    EXPECT_EQ(find(L""), std::nullopt);
    EXPECT_EQ(find(L"<Item>"), std::nullopt);
}

TEST_F(ConfiguredTransformation, Codes_AreComparedIgnoringCase)
{
    EXPECT_EQ(find(itemElement(L"epsg:4230", L"Epsg:4326", L"n"), L"EPSG:4230", L"EPSG:4326"), (Found{L"n", 2}));
}

TEST_F(ConfiguredTransformation, Codes_AreComparedCompletely)
{
    EXPECT_EQ(find(itemElement(L"AA", L"B", L"n")), std::nullopt);
    EXPECT_EQ(find(itemElement(L"A", L"BB", L"n")), std::nullopt);
    EXPECT_EQ(find(itemElement(L" A", L"B ", L"n")), std::nullopt);
    EXPECT_EQ(find(itemElement(L"", L"", L"n")), std::nullopt);
}

TEST_F(ConfiguredTransformation, FirstOfSeveralItems_IsFound)
{
    EXPECT_EQ(find(itemElement(L"X", L"B", L"0") + itemElement(L"A", L"B", L"1", 1) + itemElement(L"A", L"B", L"2")),
              (Found{L"1", 1}));
}

TEST_F(ConfiguredTransformation, ForwardItem_IsPreferredToAnEarlierReverseItem)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversible) + itemElement(L"A", L"B", L"forward")), (Found{L"forward", 2}));
}

TEST_F(ConfiguredTransformation, ReverseItem_IsFoundForAReversibleTransformation)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversible)), (Found{kReversible, 2}));
}

TEST_F(ConfiguredTransformation, ReverseItem_IsFoundForAReversiblePath)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversiblePath, 1)), (Found{kReversiblePath, 1}));
}

TEST_F(ConfiguredTransformation, ReverseItem_IsNotFoundForAnIrreversibleTransformation)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kIrreversible)), std::nullopt);
}

TEST_F(ConfiguredTransformation, ReverseItem_IsNotFoundForATransformationOutsideTheCatalog)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", L"no such thing")), std::nullopt);
    EXPECT_EQ(find(itemElement(L"B", L"A", L"")), std::nullopt);
}

TEST_F(ConfiguredTransformation, ReverseItem_IsLookedUpByItsType)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversible, 1)), std::nullopt) << "no path has that name";
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversiblePath, 2)), std::nullopt) << "no transformation has that name";
}

TEST_F(ConfiguredTransformation, ReverseItemOfTypeZero_IsLookedUpAsATransformation)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversible, 0)), (Found{kReversible, 0}));
}

TEST_F(ConfiguredTransformation, IrreversibleReverseItem_IsSkippedForALaterItem)
{
    EXPECT_EQ(find(itemElement(L"B", L"A", kIrreversible) + itemElement(L"b", L"a", kReversible)),
              (Found{kReversible, 2}));
}

TEST_F(ConfiguredTransformation, ReversibleItemOfAnotherPair_IsNotFound)
{
    EXPECT_EQ(find(itemElement(L"B", L"C", kReversible)), std::nullopt);
    EXPECT_EQ(find(itemElement(L"C", L"A", kReversible) + itemElement(L"B", L"A", kReversiblePath, 1)),
              (Found{kReversiblePath, 1}));
}

TEST_F(ConfiguredTransformation, ItemWithoutItsLastFields_IsFound)
{
    EXPECT_EQ(find(L"<Item><SourceCs>A</SourceCs><TargetCs>B</TargetCs></Item>"), (Found{L"", 0}));
    EXPECT_EQ(find(L"<Item><SourceCs>A</SourceCs><TargetCs>B</TargetCs><Name>n</Name><Type>2</Type></Item>"),
              (Found{L"n", 0}))
        << "a type counts only in an item with a note";
}

TEST_F(ConfiguredTransformation, RootTag_HidesTheFirstItem)
{
    const std::wstring text = L"<Items>" + itemElement(L"A", L"B", L"1") + itemElement(L"A", L"B", L"2") + L"</Items>";
    EXPECT_EQ(find(text), (Found{L"2", 2}));
}

TEST_F(ConfiguredTransformation, ClosingItemTagInANote_EndsTheItem)
{
    const std::wstring text = itemElement(L"A", L"B", L"1", 2, L"a</Item>b") + itemElement(L"A", L"B", L"2");
    EXPECT_EQ(find(text), (Found{L"1", 0})) << "the rest of the item has no end of the note";
}

TEST_F(ConfiguredTransformation, ForwardItem_IsFoundWithoutTheCatalog)
{
    Embedded::FaultInjection::watch();
    EXPECT_TRUE(find(itemElement(L"B", L"A", kReversible) + itemElement(L"A", L"B", L"forward")));
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(Embedded::FaultInjection::seen(),
              (std::vector<std::string>{"TransformationInfo::CreateInstance", "TransformationInfo::SetName",
                                        "TransformationInfo::SetKind"}));
}

TEST_F(ConfiguredTransformation, CreationThatSucceedsWithoutAnInfo_FindsNothing)
{
    const ScopedFault fault({.call = "TransformationInfo::CreateInstance", .code = 0});
    EXPECT_EQ(find(itemElement(L"A", L"B", L"n")), std::nullopt);
}

TEST_F(ConfiguredTransformation, QueryThatSucceedsWithoutAResult_IsNotReversible)
{
    {
        const ScopedFault fault({.call = "GeodeticTransformationDefinition::IsReversible", .code = 0});
        EXPECT_EQ(find(itemElement(L"B", L"A", kReversible)), std::nullopt);
        EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
    }
    const ScopedFault fault({.call = "GeodeticPathDefinition::IsReversible", .code = 0});
    EXPECT_EQ(find(itemElement(L"B", L"A", kReversiblePath, 1)), std::nullopt);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
}

TEST_F(ConfiguredTransformation, EveryFailingCallOfAForwardSearch_FindsNothing)
{
    const std::wstring text = itemElement(L"A", L"B", L"n");
    for (const FallibleCall& call : recordFallibleCalls([&] { ASSERT_TRUE(find(text)); })) {
        SCOPED_TRACE(call.name);
        const ScopedFault fault(failing(call));
        EXPECT_EQ(find(text), std::nullopt);
    }
}

TEST_F(ConfiguredTransformation, EveryFailingCallOfAReverseSearch_FindsNothing)
{
    const std::wstring text = itemElement(L"B", L"A", kReversible);
    const auto calls = recordFallibleCalls([&] { ASSERT_TRUE(find(text)); });
    ASSERT_EQ(calls.front().name, "GeodeticTransformationDefinition::Load");
    for (const FallibleCall& call : calls) {
        SCOPED_TRACE(call.name);
        const ScopedFault fault(failing(call));
        EXPECT_EQ(find(text), std::nullopt);
    }
}

} // namespace
} // namespace Tests
