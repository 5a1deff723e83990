#include <algorithm>
#include <utility>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class DefinitionText : public SpatialReferenceTest {
protected:
    static Status readTextStatus(std::wstring_view text)
    {
        Holder<DefinitionBaseArray> definitions;
        const Status status = deserialize(text, definitions);
        EXPECT_EQ(definitions != nullptr, status == statusOk);
        return status;
    }

    static Status readBytesStatus(const Bytes& bytes, int format = formatAutomatic, int version = -1)
    {
        DefinitionBaseArray* definitions = nullptr;
        const unsigned char none = 0;
        const Status status = DefinitionStream::Deserialize_s(definitions, bytes.empty() ? &none : bytes.data(),
                                                              bytes.size(), SerializationFormat(format), version);
        const Holder<DefinitionBaseArray> held(definitions);
        EXPECT_EQ(definitions != nullptr, status == statusOk);
        return status;
    }

    static std::wstring replaceFirst(std::wstring text, const std::wstring& from, const std::wstring& to)
    {
        const auto place = text.find(from);
        EXPECT_NE(place, std::wstring::npos);
        return text.replace(place, from.size(), to);
    }
};

TEST_F(DefinitionText, AnEllipsoidHasTheDocumentedText)
{
    EXPECT_EQ(serializedText(*loadEllipsoid(L"EPSG:7019"), true),
              LR"({"spatialReference":1,"definitions":[{"type":"EllipsoidDefinition","code":"EPSG:7019",)"
              LR"("definition":{"type":"Ellipsoid","name":"GRS 1980","semi_major_axis":6378137,)"
              LR"("inverse_flattening":298.257222101,"id":{"authority":"EPSG","code":7019}}}]})");
}

TEST_F(DefinitionText, TheBytesAreUtf16LittleEndianWithANul)
{
    const auto definition = loadEllipsoid(L"EPSG:7019");
    const Bytes expected = utf16le(serializedText(*definition, false) + L'\0');
    Bytes buffer(expected.size(), 0xAA);
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), buffer.data(), buffer.size(), formatText, -1, false),
              statusOk);
    EXPECT_EQ(buffer, expected);
    EXPECT_EQ(Bytes(buffer.begin(), buffer.begin() + 6), (Bytes{'{', 0, '"', 0, 's', 0}));
    EXPECT_EQ(Bytes(buffer.end() - 4, buffer.end()), (Bytes{'}', 0, 0, 0}));
}

TEST_F(DefinitionText, ATooSmallBufferStaysUnchanged)
{
    const auto definition = loadEllipsoid(L"EPSG:7019");
    const std::size_t needed = 2 * (serializedText(*definition, false).size() + 1);
    Bytes buffer(needed, 0xAA);
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), buffer.data(), needed - 1, formatText, -1, false),
              statusBufferTooSmall);
    EXPECT_EQ(buffer, Bytes(needed, 0xAA));
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), buffer.data(), needed, formatText, -1, false), statusOk);
}

TEST_F(DefinitionText, WithDependentsDatumAndEllipsoidFollow)
{
    const auto definition = loadSystem(L"EPSG:25832");
    Holder<DefinitionBaseArray> copies;
    ASSERT_EQ(deserialize(serializedText(*definition, true), copies), statusOk);
    ASSERT_EQ(copies->GetCount(), 3);
    EXPECT_NE(dynamic_cast<const CoordinateReferenceSystemDefinition*>(copies->GetItem(0)), nullptr);
    EXPECT_NE(dynamic_cast<const DatumDefinition*>(copies->GetItem(1)), nullptr);
    EXPECT_NE(dynamic_cast<const EllipsoidDefinition*>(copies->GetItem(2)), nullptr);
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*definition));
    EXPECT_EQ(describe(*copies->GetItem(1)), describe(*loadDatum(L"EPSG:6258")));
    EXPECT_EQ(describe(*copies->GetItem(2)), describe(*loadEllipsoid(L"EPSG:7019")));
}

TEST_F(DefinitionText, WithoutDependentsTheSystemIsAlone)
{
    Holder<DefinitionBaseArray> copies;
    ASSERT_EQ(deserialize(serializedText(*loadSystem(L"EPSG:25832"), false), copies), statusOk);
    EXPECT_EQ(copies->GetCount(), 1);
}

TEST_F(DefinitionText, ASystemWithoutDatumIsFollowedByItsEllipsoid)
{
    Holder<DefinitionBaseArray> copies;
    ASSERT_EQ(deserialize(serializedText(*loadSystem(L"EPSG:4001"), true), copies), statusOk);
    ASSERT_EQ(copies->GetCount(), 2);
    EXPECT_NE(dynamic_cast<const EllipsoidDefinition*>(copies->GetItem(1)), nullptr);
}

TEST_F(DefinitionText, ALocalSystemHasNoDependents)
{
    Holder<DefinitionBaseArray> copies;
    ASSERT_EQ(deserialize(serializedText(*loadSystem(L"LOCAL:METRE"), true), copies), statusOk);
    EXPECT_EQ(copies->GetCount(), 1);
}

TEST_F(DefinitionText, TheOrderOfTheTextIsTheOrderOfTheArray)
{
    const auto first = serializedText(*loadEllipsoid(L"EPSG:7004"), false);
    const auto second = serializedText(*loadSystem(L"EPSG:28992"), false);
    const auto entriesOf = [](const std::wstring& text) {
        const auto begin = text.find(L'[') + 1;
        return text.substr(begin, text.size() - begin - 2);
    };
    Holder<DefinitionBaseArray> copies;
    ASSERT_EQ(
        deserialize(L"{\"spatialReference\":1,\"definitions\":[" + entriesOf(first) + L"," + entriesOf(second) + L"]}",
                    copies),
        statusOk);
    ASSERT_EQ(copies->GetCount(), 2);
    EXPECT_EQ(codeOf(*copies->GetItem(0)), L"EPSG:7004");
    EXPECT_EQ(codeOf(*copies->GetItem(1)), L"EPSG:28992");
}

TEST_F(DefinitionText, ATextWithOtherWhitespaceAndOrderIsRead)
{
    Holder<DefinitionBaseArray> copies;
    EXPECT_EQ(deserialize(LR"(
        { "definitions": [ { "code": "MY:1", "type": "EllipsoidDefinition",
              "definition": { "type": "Ellipsoid", "name": "Büro 🌍", "radius": 6371000.5 } } ],
          "spatialReference": 1 }
    )",
                          copies),
              statusOk);
    ASSERT_TRUE(copies);
    EXPECT_EQ(nameOf(*copies->GetItem(0)), L"Büro 🌍");
}

TEST_F(DefinitionText, EmptyAndMissingTextsHaveTheirOwnStatus)
{
    EXPECT_EQ(readTextStatus(L""), statusEmptyText);
    EXPECT_EQ(readBytesStatus({}), statusEmptyText);
    DefinitionBaseArray* definitions = nullptr;
    EXPECT_EQ(DefinitionStream::Deserialize_s(definitions, nullptr, 2, formatAutomatic, -1), statusNullText);
    EXPECT_EQ(definitions, nullptr);
}

TEST_F(DefinitionText, OtherTextsAreUnreadable)
{
    for (const wchar_t* text : {L" ",
                                L"x",
                                L"{}",
                                L"[]",
                                L"null",
                                L"1",
                                L"\"text\"",
                                L"{\"spatialReference\":1}",
                                L"{\"definitions\":[]}",
                                L"{\"spatialReference\":1,\"definitions\":[]}",
                                L"{\"spatialReference\":1,\"definitions\":{}}",
                                L"{\"spatialReference\":1,\"definitions\":[1]}",
                                L"{\"spatialReference\":1,\"definitions\":[{}]}",
                                L"{\"spatialReference\":0,\"definitions\":[]}",
                                L"{\"spatialReference\":-1,\"definitions\":[]}",
                                L"{\"spatialReference\":1.0,\"definitions\":[]}",
                                L"{\"spatialReference\":\"1\",\"definitions\":[]}",
                                L"GEOGCS[\"WGS 84\"]",
                                L"{\"type\":\"GeographicCRS\",\"name\":\"WGS 84\"}",
                                L"EPSG:4326"})
        EXPECT_EQ(readTextStatus(text), statusUnreadable) << text;
}

TEST_F(DefinitionText, ANewerVersionOfTheTextIsUnsupported)
{
    const std::wstring text = serializedText(*loadEllipsoid(L"EPSG:7019"), false);
    EXPECT_EQ(readTextStatus(replaceFirst(text, L"\"spatialReference\":1", L"\"spatialReference\":2")),
              statusUnsupported);
}

TEST_F(DefinitionText, OtherFormatsAndVersionsAreUnsupported)
{
    const Bytes bytes = utf16le(serializedText(*loadEllipsoid(L"EPSG:7019"), false) + L'\0');
    EXPECT_EQ(readBytesStatus(bytes, formatBinary), statusUnsupported);
    EXPECT_EQ(readBytesStatus(bytes, formatText), statusUnsupported);
    EXPECT_EQ(readBytesStatus(bytes, formatAutomatic, 2), statusUnsupported);
    EXPECT_EQ(readBytesStatus(bytes, formatAutomatic, 1), statusOk);
    Bytes buffer(65536);
    const auto definition = loadEllipsoid(L"EPSG:7019");
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), buffer.data(), buffer.size(), formatBinary, -1, false),
              statusUnsupported);
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), buffer.data(), buffer.size(), formatText, 2, false),
              statusUnsupported);
    EXPECT_EQ(DefinitionStream::Serialize_s(nullptr, buffer.data(), buffer.size(), formatText, -1, false),
              statusInvalidArgument);
    EXPECT_EQ(DefinitionStream::Serialize_s(definition.get(), nullptr, buffer.size(), formatText, -1, false),
              statusInvalidArgument);
}

TEST_F(DefinitionText, ATextWithoutExactlyOneNulAtItsEndIsUnreadable)
{
    const std::wstring text = serializedText(*loadEllipsoid(L"EPSG:7019"), false);
    EXPECT_EQ(readBytesStatus(utf16le(text)), statusUnreadable);
    EXPECT_EQ(readBytesStatus(utf16le(text + L'\0' + L'x')), statusUnreadable);
    Bytes odd = utf16le(text + L'\0');
    odd.push_back(0);
    EXPECT_EQ(readBytesStatus(odd), statusUnreadable);
}

TEST_F(DefinitionText, ATruncatedTextIsUnreadable)
{
    const std::wstring text = serializedText(*loadSystem(L"EPSG:28992"), true);
    for (std::size_t length = 1; length < text.size(); ++length)
        EXPECT_EQ(readTextStatus(text.substr(0, length)), statusUnreadable) << length;
}

TEST_F(DefinitionText, ADuplicateKeyIsUnreadable)
{
    const std::wstring text = serializedText(*loadEllipsoid(L"EPSG:7019"), false);
    EXPECT_EQ(readTextStatus(replaceFirst(text, L"\"name\"", L"\"name\":\"first\",\"name\"")), statusUnreadable);
}

TEST_F(DefinitionText, DeepNestingIsUnreadable)
{
    const std::wstring arrays(10000, L'[');
    EXPECT_EQ(readTextStatus(arrays), statusUnreadable);
    EXPECT_EQ(readTextStatus(arrays + std::wstring(10000, L']')), statusUnreadable);
    std::wstring objects;
    for (int level = 0; level < 10000; ++level)
        objects += L"{\"a\":";
    EXPECT_EQ(readTextStatus(objects + L"1" + std::wstring(10000, L'}')), statusUnreadable);
}

TEST_F(DefinitionText, AnUnpairedSurrogateIsUnreadable)
{
    Bytes bytes = utf16le(serializedText(*loadEllipsoid(L"EPSG:7019"), false) + L'\0');
    const Bytes letter = utf16le(L"G");
    const auto place = std::search(bytes.begin(), bytes.end(), letter.begin(), letter.end());
    ASSERT_NE(place, bytes.end());
    *(place + 1) = 0xD8;
    EXPECT_EQ(readBytesStatus(bytes), statusUnreadable);
}

TEST_F(DefinitionText, ADefinitionThatLacksAPartIsUnreadable)
{
    const std::wstring text = serializedText(*loadSystem(L"EPSG:28992"), false);
    for (const wchar_t* key :
         {L"\"datum\"", L"\"ellipsoid\"", L"\"base_crs\"", L"\"conversion\"", L"\"coordinate_system\"", L"\"axis\"",
          L"\"semi_major_axis\"", L"\"code\"", L"\"type\"", L"\"definition\"", L"\"method\"", L"\"abbreviation\""})
        EXPECT_EQ(readTextStatus(replaceFirst(text, key, L"\"absent\"")), statusUnreadable) << key;
}

TEST_F(DefinitionText, AnInvalidValueIsUnreadable)
{
    const std::wstring text = serializedText(*loadSystem(L"EPSG:28992"), false);
    const std::pair<const wchar_t*, const wchar_t*> changes[] = {
        {L"6377397.155", L"0"},       {L"6377397.155", L"-1"},          {L"6377397.155", L"\"long\""},
        {L"6377397.155", L"1e999"},   {L"\"ProjectedCRS\"", L"\"X\""},  {L"\"ProjectedCRS\"", L"\"VerticalCRS\""},
        {L"\"east\"", L"\"easter\""}, {L"\"Cartesian\"", L"\"round\""}, {L"\"EPSG:28992\"", L"\"\""},
        {L"\"metre\"", L"7"}};
    for (const auto& [from, to] : changes)
        EXPECT_EQ(readTextStatus(replaceFirst(text, from, to)), statusUnreadable) << from << L" " << to;
}

} // namespace
