// Every call fails when a fault is injected, changes nothing and returns no object.
#include <array>
#include <functional>

#include "embedded/diagnostics/fault_injection.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

constexpr int kCode = 99;

/// Has the objects that the calls need.
class InjectedFailure : public SpatialReferenceTest {
protected:
    InjectedFailure()
        : system_(loadSystem(L"EPSG:25832")),
          datum_(loadDatum(L"EPSG:6289")),
          ellipsoid_(loadEllipsoid(L"EPSG:7004")),
          array_(new DefinitionBaseArray),
          stream_(new DefinitionStream),
          info_(new TransformationInfo)
    {
        EXPECT_EQ(stream_->Add(system_.get()), statusOk);
        EXPECT_EQ(info_->SetName(L"name"), statusOk);
    }

    void expectFailure(const char* call, const std::function<Status()>& attempt)
    {
        const std::wstring before = describe(*system_) + describe(*datum_);
        {
            const ScopedFault fault({.call = call, .code = kCode});
            EXPECT_EQ(attempt(), Status(kCode)) << call;
            EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U) << call;
        }
        EXPECT_EQ(describe(*system_) + describe(*datum_), before) << call;
    }

    /// For calls that create an object: a stale pointer must become null.
    template <typename Created>
    void expectNoObject(const char* call, const std::function<Status(Created*&)>& attempt)
    {
        alignas(Created) std::array<unsigned char, sizeof(Created)> stale{};
        Created* created = reinterpret_cast<Created*>(stale.data());
        expectFailure(call, [&] { return attempt(created); });
        EXPECT_EQ(created, nullptr) << call;
    }

    Holder<CoordinateReferenceSystemDefinition> system_;
    Holder<DatumDefinition> datum_;
    Holder<EllipsoidDefinition> ellipsoid_;
    Holder<DefinitionBaseArray> array_;
    Holder<DefinitionStream> stream_;
    Holder<TransformationInfo> info_;
};

TEST_F(InjectedFailure, AFailingLoadReturnsNoObject)
{
    expectNoObject<CoordinateReferenceSystemDefinition>(
        "CoordinateReferenceSystemDefinition::Load",
        [](auto*& created) { return CoordinateReferenceSystemDefinition::Load(L"EPSG:4326", created); });
    expectNoObject<CoordinateReferenceSystemDefinition>(
        "CoordinateReferenceSystemDefinition::CreateFromText", [](auto*& created) {
            return CoordinateReferenceSystemDefinition::CreateFromText(L"+proj=longlat +ellps=GRS80", L"U:1", created);
        });
    expectNoObject<DatumDefinition>("DatumDefinition::Load",
                                    [](auto*& created) { return DatumDefinition::Load(L"EPSG:6326", created); });
    expectNoObject<EllipsoidDefinition>(
        "EllipsoidDefinition::Load", [](auto*& created) { return EllipsoidDefinition::Load(L"EPSG:7030", created); });
    expectNoObject<GeodeticTransformationDefinition>("GeodeticTransformationDefinition::Load", [](auto*& created) {
        return GeodeticTransformationDefinition::Load(L"EPSG:1763", created);
    });
    expectNoObject<GeodeticPathDefinition>("GeodeticPathDefinition::Load", [](auto*& created) {
        return GeodeticPathDefinition::Load(L"EPSG:8094", created);
    });
    expectNoObject<CoordinateReferenceSystemOperation>(
        "CoordinateReferenceSystemOperation::Load",
        [this](auto*& created) { return CoordinateReferenceSystemOperation::Load(system_.get(), created); });
}

TEST_F(InjectedFailure, AFailingCreationReturnsNoObject)
{
    expectNoObject<DefinitionBaseArray>("DefinitionBaseArray::CreateInstance", DefinitionBaseArray::CreateInstance);
    expectNoObject<DefinitionStream>("DefinitionStream::CreateInstance", DefinitionStream::CreateInstance);
    expectNoObject<TransformationInfo>("TransformationInfo::CreateInstance", TransformationInfo::CreateInstance);
}

TEST_F(InjectedFailure, AFailingQueryForAPartReturnsNoObject)
{
    expectNoObject<DatumDefinition>("CoordinateReferenceSystemDefinition::GetDatum",
                                    [this](auto*& created) { return system_->GetDatum(created); });
    expectNoObject<EllipsoidDefinition>("DatumDefinition::GetEllipsoid",
                                        [this](auto*& created) { return datum_->GetEllipsoid(created); });
    expectNoObject<EllipsoidDefinition>("CoordinateReferenceSystemUtil::GetEllipsoid", [this](auto*& created) {
        return CoordinateReferenceSystemUtil::GetEllipsoid(system_.get(), created);
    });
    expectNoObject<DefinitionBaseArray>("DefinitionStream::GetDefinitions",
                                        [this](auto*& created) { return stream_->GetDefinitions(created); });
}

TEST_F(InjectedFailure, AFailingQueryLeavesItsOutputUnchanged)
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

TEST_F(InjectedFailure, AFailingYesOrNoQueryLeavesItsOutputUnchanged)
{
    CoordinateReferenceSystemOperation* created = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemOperation::Load(system_.get(), created), statusOk);
    const Holder<CoordinateReferenceSystemOperation> operation(created);
    const auto transformation = load<GeodeticTransformationDefinition>(L"EPSG:1763");
    const auto path = load<GeodeticPathDefinition>(L"EPSG:8094");
    bool result = false;
    expectFailure("CoordinateReferenceSystemOperation::IsDatumBased", [&] { return operation->IsDatumBased(result); });
    expectFailure("GeodeticTransformationDefinition::IsReversible",
                  [&] { return transformation->IsReversible(result); });
    expectFailure("GeodeticPathDefinition::IsReversible", [&] { return path->IsReversible(result); });
    EXPECT_FALSE(result);
}

TEST_F(InjectedFailure, AFailingSetterChangesNothing)
{
    expectFailure("CoordinateReferenceSystemDefinition::SetDatum", [&] { return system_->SetDatum(datum_.get()); });
    expectFailure("CoordinateReferenceSystemDefinition::SetEllipsoid",
                  [&] { return system_->SetEllipsoid(ellipsoid_.get()); });
    const auto other = loadEllipsoid(L"EPSG:7001");
    expectFailure("DatumDefinition::SetEllipsoid", [&] { return datum_->SetEllipsoid(other.get()); });
    expectFailure("TransformationInfo::SetName", [&] { return info_->SetName(L"other"); });
    expectFailure("TransformationInfo::SetKind", [&] { return info_->SetKind(transformationPath); });
    EXPECT_STREQ(info_->GetName(), L"name");
    EXPECT_EQ(info_->GetKind(), transformationNone);
}

TEST_F(InjectedFailure, AFailingAddLeavesTheDefinitionWithTheCaller)
{
    expectFailure("DefinitionBaseArray::Add", [&] { return array_->Add(datum_.get()); });
    EXPECT_EQ(array_->GetCount(), 0);
}

TEST_F(InjectedFailure, AFailingStreamKeepsItsContents)
{
    const Bytes bytes = writeStream({datum_.get()});
    expectFailure("DefinitionStream::Add", [&] { return stream_->Add(ellipsoid_.get()); });
    expectFailure("DefinitionStream::Read", [&] { return stream_->Read(bytes.data(), bytes.size(), formatBinary, 1); });
    Bytes buffer(1024, 0xAA);
    std::size_t length = buffer.size();
    expectFailure("DefinitionStream::Write", [&] { return stream_->Write(buffer.data(), length, formatBinary, 0); });
    EXPECT_EQ(buffer, Bytes(1024, 0xAA));
    EXPECT_EQ(length, buffer.size());
    EXPECT_EQ(stream_->Write(buffer.data(), length, formatBinary, 0), statusOk);
    buffer.resize(length);
    EXPECT_EQ(buffer, writeStream({system_.get()}));
}

TEST_F(InjectedFailure, AFailingConversionWritesAndReadsNoText)
{
    Bytes buffer(65536, 0xAA);
    expectFailure("DefinitionStream::Serialize_s", [&] {
        return DefinitionStream::Serialize_s(system_.get(), buffer.data(), buffer.size(), formatText, -1, true);
    });
    EXPECT_EQ(buffer, Bytes(65536, 0xAA));
    const Bytes text = utf16le(serializedText(*system_, true) + L'\0');
    expectNoObject<DefinitionBaseArray>("DefinitionStream::Deserialize_s", [&](auto*& created) {
        return DefinitionStream::Deserialize_s(created, text.data(), text.size(), formatAutomatic, -1);
    });
    std::wstring wkt(4096, L'#');
    expectFailure("FormatConverter::DefinitionToWkt_s", [&] {
        return FormatConverter::DefinitionToWkt_s(system_.get(), wktFlavorDefault, wkt.data(), wkt.size());
    });
    EXPECT_EQ(wkt, std::wstring(4096, L'#'));
}

TEST_F(InjectedFailure, ACreationFailsWithOutOfMemoryByDefault)
{
    DefinitionBaseArray* array = nullptr;
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = {}});
    EXPECT_EQ(DefinitionBaseArray::CreateInstance(array), statusOutOfMemory);
}

TEST_F(InjectedFailure, EachCallIsCountedOnce)
{
    Embedded::FaultInjection::watch();
    static_cast<void>(loadSystem(L"EPSG:25832")); // the test needs only its calls
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>{"CoordinateReferenceSystemDefinition::Load"});
    Embedded::FaultInjection::watch();
    const Bytes text = utf16le(std::wstring(L"{}") + L'\0');
    DefinitionBaseArray* created = nullptr;
    EXPECT_EQ(DefinitionStream::Deserialize_s(created, text.data(), text.size(), formatAutomatic, -1),
              statusUnreadable);
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>{"DefinitionStream::Deserialize_s"});
}

} // namespace
