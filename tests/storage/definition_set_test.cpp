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
    // ETRS89 / UTM zone 32N with its own datum and ellipsoid, and others.
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

TEST_F(DefinitionSetValidation, SystemWithItsDatumAndItsEllipsoidIsValid)
{
    EXPECT_TRUE(isValid(L"EPSG:25832", projected, datum, ellipsoid));
    EXPECT_TRUE(isValid(L"EPSG:4258", catalogSystem(L"EPSG:4258"), datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, NullCodeIsInvalid)
{
    EXPECT_FALSE(isValid(nullptr, projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, EmptyCodeIsInvalid)
{
    EXPECT_FALSE(isValid(L"", projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, WithoutACodeTheDefinitionsAreNotAsked)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_FALSE(isValid(L"", projected, datum, ellipsoid)); });
    EXPECT_TRUE(calls.empty());
}

TEST_F(DefinitionSetValidation, NoSystemIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", {}, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, AnotherCodeIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25833", projected, datum, ellipsoid));
    EXPECT_FALSE(isValid(L"EPSG:2583", projected, datum, ellipsoid));
    EXPECT_FALSE(isValid(L"EPSG:25832 ", projected, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, CodeInOtherLettersIsValid)
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

TEST_F(DefinitionSetValidation, SystemThatNamesADatumNeedsIt)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, {}, ellipsoid));
}

TEST_F(DefinitionSetValidation, ForeignDatumIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, foreignDatum, ellipsoid));
}

TEST_F(DefinitionSetValidation, ForeignEllipsoidIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, datum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, EllipsoidMustBeTheOneOfTheDatum)
{
    const DatumHolder sameDatum = catalogDatum(L"EPSG:6258");
    ASSERT_EQ(sameDatum->SetEllipsoid(foreignEllipsoid.get()), Library::statusOk);
    EXPECT_TRUE(isValid(L"EPSG:25832", projected, sameDatum, foreignEllipsoid));
    EXPECT_FALSE(isValid(L"EPSG:25832", projected, sameDatum, ellipsoid));
}

TEST_F(DefinitionSetValidation, SystemWithoutADatumNeedsItsEllipsoidAlone)
{
    EXPECT_TRUE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid));
}

TEST_F(DefinitionSetValidation, DatumBesideASystemWithoutOneIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, datum, ellipsoid));
}

TEST_F(DefinitionSetValidation, ForeignEllipsoidOfASystemWithoutADatumIsInvalid)
{
    EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, {}, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, KindOneNeedsNothing)
{
    EXPECT_TRUE(isValid(L"LOCAL:METRE", catalogSystem(L"LOCAL:METRE"), {}, {}));
}

TEST_F(DefinitionSetValidation, KindOneIsValidWithAnythingBeside)
{
    EXPECT_TRUE(isValid(L"LOCAL:METRE", catalogSystem(L"LOCAL:METRE"), foreignDatum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, KindFourNeedsNothing)
{
    EXPECT_TRUE(isValid(L"EPSG:4978", catalogSystem(L"EPSG:4978"), {}, {}));
    EXPECT_TRUE(isValid(L"EPSG:4978", catalogSystem(L"EPSG:4978"), foreignDatum, foreignEllipsoid));
}

TEST_F(DefinitionSetValidation, KindOneStillNeedsItsCode)
{
    EXPECT_FALSE(isValid(L"LOCAL:FOOT", catalogSystem(L"LOCAL:METRE"), {}, {}));
}

TEST_F(DefinitionSetValidation, CodesOfDatumAndEllipsoidAreComparedWithoutRegardToCase)
{
    const UserSystem lower{.datum = L"some datum", .ellipsoid = L"some ellipsoid"};
    const UserSystem upper{.datum = L"SOME DATUM", .ellipsoid = L"SOME ELLIPSOID"};
    EXPECT_TRUE(isValid(L"MINE:1", lower.system(), upper.datumOfSystem(), upper.ellipsoidOfSystem()));
    EXPECT_TRUE(isValid(L"MINE:1", lower.system(), upper.datumOfSystem(), lower.ellipsoidOfSystem()));
}

TEST_F(DefinitionSetValidation, AnyFailingQueryMakesTheSetInvalid)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_TRUE(isValid(L"EPSG:25832", projected, datum, ellipsoid)); });
    ASSERT_EQ(calls.size(), 6U) << "code and kind, datum and ellipsoid code of the system or datum, and their own";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(isValid(L"EPSG:25832", projected, datum, ellipsoid)) << call;
    }
}

TEST_F(DefinitionSetValidation, AnyFailingQueryMakesTheSetWithoutADatumInvalid)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_TRUE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid)); });
    ASSERT_EQ(calls.size(), 5U);
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(isValid(L"EPSG:4019", withoutDatum, {}, ellipsoid)) << call;
    }
}

TEST_F(DefinitionSetValidation, AnyFailingQueryMakesKindOneInvalid)
{
    const auto local = catalogSystem(L"LOCAL:METRE");
    const auto calls = fallibleCallsOf([&] { EXPECT_TRUE(isValid(L"LOCAL:METRE", local, {}, {})); });
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
    Texts slots() const
    {
        return {describe(set.system.get()), describe(set.datum.get()), describe(set.ellipsoid.get())};
    }
};

TEST_F(DefinitionSetSlots, EachDefinitionGoesIntoTheSlotOfItsKind)
{
    take(catalogEllipsoid(L"EPSG:7019").release());
    take(catalogSystem(L"EPSG:25832").release());
    take(catalogDatum(L"EPSG:6258").release());
    EXPECT_EQ(slots(), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(DefinitionSetSlots, LaterDefinitionOfAKindReplacesTheEarlier)
{
    take(catalogSystem(L"EPSG:25832").release());
    take(catalogSystem(L"EPSG:25833").release());
    take(catalogDatum(L"EPSG:6258").release());
    take(catalogDatum(L"EPSG:6269").release());
    take(catalogEllipsoid(L"EPSG:7019").release());
    take(catalogEllipsoid(L"EPSG:7004").release());
    EXPECT_EQ(slots(), (Texts{L"system EPSG:25833", L"datum EPSG:6269", L"ellipsoid EPSG:7004"}));
}

TEST_F(DefinitionSetSlots, DefinitionOfAnotherKindIsDestroyedAndChangesNothing)
{
    take(catalogDatum(L"EPSG:6258").release());
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    take(otherDefinition().release());
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "");
    EXPECT_EQ(slots(), (Texts{L"none", L"datum EPSG:6258", L"none"}));
}

TEST_F(DefinitionSetSlots, NullChangesNothing)
{
    take(catalogDatum(L"EPSG:6258").release());
    take(nullptr);
    EXPECT_EQ(slots(), (Texts{L"none", L"datum EPSG:6258", L"none"}));
}

class DefinitionSetLinking : public PlatformTest {
protected:
    // The same codes everywhere, and an ellipsoid of another size in each piece, so that one can see whose it is.
    Orvel::DefinitionSet set;

    void giveSystemWithDatum()
    {
        set.system = UserSystem{.semiMajorAxis = 6371000}.system();
        set.datum = UserSystem{.semiMajorAxis = 6372000}.datumOfSystem();
        set.ellipsoid = UserSystem{.semiMajorAxis = 6373000}.ellipsoidOfSystem();
    }
    void giveSystemWithoutDatum()
    {
        set.system = catalogSystem(L"EPSG:4019");
        set.ellipsoid =
            UserSystem{.ellipsoidIdentifier = L"ID[\"EPSG\",7019]", .semiMajorAxis = 6373000}.ellipsoidOfSystem();
    }
    using Calls = std::vector<std::string>;
    Calls callsOfLinking()
    {
        Calls names;
        for (const FallibleCall& call : fallibleCallsOf([&] { Orvel::linkDefinitionSet(set); }))
            names.push_back(call.name);
        return names;
    }
    static double axisOf(const EllipsoidHolder& ellipsoid)
    {
        double axis = 0;
        EXPECT_EQ(ellipsoid->GetSemiMajorAxisInMetres(axis), Library::statusOk);
        return axis;
    }
    double axisOfSystem() const
    {
        EllipsoidHolder ellipsoid;
        EXPECT_EQ(Library::CoordinateReferenceSystemUtil::GetEllipsoid(set.system.get(), ellipsoid.put()),
                  Library::statusOk);
        return axisOf(ellipsoid);
    }
    double axisOfDatum() const
    {
        EllipsoidHolder ellipsoid;
        EXPECT_EQ(set.datum->GetEllipsoid(ellipsoid.put()), Library::statusOk);
        return axisOf(ellipsoid);
    }
};

TEST_F(DefinitionSetLinking, EllipsoidGoesIntoTheDatumAndTheDatumIntoTheSystem)
{
    giveSystemWithDatum();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(axisOfDatum(), 6373000);
    EXPECT_EQ(axisOfSystem(), 6373000);
}

TEST_F(DefinitionSetLinking, EllipsoidGoesIntoASystemWithoutADatum)
{
    giveSystemWithoutDatum();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(axisOfSystem(), 6373000);
    EXPECT_EQ(describe(set.system.get()), L"system EPSG:4019");
}

TEST_F(DefinitionSetLinking, SystemWithoutADatumAndWithoutAnEllipsoidStaysAsItIs)
{
    giveSystemWithoutDatum();
    set.ellipsoid.reset();
    const double before = axisOfSystem();
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(axisOfSystem(), before);
}

TEST_F(DefinitionSetLinking, MissingEllipsoidIsGivenToNeither)
{
    giveSystemWithDatum();
    set.ellipsoid.reset();
    EXPECT_EQ(callsOfLinking(), (Calls{"CoordinateReferenceSystemDefinition::GetDatumCode",
                                       "CoordinateReferenceSystemDefinition::SetDatum"}));
    giveSystemWithoutDatum();
    set.ellipsoid.reset();
    EXPECT_EQ(callsOfLinking(), (Calls{"CoordinateReferenceSystemDefinition::GetDatumCode"}));
}

TEST_F(DefinitionSetLinking, KindOneStaysAsItIs)
{
    set.system = catalogSystem(L"LOCAL:METRE");
    const std::wstring before = serializedText(set.system.get());
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(serializedText(set.system.get()), before);
}

TEST_F(DefinitionSetLinking, SystemOfKindFourWithoutItsDatumStaysAsItIs)
{
    set.system = catalogSystem(L"EPSG:4978");
    set.ellipsoid = catalogEllipsoid(L"EPSG:7019");
    const std::wstring before = serializedText(set.system.get());
    Orvel::linkDefinitionSet(set);
    EXPECT_EQ(serializedText(set.system.get()), before);
}

TEST_F(DefinitionSetLinking, LinkThatFailsLeavesTheSystemAsItWasStored)
{
    for (const char* const call :
         {"CoordinateReferenceSystemDefinition::GetDatumCode", "CoordinateReferenceSystemDefinition::SetDatum"}) {
        giveSystemWithDatum();
        const ScopedFault fault(failing(call));
        Orvel::linkDefinitionSet(set);
        EXPECT_EQ(axisOfSystem(), 6371000) << call;
    }
}

} // namespace
} // namespace Tests
