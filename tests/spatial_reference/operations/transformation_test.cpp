#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::OperationCandidate;

class GeodeticOperations : public SpatialReferenceTest {
protected:
    template <typename Definition>
    static void expectFailure(const wchar_t* codeOrName, Status status)
    {
        Definition* definition = nullptr;
        EXPECT_EQ(Definition::Load(codeOrName, definition), status) << (codeOrName ? codeOrName : L"(null)");
        EXPECT_EQ(definition, nullptr);
    }
    static Holder<GeodeticTransformationDefinition> transformation(const wchar_t* codeOrName)
    {
        return load<GeodeticTransformationDefinition>(codeOrName);
    }
    static Holder<GeodeticPathDefinition> path(const wchar_t* codeOrName)
    {
        return load<GeodeticPathDefinition>(codeOrName);
    }
    template <typename Definition>
    static bool isReversible(const Definition& definition)
    {
        bool result = false;
        EXPECT_EQ(definition.IsReversible(result), statusOk);
        return result;
    }
};

TEST_F(GeodeticOperations, ATransformationIsLoadedByCode)
{
    const auto definition = transformation(L"epsg:1763");
    EXPECT_EQ(codeOf(*definition), L"EPSG:1763");
    EXPECT_EQ(nameOf(*definition), L"NTF (Paris) to NTF (1)");
}

TEST_F(GeodeticOperations, ATransformationIsLoadedByItsExactName)
{
    EXPECT_EQ(codeOf(*transformation(L"NTF (Paris) to NTF (1)")), L"EPSG:1763");
    EXPECT_EQ(codeOf(*transformation(L"WGS 84 to EGM2008 height (2)")), L"EPSG:3859");
}

TEST_F(GeodeticOperations, AnOperationWithAGridKeepsItsOwnCode)
{
    EXPECT_EQ(codeOf(*transformation(L"NAD27 to NAD83 (1)")), L"EPSG:1241");
}

TEST_F(GeodeticOperations, APathIsLoadedByCodeOrName)
{
    EXPECT_EQ(nameOf(*path(L"EPSG:8094")), L"NTF (Paris) to WGS 84 (1)");
    EXPECT_EQ(codeOf(*path(L"NTF (Paris) to WGS 84 (1)")), L"EPSG:8094");
    EXPECT_EQ(codeOf(*path(L"Amersfoort to ED50 (1)")), L"EPSG:4837");
}

TEST_F(GeodeticOperations, TransformationsAndPathsHaveSeparateCodesAndNames)
{
    expectFailure<GeodeticTransformationDefinition>(L"EPSG:8094", statusNotFound);
    expectFailure<GeodeticTransformationDefinition>(L"NTF (Paris) to WGS 84 (1)", statusNotFound);
    expectFailure<GeodeticPathDefinition>(L"EPSG:1763", statusNotFound);
    expectFailure<GeodeticPathDefinition>(L"NTF (Paris) to NTF (1)", statusNotFound);
}

TEST_F(GeodeticOperations, AnUnknownCodeOrNameIsNotFound)
{
    for (const wchar_t* text : {L"EPSG:1", L"EPSG:25832", L"EPSG:16032", L"NTF (Paris) to NTF",
                                L"ntf (paris) to ntf (1)", L"", L":", L"'; DROP TABLE", L"UTM zone 32N"}) {
        expectFailure<GeodeticTransformationDefinition>(text, statusNotFound);
        expectFailure<GeodeticPathDefinition>(text, statusNotFound);
    }
    expectFailure<GeodeticTransformationDefinition>(nullptr, statusNotFound);
    expectFailure<GeodeticPathDefinition>(nullptr, statusNotFound);
}

TEST_F(GeodeticOperations, AMapProjectionIsNotATransformation)
{
    expectFailure<GeodeticTransformationDefinition>(L"EPSG:16032", statusNotFound);
    EXPECT_EQ(codeOf(*transformation(L"PROJ:CRS84_TO_EPSG_4326")), L"PROJ:CRS84_TO_EPSG_4326");
}

TEST_F(GeodeticOperations, AnAmbiguousNameIsRefusedAndHasCandidates)
{
    const wchar_t* name = L"NKG_ETRF14 to ETRF93@2000.0";
    if (!isReferenceCatalog())
        GTEST_SKIP() << "the name is ambiguous in another version of the catalog only";
    expectFailure<GeodeticTransformationDefinition>(name, statusAmbiguous);
    const auto candidates = Embedded::transformationCandidates(name);
    ASSERT_EQ(candidates.size(), 2U);
    EXPECT_EQ(candidates[0].name, name);
    EXPECT_NE(candidates[0].code, candidates[1].code);
    for (const OperationCandidate& candidate : candidates)
        EXPECT_EQ(nameOf(*transformation(candidate.code.c_str())), name);
}

TEST_F(GeodeticOperations, AnUnknownNameHasNoCandidates)
{
    EXPECT_TRUE(Embedded::transformationCandidates(L"no such name").empty());
    EXPECT_TRUE(Embedded::pathCandidates(L"NTF (Paris) to NTF (1)").empty());
    EXPECT_EQ(Embedded::pathCandidates(L"NTF (Paris) to WGS 84 (1)").size(), 1U);
}

TEST_F(GeodeticOperations, ATransformationIsReversibleWhenItsMethodIs)
{
    EXPECT_TRUE(isReversible(*transformation(L"EPSG:1763")));  // longitude rotation
    EXPECT_TRUE(isReversible(*transformation(L"EPSG:1193")));  // geocentric translations
    EXPECT_TRUE(isReversible(*transformation(L"EPSG:1241")));  // a horizontal grid
    EXPECT_FALSE(isReversible(*transformation(L"EPSG:3859"))); // a geoid grid
    EXPECT_FALSE(isReversible(*transformation(L"EPSG:9717"))); // a height grid of one country
}

TEST_F(GeodeticOperations, APathIsReversibleWhenEachOfItsStepsIs)
{
    EXPECT_TRUE(isReversible(*path(L"EPSG:4837")));
    EXPECT_TRUE(isReversible(*path(L"EPSG:8094")));
    EXPECT_FALSE(isReversible(*path(L"EPSG:9750"))); // its second step reads a height grid
}

class TransformationInfoTest : public SpatialReferenceTest {
protected:
    TransformationInfoTest()
    {
        TransformationInfo* created = nullptr;
        EXPECT_EQ(TransformationInfo::CreateInstance(created), statusOk);
        info_.reset(created);
    }
    Holder<TransformationInfo> info_;
};

TEST_F(TransformationInfoTest, ANewInfoIsEmpty)
{
    EXPECT_STREQ(info_->GetName(), L"");
    EXPECT_EQ(info_->GetKind(), transformationNone);
}

TEST_F(TransformationInfoTest, NameAndKindAreReturned)
{
    EXPECT_EQ(info_->SetName(L"Amersfoort to ED50 (1)"), statusOk);
    EXPECT_EQ(info_->SetKind(transformationPath), statusOk);
    EXPECT_STREQ(info_->GetName(), L"Amersfoort to ED50 (1)");
    EXPECT_EQ(info_->GetKind(), transformationPath);
}

TEST_F(TransformationInfoTest, ANullNameRemovesTheName)
{
    EXPECT_EQ(info_->SetName(L"x"), statusOk);
    EXPECT_EQ(info_->SetName(nullptr), statusOk);
    EXPECT_STREQ(info_->GetName(), L"");
}

TEST_F(TransformationInfoTest, AnUnknownKindIsRefused)
{
    EXPECT_EQ(info_->SetKind(transformationSingle), statusOk);
    EXPECT_EQ(info_->SetKind(3), statusInvalidArgument);
    EXPECT_EQ(info_->SetKind(-1), statusInvalidArgument);
    EXPECT_EQ(info_->GetKind(), transformationSingle);
}

} // namespace
