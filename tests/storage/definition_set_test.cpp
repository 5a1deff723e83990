#include "storage/definition_set.h"

#include "storage/failing_calls.h"
#include "storage/unusual_definitions.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::ValidateCsDefinitionSet;

class DefinitionSetValidation : public PlatformTest {
protected:
    // ETRS89 / UTM zone 32N with its datum and ellipsoid, and pieces of other systems.
    const SystemHolder projected = catalogSystem(L"EPSG:25832");
    const DatumHolder datum = catalogDatum(L"EPSG:6258");
    const EllipsoidHolder ellipsoid = catalogEllipsoid(L"EPSG:7019");
    const DatumHolder foreignDatum = catalogDatum(L"EPSG:6269"); // on the same ellipsoid
    const EllipsoidHolder foreignEllipsoid = catalogEllipsoid(L"EPSG:7004");
    const SystemHolder withoutDatum = catalogSystem(L"EPSG:4019"); // on EPSG:7019

    static bool isValid(const wchar_t* code, const SystemHolder& system, const DatumHolder& datumOrNull,
                        const EllipsoidHolder& ellipsoidOrNull)
    {
        return ValidateCsDefinitionSet(code, system.get(), datumOrNull.get(), ellipsoidOrNull.get());
    }
};

TEST_F(DefinitionSetValidation, SystemWithItsDatumAndEllipsoidIsValid)
{
    EXPECT_TRUE(isValid(L"EPSG:25832", projected, datum, ellipsoid));
    EXPECT_TRUE(isValid(L"EPSG:4258", catalogSystem(L"EPSG:4258"), datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, NullCodeIsInvalid)
{
    EXPECT_FALSE(isValid(nullptr, projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, EmptyCodeIsRejectedBeforeAnyLibraryCall)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_FALSE(isValid(L"", projected, datum, ellipsoid)); });
    EXPECT_TRUE(calls.empty());
}

TEST_F(DefinitionSetValidation, SetWithoutASystemIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", {}, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, CodeOfAnotherSystemIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25833", projected, datum, ellipsoid));
    EXPECT_FALSE(isValid(L"EPSG:2583", projected, datum, ellipsoid));
    EXPECT_FALSE(isValid(L"EPSG:25832 ", projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, CodeInAnotherCaseIsValid)
{
    EXPECT_TRUE(isValid(L"epsg:25832", projected, datum, ellipsoid));
    EXPECT_TRUE(isValid(L"ePsG:25832", projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, GeographicOrProjectedSystemNeedsAnEllipsoid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, datum, {}));
    EXPECT_FALSE(isValid(L"EPSG:4258", catalogSystem(L"EPSG:4258"), datum, {}));
    EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, {}, {}));
}

TEST_F(DefinitionSetValidation, SystemWithADatumCodeNeedsThatDatum)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, {}, ellipsoid));
}

TEST_F(DefinitionSetValidation, DatumOfAnotherSystemIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, foreignDatum, ellipsoid));
}

TEST_F(DefinitionSetValidation, EllipsoidOfAnotherDatumIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, datum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, EllipsoidMustMatchTheDatum)
{
    const DatumHolder sameDatum = catalogDatum(L"EPSG:6258");
    ASSERT_EQ(sameDatum->SetEllipsoid(foreignEllipsoid.get()), Library::statusOk);
    EXPECT_TRUE(isValid(L"EPSG:25832", projected, sameDatum, foreignEllipsoid));
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, sameDatum, ellipsoid));
}

TEST_F(DefinitionSetValidation, SystemWithoutADatumNeedsOnlyItsEllipsoid)
{
    EXPECT_TRUE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid));
}

TEST_F(DefinitionSetValidation, DatumWithASystemThatHasNoneIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, SystemWithoutADatumMustMatchTheEllipsoid)
{
    EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, {}, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, SystemOfKindOneNeedsNoDatumOrEllipsoid)
{
    EXPECT_TRUE(isValid(L"LOCAL:METRE", catalogSystem(L"LOCAL:METRE"), {}, {}));
}

TEST_F(DefinitionSetValidation, SystemOfKindOneIsValidWithAnyDatumAndEllipsoid)
{
    EXPECT_TRUE(isValid(L"LOCAL:METRE", catalogSystem(L"LOCAL:METRE"), foreignDatum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, SystemOfKindFourIsValidWithAnyDatumAndEllipsoidOrNone)
{
    EXPECT_TRUE(isValid(L"EPSG:4978", catalogSystem(L"EPSG:4978"), {}, {}));
    EXPECT_TRUE(isValid(L"EPSG:4978", catalogSystem(L"EPSG:4978"), foreignDatum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, SystemOfKindOneMustHaveTheGivenCode)
{
    EXPECT_FALSE(isValid(L"LOCAL:FOOT", catalogSystem(L"LOCAL:METRE"), {}, {}));
}

TEST_F(DefinitionSetValidation, DatumAndEllipsoidCodesAreComparedIgnoringCase)
{
    const UserSystem lower{.datum = L"some datum", .ellipsoid = L"some ellipsoid"};
    const UserSystem upper{.datum = L"SOME DATUM", .ellipsoid = L"SOME ELLIPSOID"};
    EXPECT_TRUE(isValid(L"MINE:1", lower.makeSystem(), upper.makeDatum(), upper.makeEllipsoid()));
    EXPECT_TRUE(isValid(L"MINE:1", lower.makeSystem(), upper.makeDatum(), lower.makeEllipsoid()));
}

TEST_F(DefinitionSetValidation, EveryFailingQueryMakesTheSetInvalid)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(isValid(L"EPSG:25832", projected, datum, ellipsoid)); });
    ASSERT_EQ(calls.size(), 6U) << "code and kind, datum and ellipsoid code of the system or datum, and their own";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(isValid(L"EPSG:25832", projected, datum, ellipsoid)) << call;
    }
}

TEST_F(DefinitionSetValidation, EveryFailingQueryMakesASetWithoutADatumInvalid)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid)); });
    ASSERT_EQ(calls.size(), 5U);
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid)) << call;
    }
}

TEST_F(DefinitionSetValidation, EveryFailingQueryMakesASystemOfKindOneInvalid)
{
    const auto local = catalogSystem(L"LOCAL:METRE");
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(isValid(L"LOCAL:METRE", local, {}, {})); });
    ASSERT_EQ(calls.size(), 2U) << "code and kind";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(isValid(L"LOCAL:METRE", local, {}, {})) << call;
    }
}

class DefinitionSetSlots : public PlatformTest {
protected:
    Orvel::DefinitionSet set;

    void take(Library::DefinitionBase* definition)
    {
        set.take(Orvel::LibraryObject<Library::DefinitionBase>(definition));
    }
};

TEST_F(DefinitionSetSlots, EachDefinitionGoesIntoTheSlotOfItsKind)
{
    take(catalogEllipsoid(L"EPSG:7019").release());
    take(catalogSystem(L"EPSG:25832").release());
    take(catalogDatum(L"EPSG:6258").release());
    EXPECT_EQ(describe(set), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(DefinitionSetSlots, LaterDefinitionOfAKindReplacesTheEarlier)
{
    take(catalogSystem(L"EPSG:25832").release());
    take(catalogSystem(L"EPSG:25833").release());
    take(catalogDatum(L"EPSG:6258").release());
    take(catalogDatum(L"EPSG:6269").release());
    take(catalogEllipsoid(L"EPSG:7019").release());
    take(catalogEllipsoid(L"EPSG:7004").release());
    EXPECT_EQ(describe(set), (Texts{L"system EPSG:25833", L"datum EPSG:6269", L"ellipsoid EPSG:7004"}));
}

TEST_F(DefinitionSetSlots, DefinitionOfAnotherKindIsDestroyedAndChangesNothing)
{
    take(catalogDatum(L"EPSG:6258").release());
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    take(otherDefinition().release());
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "");
    EXPECT_EQ(describe(set), (Texts{L"none", L"datum EPSG:6258", L"none"}));
}

TEST_F(DefinitionSetSlots, NullChangesNothing)
{
    take(catalogDatum(L"EPSG:6258").release());
    take(nullptr);
    EXPECT_EQ(describe(set), (Texts{L"none", L"datum EPSG:6258", L"none"}));
}

class DefinitionSetLinking : public PlatformTest {
protected:
    // All pieces have the same codes. Each piece has an ellipsoid of its own size, which tells where it came from.
    Orvel::DefinitionSet set;

    void setSystemWithDatum()
    {
        set.system = UserSystem{.semiMajorAxis = 6371000}.makeSystem();
        set.datum = UserSystem{.semiMajorAxis = 6372000}.makeDatum();
        set.ellipsoid = UserSystem{.semiMajorAxis = 6373000}.makeEllipsoid();
    }
    void setSystemWithoutDatum()
    {
        set.system = catalogSystem(L"EPSG:4019");
        set.ellipsoid =
            UserSystem{.ellipsoidIdentifier = L"ID[\"EPSG\",7019]", .semiMajorAxis = 6373000}.makeEllipsoid();
    }
    using Calls = std::vector<std::string>;
    Calls recordLinkingCalls()
    {
        return recordCalls([&] { Orvel::linkDefinitionSet(set); });
    }
    static double semiMajorAxis(const EllipsoidHolder& ellipsoid)
    {
        double axis = 0;
        EXPECT_EQ(ellipsoid->GetSemiMajorAxisInMetres(axis), Library::statusOk);
        return axis;
    }
    double systemAxis() const { return semiMajorAxis(getEllipsoid(set.system)); }
    double datumAxis() const
    {
        EllipsoidHolder ellipsoid;
        EXPECT_EQ(set.datum->GetEllipsoid(ellipsoid.put()), Library::statusOk);
        return semiMajorAxis(ellipsoid);
    }
};

TEST_F(DefinitionSetLinking, DatumGetsTheEllipsoidAndTheSystemGetsTheDatum)
{
    setSystemWithDatum();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(datumAxis(), 6373000);
    EXPECT_EQ(systemAxis(), 6373000);
}

TEST_F(DefinitionSetLinking, SystemWithoutADatumGetsTheEllipsoid)
{
    setSystemWithoutDatum();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(systemAxis(), 6373000);
    EXPECT_EQ(describe(set.system.get()), L"system EPSG:4019");
}

TEST_F(DefinitionSetLinking, SystemWithoutDatumAndEllipsoidIsUnchanged)
{
    setSystemWithoutDatum();
    set.ellipsoid.reset();
    const double before = systemAxis();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(systemAxis(), before);
}

TEST_F(DefinitionSetLinking, MissingEllipsoidIsNotLinked)
{
    setSystemWithDatum();
    set.ellipsoid.reset();
    EXPECT_EQ(recordLinkingCalls(), (Calls{"CoordinateReferenceSystemDefinition::GetDatumCode",
                                           "CoordinateReferenceSystemDefinition::SetDatum"}));
    setSystemWithoutDatum();
    set.ellipsoid.reset();
    EXPECT_EQ(recordLinkingCalls(), (Calls{"CoordinateReferenceSystemDefinition::GetDatumCode"}));
}

TEST_F(DefinitionSetLinking, SystemOfKindOneIsUnchanged)
{
    set.system = catalogSystem(L"LOCAL:METRE");
    const std::wstring before = serializedText(set.system.get());
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(serializedText(set.system.get()), before);
}

TEST_F(DefinitionSetLinking, SystemOfKindFourWithoutItsDatumIsUnchanged)
{
    set.system = catalogSystem(L"EPSG:4978");
    set.ellipsoid = catalogEllipsoid(L"EPSG:7019");
    const std::wstring before = serializedText(set.system.get());
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(serializedText(set.system.get()), before);
}

TEST_F(DefinitionSetLinking, FailedLinkLeavesTheStoredSystem)
{
    for (const char* const call :
         {"CoordinateReferenceSystemDefinition::GetDatumCode", "CoordinateReferenceSystemDefinition::SetDatum"}) {
        setSystemWithDatum();
        const ScopedFault fault(failing(call));
        Orvel::linkDefinitionSet(set);
        EXPECT_EQ(systemAxis(), 6371000) << call;
    }
}

} // namespace
} // namespace Tests
