#include "spatial_reference/spatial_reference_test.h"

#include <array>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"

namespace Tests {

Holder<CoordinateReferenceSystemDefinition> SpatialReferenceTest::loadSystem(const std::wstring& code)
{
    return load<CoordinateReferenceSystemDefinition>(code);
}

Holder<DatumDefinition> SpatialReferenceTest::loadDatum(const std::wstring& code)
{
    return load<DatumDefinition>(code);
}

Holder<EllipsoidDefinition> SpatialReferenceTest::loadEllipsoid(const std::wstring& code)
{
    return load<EllipsoidDefinition>(code);
}

Holder<CoordinateReferenceSystemDefinition> SpatialReferenceTest::fromText(const std::wstring& text,
                                                                           const std::wstring& code)
{
    CoordinateReferenceSystemDefinition* definition = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), code.c_str(), definition), statusOk)
        << Embedded::utf8FromWide(text);
    return Holder<CoordinateReferenceSystemDefinition>(definition);
}

Holder<DatumDefinition> SpatialReferenceTest::datumOf(const CoordinateReferenceSystemDefinition& definition)
{
    DatumDefinition* result = nullptr;
    EXPECT_EQ(definition.GetDatum(result), statusOk);
    return Holder<DatumDefinition>(result);
}

Holder<EllipsoidDefinition> SpatialReferenceTest::ellipsoidOf(const CoordinateReferenceSystemDefinition& definition)
{
    EllipsoidDefinition* result = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemUtil::GetEllipsoid(&definition, result), statusOk);
    return Holder<EllipsoidDefinition>(result);
}

std::wstring SpatialReferenceTest::codeOf(const DefinitionBase& definition)
{
    const wchar_t* code = L"";
    EXPECT_EQ(definition.GetCode(code), statusOk);
    return code;
}

std::wstring SpatialReferenceTest::nameOf(const DefinitionBase& definition)
{
    const wchar_t* name = L"";
    EXPECT_EQ(definition.GetName(name), statusOk);
    return name;
}

int SpatialReferenceTest::kindOf(const CoordinateReferenceSystemDefinition& definition)
{
    int kind = 0;
    EXPECT_EQ(definition.GetKind(kind), statusOk);
    return kind;
}

std::wstring SpatialReferenceTest::datumCodeOf(const CoordinateReferenceSystemDefinition& definition)
{
    const wchar_t* code = L"";
    EXPECT_EQ(definition.GetDatumCode(code), statusOk);
    return code;
}

std::wstring SpatialReferenceTest::ellipsoidCodeOf(const CoordinateReferenceSystemDefinition& definition)
{
    const wchar_t* code = L"";
    EXPECT_EQ(definition.GetEllipsoidCode(code), statusOk);
    return code;
}

bool SpatialReferenceTest::isDatumBased(const CoordinateReferenceSystemDefinition& definition)
{
    CoordinateReferenceSystemOperation* operation = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemOperation::Load(&definition, operation), statusOk);
    const Holder<CoordinateReferenceSystemOperation> held(operation);
    bool result = false;
    EXPECT_EQ(held->IsDatumBased(result), statusOk);
    return result;
}

Bytes SpatialReferenceTest::writeStream(const std::vector<const DefinitionBase*>& definitions)
{
    DefinitionStream* created = nullptr;
    EXPECT_EQ(DefinitionStream::CreateInstance(created), statusOk);
    const Holder<DefinitionStream> stream(created);
    for (const DefinitionBase* definition : definitions)
        EXPECT_EQ(stream->Add(definition), statusOk);
    Bytes bytes(1024);
    std::size_t length = bytes.size();
    const Status status = stream->Write(bytes.data(), length, formatBinary, 0);
    bytes.resize(status == statusOk ? length : 0);
    return bytes;
}

Holder<DefinitionBaseArray> SpatialReferenceTest::readStream(const Bytes& bytes)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    if (stream->Read(bytes.data(), bytes.size(), formatBinary, 1) != statusOk)
        return nullptr;
    return definitionsIn(*stream);
}

Holder<DefinitionBaseArray> SpatialReferenceTest::definitionsIn(const DefinitionStream& stream)
{
    DefinitionBaseArray* definitions = nullptr;
    EXPECT_EQ(stream.GetDefinitions(definitions), statusOk);
    return Holder<DefinitionBaseArray>(definitions);
}

Status SpatialReferenceTest::readStatus(const Bytes& bytes)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    const unsigned char none = 0;
    return stream->Read(bytes.empty() ? &none : bytes.data(), bytes.size(), formatBinary, 1);
}

Bytes SpatialReferenceTest::serialize(const DefinitionBase& definition, bool includeDependents)
{
    static Bytes buffer(65536); // static, because the tests serialize the whole catalog
    if (DefinitionStream::Serialize_s(&definition, buffer.data(), buffer.size(), formatText, -1, includeDependents) !=
        statusOk)
        return {};
    std::ptrdiff_t length = 0;
    while (buffer[static_cast<std::size_t>(length)] != 0 || buffer[static_cast<std::size_t>(length) + 1] != 0)
        length += 2;
    return {buffer.begin(), buffer.begin() + length + 2};
}

std::wstring SpatialReferenceTest::serializedText(const DefinitionBase& definition, bool includeDependents)
{
    const Bytes bytes = serialize(definition, includeDependents);
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.empty() ? 0 : bytes.size() - 2);
    return Embedded::wideFromUtf16le(view);
}

Bytes SpatialReferenceTest::utf16le(std::wstring_view text)
{
    const std::string bytes = Embedded::utf16leFromWide(text);
    return {bytes.begin(), bytes.end()};
}

Status SpatialReferenceTest::deserialize(std::wstring_view text, Holder<DefinitionBaseArray>& definitions)
{
    return deserialize(utf16le(std::wstring(text) + L'\0'), definitions);
}

Status SpatialReferenceTest::deserialize(const Bytes& bytes, Holder<DefinitionBaseArray>& definitions)
{
    DefinitionBaseArray* array = nullptr;
    const Status status = DefinitionStream::Deserialize_s(array, bytes.data(), bytes.size(), formatAutomatic, -1);
    definitions.reset(array);
    return status;
}

std::wstring SpatialReferenceTest::writeWkt(const CoordinateReferenceSystemDefinition& definition, Status expected)
{
    std::array<wchar_t, 4096> buffer{};
    EXPECT_EQ(FormatConverter::DefinitionToWkt_s(&definition, wktFlavorDefault, buffer.data(), buffer.size()),
              expected);
    return buffer.data();
}

std::wstring SpatialReferenceTest::describe(const DefinitionBase& definition)
{
    return serializedText(definition, true);
}

bool SpatialReferenceTest::isReferenceCatalog()
{
    return Embedded::projVersion() == "PROJ 9.1.1" && Embedded::catalogVersion() == "EPSG v10.076";
}

} // namespace Tests
