// Every call that can fail does so when it is told to, changes nothing and hands out nothing.
#include <array>
#include <functional>

#include "embedded/diagnostics/fault_injection.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

constexpr int kCode = 99;

/// The library's objects that a call may need, and one attempt at each call.
class InjectedFailure : public SpatialReferenceTest {
protected:
    InjectedFailure()
        : system_(system(L"EPSG:25832")),
          datum_(datum(L"EPSG:6289")),
          ellipsoid_(ellipsoid(L"EPSG:7004")),
          array_(new DefinitionBaseArray),
          stream_(new DefinitionStream),
          info_(new TransformationInfo)
    {
        EXPECT_EQ(stream_->Add(system_.get()), statusOk);
        EXPECT_EQ(info_->SetName(L"name"), statusOk);
    }

    void expectFailure(const char* call, const std::function<Status()>& attempt)
    {
        const std::wstring before = factsOf(*system_) + factsOf(*datum_);
        {
            const ScopedFault fault({.call = call, .code = kCode});
            EXPECT_EQ(attempt(), Status(kCode)) << call;
            EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U) << call;
        }
        EXPECT_EQ(factsOf(*system_) + factsOf(*datum_), before) << call;
    }

    /// For calls that hand out something new: a stale pointer must become null.
    template <typename Made>
    void expectNothingMade(const char* call, const std::function<Status(Made*&)>& attempt)
    {
        alignas(Made) std::array<unsigned char, sizeof(Made)> stale{};
        Made* made = reinterpret_cast<Made*>(stale.data());
        expectFailure(call, [&] { return attempt(made); });
        EXPECT_EQ(made, nullptr) << call;
    }

    Holder<CoordinateReferenceSystemDefinition> system_;
    Holder<DatumDefinition> datum_;
    Holder<EllipsoidDefinition> ellipsoid_;
    Holder<DefinitionBaseArray> array_;
    Holder<DefinitionStream> stream_;
    Holder<TransformationInfo> info_;
};

TEST_F(InjectedFailure, ALoadHandsOutNothing)
{
    expectNothingMade<CoordinateReferenceSystemDefinition>(
        "CoordinateReferenceSystemDefinition::Load",
        [](auto*& made) { return CoordinateReferenceSystemDefinition::Load(L"EPSG:4326", made); });
    expectNothingMade<CoordinateReferenceSystemDefinition>(
        "CoordinateReferenceSystemDefinition::CreateFromText", [](auto*& made) {
            return CoordinateReferenceSystemDefinition::CreateFromText(L"+proj=longlat +ellps=GRS80", L"U:1", made);
        });
    expectNothingMade<DatumDefinition>("DatumDefinition::Load",
                                       [](auto*& made) { return DatumDefinition::Load(L"EPSG:6326", made); });
    expectNothingMade<EllipsoidDefinition>("EllipsoidDefinition::Load",
                                           [](auto*& made) { return EllipsoidDefinition::Load(L"EPSG:7030", made); });
    expectNothingMade<GeodeticTransformationDefinition>("GeodeticTransformationDefinition::Load", [](auto*& made) {
        return GeodeticTransformationDefinition::Load(L"EPSG:1763", made);
    });
    expectNothingMade<GeodeticPathDefinition>(
        "GeodeticPathDefinition::Load", [](auto*& made) { return GeodeticPathDefinition::Load(L"EPSG:8094", made); });
    expectNothingMade<CoordinateReferenceSystemOperation>(
        "CoordinateReferenceSystemOperation::Load",
        [this](auto*& made) { return CoordinateReferenceSystemOperation::Load(system_.get(), made); });
}

TEST_F(InjectedFailure, ACreationHandsOutNothing)
{
    expectNothingMade<DefinitionBaseArray>("DefinitionBaseArray::CreateInstance", DefinitionBaseArray::CreateInstance);
    expectNothingMade<DefinitionStream>("DefinitionStream::CreateInstance", DefinitionStream::CreateInstance);
    expectNothingMade<TransformationInfo>("TransformationInfo::CreateInstance", TransformationInfo::CreateInstance);
}

TEST_F(InjectedFailure, APartIsNotHandedOut)
{
    expectNothingMade<DatumDefinition>("CoordinateReferenceSystemDefinition::GetDatum",
                                       [this](auto*& made) { return system_->GetDatum(made); });
    expectNothingMade<EllipsoidDefinition>("DatumDefinition::GetEllipsoid",
                                           [this](auto*& made) { return datum_->GetEllipsoid(made); });
    expectNothingMade<EllipsoidDefinition>("CoordinateReferenceSystemUtil::GetEllipsoid", [this](auto*& made) {
        return CoordinateReferenceSystemUtil::GetEllipsoid(system_.get(), made);
    });
    expectNothingMade<DefinitionBaseArray>("DefinitionStream::GetDefinitions",
                                           [this](auto*& made) { return stream_->GetDefinitions(made); });
}

TEST_F(InjectedFailure, AQueryLeavesItsAnswerAsItWas)
{
    const wchar_t* text = L"before";
    expectFailure("DefinitionBase::GetCode", [&] { return system_->GetCode(text); });
    expectFailure("DefinitionBase::GetName", [&] { return system_->GetName(text); });
    expectFailure("DatumDefinition::GetEllipsoidCode", [&] { return datum_->GetEllipsoidCode(text); });
    expectFailure("CoordinateReferenceSystemDefinition::GetDatumCode", [&] { return system_->GetDatumCode(text); });
    expectFailure("CoordinateReferenceSystemDefinition::GetEllipsoidCode",
                  [&] { return system_->GetEllipsoidCode(text); });
    EXPECT_STREQ(text, L"before");
    int kind = -7;
    expectFailure("CoordinateReferenceSystemDefinition::GetKind", [&] { return system_->GetKind(kind); });
    EXPECT_EQ(kind, -7);
    double number = -7;
    expectFailure("EllipsoidDefinition::GetSemiMajorAxisInMetres",
                  [&] { return ellipsoid_->GetSemiMajorAxisInMetres(number); });
    expectFailure("EllipsoidDefinition::GetInverseFlattening",
                  [&] { return ellipsoid_->GetInverseFlattening(number); });
    EXPECT_EQ(number, -7);
}

TEST_F(InjectedFailure, AYesOrNoIsNotAnswered)
{
    CoordinateReferenceSystemOperation* made = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemOperation::Load(system_.get(), made), statusOk);
    const Holder<CoordinateReferenceSystemOperation> operation(made);
    GeodeticTransformationDefinition* loaded = nullptr;
    EXPECT_EQ(GeodeticTransformationDefinition::Load(L"EPSG:1763", loaded), statusOk);
    const Holder<GeodeticTransformationDefinition> transformation(loaded);
    GeodeticPathDefinition* loadedPath = nullptr;
    EXPECT_EQ(GeodeticPathDefinition::Load(L"EPSG:8094", loadedPath), statusOk);
    const Holder<GeodeticPathDefinition> path(loadedPath);
    bool answer = false;
    expectFailure("CoordinateReferenceSystemOperation::IsDatumBased", [&] { return operation->IsDatumBased(answer); });
    expectFailure("GeodeticTransformationDefinition::IsReversible",
                  [&] { return transformation->IsReversible(answer); });
    expectFailure("GeodeticPathDefinition::IsReversible", [&] { return path->IsReversible(answer); });
    EXPECT_FALSE(answer);
}

TEST_F(InjectedFailure, AChangeIsNotMade)
{
    expectFailure("CoordinateReferenceSystemDefinition::SetDatum", [&] { return system_->SetDatum(datum_.get()); });
    expectFailure("CoordinateReferenceSystemDefinition::SetEllipsoid",
                  [&] { return system_->SetEllipsoid(ellipsoid_.get()); });
    const auto other = ellipsoid(L"EPSG:7001");
    expectFailure("DatumDefinition::SetEllipsoid", [&] { return datum_->SetEllipsoid(other.get()); });
    expectFailure("TransformationInfo::SetName", [&] { return info_->SetName(L"other"); });
    expectFailure("TransformationInfo::SetKind", [&] { return info_->SetKind(transformationPath); });
    EXPECT_STREQ(info_->GetName(), L"name");
    EXPECT_EQ(info_->GetKind(), transformationNone);
}

TEST_F(InjectedFailure, AnAddLeavesTheDefinitionWithTheCaller)
{
    expectFailure("DefinitionBaseArray::Add", [&] { return array_->Add(datum_.get()); });
    EXPECT_EQ(array_->GetCount(), 0);
}

TEST_F(InjectedFailure, AStreamKeepsItsContents)
{
    const Bytes bytes = bytesOf({datum_.get()});
    expectFailure("DefinitionStream::Add", [&] { return stream_->Add(ellipsoid_.get()); });
    expectFailure("DefinitionStream::Read", [&] { return stream_->Read(bytes.data(), bytes.size(), formatBinary, 1); });
    Bytes buffer(1024, 0xAA);
    std::size_t length = buffer.size();
    expectFailure("DefinitionStream::Write", [&] { return stream_->Write(buffer.data(), length, formatBinary, 0); });
    EXPECT_EQ(buffer, Bytes(1024, 0xAA));
    EXPECT_EQ(length, buffer.size());
    EXPECT_EQ(stream_->Write(buffer.data(), length, formatBinary, 0), statusOk);
    buffer.resize(length);
    EXPECT_EQ(buffer, bytesOf({system_.get()}));
}

TEST_F(InjectedFailure, ATextIsNotWrittenAndNotRead)
{
    Bytes buffer(65536, 0xAA);
    expectFailure("DefinitionStream::Serialize_s", [&] {
        return DefinitionStream::Serialize_s(system_.get(), buffer.data(), buffer.size(), formatText, -1, true);
    });
    EXPECT_EQ(buffer, Bytes(65536, 0xAA));
    const Bytes text = utf16le(textOf(*system_, true) + L'\0');
    expectNothingMade<DefinitionBaseArray>("DefinitionStream::Deserialize_s", [&](auto*& made) {
        return DefinitionStream::Deserialize_s(made, text.data(), text.size(), formatAutomatic, -1);
    });
    std::wstring wkt(4096, L'#');
    expectFailure("FormatConverter::DefinitionToWkt_s", [&] {
        return FormatConverter::DefinitionToWkt_s(system_.get(), wktFlavorDefault, wkt.data(), wkt.size());
    });
    EXPECT_EQ(wkt, std::wstring(4096, L'#'));
}

TEST_F(InjectedFailure, WithoutACodeOfItsOwnACreationFailsForWantOfMemory)
{
    DefinitionBaseArray* array = nullptr;
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = {}});
    EXPECT_EQ(DefinitionBaseArray::CreateInstance(array), statusOutOfMemory);
}

TEST_F(InjectedFailure, ACallCountsOnceHoweverMuchItDoes)
{
    Embedded::FaultInjection::watch();
    static_cast<void>(system(L"EPSG:25832")); // only the calls that it counts matter here
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>{"CoordinateReferenceSystemDefinition::Load"});
    Embedded::FaultInjection::watch();
    const Bytes text = utf16le(std::wstring(L"{}") + L'\0');
    DefinitionBaseArray* made = nullptr;
    EXPECT_EQ(DefinitionStream::Deserialize_s(made, text.data(), text.size(), formatAutomatic, -1), statusUnreadable);
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>{"DefinitionStream::Deserialize_s"});
}

} // namespace
