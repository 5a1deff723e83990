// The kinds of systems that are read and written with an ellipsoid, including kinds without a name.
#include "recording/recording_test.h"
#include "storage/definition_xrecord.h"

namespace Tests {
namespace {

class Kinds : public RecordingTest {
protected:
    static Definition makeSystemOfKind(int kind)
    {
        Definition definition = kSystem;
        definition.kind = kind;
        return definition;
    }
};

TEST_F(Kinds, OnlyGeographicAndProjectedSystems_AreReadWithAnEllipsoid)
{
    for (const int kind : {-1, 0, 1, 2, 3, 4, 5, 99}) {
        const bool needsOne = kind == Library::kindGeographic || kind == Library::kindProjected;
        storeXrecord(L"MINE:1", {makeSystemOfKind(kind)});
        EXPECT_EQ(read(), needsOne ? Texts() : Texts{L"MINE:1"}) << kind;
        EXPECT_EQ(result, needsOne ? Qeapp::eNotApplicable : Qeapp::eOk) << kind;
    }
}

TEST_F(Kinds, SystemsThatReferToTheEarth_AreWrittenWithDatumAndEllipsoid)
{
    for (const int kind : {-1, 0, 1, 2, 3, 4, 5, 99}) {
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(system(makeSystemOfKind(kind)).get(), database()), Qeapp::eOk)
            << kind;
        drawing.withLegacyCode(L"MINE:1");
        EXPECT_EQ(read(),
                  kind == Library::kindNotEarthReferenced ? Texts{L"MINE:1"} : (Texts{L"MINE:1", L"MINE:2", L"MINE:3"}))
            << kind;
    }
}

} // namespace
} // namespace Tests
