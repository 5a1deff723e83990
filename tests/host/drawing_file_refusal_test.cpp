// Texts that are no valid drawing, one rule each: the example of the format page with an edit or two.
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "drawing_file_samples.h"
#include "embedded/host/drawing_file.h"
#include "support/case_name.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using namespace Embedded;

struct Refusal {
    std::string name;
    std::vector<std::pair<std::string, std::string>> edits;
    std::string message; // or the beginning of it
    Qeapp::ErrorStatus status = Qeapp::eFileDamaged;
};

void PrintTo(const Refusal& refusal, std::ostream* out)
{
    *out << refusal.name;
}

class DrawingFileRefusal : public PlatformTest, public testing::WithParamInterface<Refusal> {};

TEST_P(DrawingFileRefusal, IsRefusedWithThePlace)
{
    std::string text = exampleText();
    for (const auto& [from, to] : GetParam().edits)
        text = edited(text, from, to);
    const DrawingImage before{.drawingVersion = -7, .objects = {}};
    DrawingImage image = before;
    const FileResult result = drawingImageFrom(text, image);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.message.substr(0, GetParam().message.size()), GetParam().message);
    EXPECT_FALSE(result.message.empty());
    EXPECT_EQ(image, before) << "touched by a refused text";
}

std::string nested(std::size_t arrays)
{
    return std::string(arrays, '[') + std::string(arrays, ']');
}

const std::string kFormat = R"("format": "embedded host drawing")";
const std::string kHeader = R"("value": 1})";
const std::string kGeoData =
    R"({"handle": "A", "owner": "4", "class": "QeDbGeoData", "block": "4", "coordinateSystem": "LOCAL_CS[\"Werksnetz\"]"})";

INSTANTIATE_TEST_SUITE_P(
    Syntax, DrawingFileRefusal,
    testing::Values(Refusal{"AMissingComma", {{"29,", "29"}}, "line 5, byte 98: syntax error while parsing object"},
                    Refusal{"ATrailingComma",
                            {{R"("]"}
  ])",
                              R"("]"},
  ])"}},
                            "line 42"},
                    Refusal{"TextAfterTheDocument", {{"  ]\n}\n", "  ]\n}\n{}\n"}}, "line 44, byte "},
                    Refusal{"NoNewlineAtTheEnd", {{"  ]\n}\n", "  ]\n}"}}, "line 43, byte "},
                    Refusal{"AComment", {{"29,", "29, // old"}}, "line 4, byte "},
                    Refusal{"ANul", {{"29,", std::string("29\0,", 4)}}, "line 4, byte "},
                    Refusal{
                        "AnUnpairedSurrogateEscape", {{R"("value": "{")", R"("value": "\ud800")"}}, "line 24, byte "},
                    Refusal{"InvalidUtf8", {{"L\xC3\xA4ng", "L\xE4ng"}}, "line 32, byte "},
                    Refusal{"AnOverlongUtf8Form", {{"L\xC3\xA4ng", "L\xC1\xA4ng"}}, "line 32, byte "},
                    Refusal{"ASurrogateInUtf8", {{"L\xC3\xA4ng", "L\xED\xA0\x80ng"}}, "line 32, byte "},
                    Refusal{"AControlCharacterInAString", {{"EXAMPLE", "EXA\nMPLE"}}, "line 11, byte "},
                    Refusal{"ARealBeyondTheRange", {{"6378137.0", "1e999"}}, "line 36, byte "},
                    Refusal{"ANegativeRealBeyondTheRange", {{"6378137.0", "-1e999"}}, "line 36, byte "},
                    Refusal{"ARealTooSmallForADouble",
                            {{"6378137.0", "1e-999"}},
                            "objects[7].chain[4].value: the number 1e-999 is too small for a real"},
                    Refusal{"ARepeatedField",
                            {{R"("owner": "7")", R"("owner": "7", "owner": "7")"}},
                            "objects[7]: the field \"owner\" appears twice"},
                    Refusal{"ARepeatedFieldOfTheDocument",
                            {{kFormat, kFormat + ", " + kFormat}},
                            "drawing: the field \"format\" appears twice"},
                    Refusal{"ArraysOneLevelTooDeep",
                            {{R"("value": 1})", R"("value": )" + nested(60) + "}"}},
                            "objects[5].chain[0].value[0][0]"},
                    Refusal{"ObjectsOneLevelTooDeep",
                            {{R"("value": 1})",
                              R"("value": [)" + std::string(57, '[') + R"({"a": {}})" + std::string(57, ']') + "]}"}},
                            "objects[5].chain[0].value[0][0]"}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Format, DrawingFileRefusal,
    testing::Values(
        Refusal{"AnotherFormat",
                {{kFormat, R"("format": "embedded host painting")"}},
                "drawing: not a drawing file: its field \"format\" is not \"embedded host drawing\""},
        Refusal{"NoFormat", {{kFormat + ",", ""}}, "drawing: not a drawing file"},
        Refusal{"AFormatThatIsNoString", {{kFormat, R"("format": 1)"}}, "format: must be a string"},
        Refusal{"ANewerFormatVersion",
                {{R"("formatVersion": 1)", R"("formatVersion": 2)"}, {R"("nextHandle")", R"("newField")"}},
                "formatVersion: 2 is newer than this program, which understands 1",
                Qeapp::eFileTooNew},
        Refusal{"FormatVersionZero",
                {{R"("formatVersion": 1)", R"("formatVersion": 0)"}},
                "formatVersion: 0 is not from 1 to 2147483647"},
        Refusal{"NoFormatVersion", {{R"(  "formatVersion": 1,)", ""}}, "formatVersion: is missing"},
        Refusal{"AFormatVersionWithAFraction",
                {{R"("formatVersion": 1)", R"("formatVersion": 1.0)"}},
                "formatVersion: must be an integer"},
        Refusal{"DrawingVersion20", {{"29,", "20,"}}, "drawingVersion: 20 is not from 21 to 33"},
        Refusal{"DrawingVersion34", {{"29,", "34,"}}, "drawingVersion: 34 is not from 21 to 33"},
        Refusal{"ADrawingVersionBeyondEveryInteger",
                {{"29,", "18446744073709551615,"}},
                "drawingVersion: 18446744073709551615 is not from "},
        Refusal{
            "ADrawingVersionOfManyDigits", {{"29,", "99999999999999999999,"}}, "drawingVersion: must be an integer"},
        Refusal{"ADrawingVersionInAString", {{"29,", "\"29\","}}, "drawingVersion: must be an integer"},
        Refusal{"NoObjects", {{R"("objects": [)", R"("objekts": [)"}}, "objekts: unknown field"},
        Refusal{"ObjectsThatAreNoArray", {{R"(  "objects": [)", R"(  "objects": {}, "x": [)"}}, "x: unknown field"},
        Refusal{"AnUnknownFieldOfTheDocument", {{"29,", "29, \"units\": 4,"}}, "units: unknown field"},
        Refusal{"AnUnknownFieldWithALongName",
                {{"29,", "29, \"" + std::string(39, 'x') + "\xC3\xA4\\n\": 4,"}},
                std::string(39, 'x') + "…: unknown field"},
        Refusal{"AnUnknownFieldWithANewlineInItsName", {{"29,", R"(29, "a\nb": 4,)"}}, "a?b: unknown field"}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Fields, DrawingFileRefusal,
    testing::Values(
        Refusal{"AnUnknownClass", {{"QeDbGeoData", "QeDbPlanet"}}, "objects[8].class: unknown class \"QeDbPlanet\""},
        Refusal{"AClassThatIsNoString", {{R"("QeDbGeoData")", "null"}}, "objects[8].class: must be a string"},
        Refusal{"NoClass", {{R"("class": "QeDbGeoData", )", ""}}, "objects[8].class: is missing"},
        Refusal{"AnObjectThatIsNoObject", {{kGeoData, "7"}}, "objects[8]: must be an object"},
        Refusal{"AnUnknownFieldOfAnObject",
                {{R"("block": "4",)", R"("block": "4", "colour": 3,)"}},
                "objects[8].colour: unknown field"},
        Refusal{"AFieldOfAnotherClass",
                {{R"("block": "4",)", R"("block": "4", "chain": [],)"}},
                "objects[8].chain: unknown field"},
        Refusal{"AMissingFieldOfAClass", {{R"("block": "4", )", ""}}, "objects[8].block: is missing"},
        Refusal{"NoHandle", {{R"("handle": "A", )", ""}}, "objects[8].handle: is missing"},
        Refusal{
            "AHandleInLowerCase", {{R"("handle": "A")", R"("handle": "a")"}}, "objects[8].handle: must be a handle"},
        Refusal{"AHandleWithALeadingZero",
                {{R"("handle": "A")", R"("handle": "0A")"}},
                "objects[8].handle: must be a handle"},
        Refusal{"AHandleOfZero", {{R"("handle": "A")", R"("handle": "0")"}}, "objects[8].handle: must be a handle"},
        Refusal{"AnEmptyHandle", {{R"("handle": "A")", R"("handle": "")"}}, "objects[8].handle: must be a handle"},
        Refusal{"AHandleOf17Digits",
                {{R"("handle": "A")", R"("handle": "10000000000000000")"}},
                "objects[8].handle: must be a handle"},
        Refusal{
            "AHandleWithAPrefix", {{R"("handle": "A")", R"("handle": "0xA")"}}, "objects[8].handle: must be a handle"},
        Refusal{
            "AHandleThatIsANumber", {{R"("handle": "A")", R"("handle": 10)"}}, "objects[8].handle: must be a handle"},
        Refusal{"AnOwnerOfNull", {{R"("owner": "7")", R"("owner": null)"}}, "objects[7].owner: must be a handle"},
        Refusal{
            "ANextHandleOfZero", {{R"("nextHandle": "B")", R"("nextHandle": "0")"}}, "nextHandle: must be a handle"},
        Refusal{"EntriesThatAreNoArray",
                {{R"("entries": [
      {"key": "values", "id": "8"}
    ])",
                  R"("entries": {"values": "8"})"}},
                "objects[6].entries: must be an array"},
        Refusal{"AnEntryWithAnUnknownField",
                {{R"("id": "8"})", R"("id": "8", "hard": true})"}},
                "objects[6].entries[0].hard: unknown field"},
        Refusal{"AnEntryWithoutAKey", {{R"("key": "values", )", ""}}, "objects[6].entries[0].key: is missing"},
        Refusal{
            "AKeyThatIsNoText", {{R"("key": "values")", R"("key": 5)"}}, "objects[6].entries[0].key: must be a text"},
        Refusal{"AnEmptyKey", {{R"("key": "values")", R"("key": "")"}}, "objects[6].entries[0].key: is empty"},
        Refusal{"RecordsThatAreObjects", {{R"(["5"])", R"([{}])"}}, "objects[1].records[0]: must be a handle"},
        Refusal{"AnEmptyName", {{R"("name": "*Model_Space")", R"("name": "")"}}, "objects[3].name: is empty"},
        Refusal{"ATextWithANul", {{"\"*Model_Space\"", R"("*Model\u0000_Space")"}}, "objects[3].name: must be a text"},
        Refusal{"ExtendedDataWithAnUnknownField",
                {{R"("application": )", R"("version": 1, "application": )"}},
                "objects[0].extendedData[0].version: unknown field"}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Values, DrawingFileRefusal,
    testing::Values(
        Refusal{
            "AValueThatIsNoObject", {{R"({"code": 1071, "value": 1})", "1"}}, "objects[5].chain[0]: must be an object"},
        Refusal{
            "AValueWithoutACode", {{R"({"code": 1071, "value": 1})", "{}"}}, "objects[5].chain[0].code: is missing"},
        Refusal{"AValueWithoutAValue",
                {{R"({"code": 1071, "value": 1})", R"({"code": 1071})"}},
                "objects[5].chain[0].value: is missing"},
        Refusal{"AnUnknownGroupCode",
                {{R"("code": 301)", R"("code": 290)"}},
                "objects[7].chain[1].code: 290 is not a group code of a stored value"},
        Refusal{"TheGroupCodeThatEndsLists",
                {{R"("code": 301)", R"("code": 5000)"}},
                "objects[7].chain[1].code: 5000 is not a group code of a stored value"},
        Refusal{"ANegativeGroupCode",
                {{R"("code": 301)", R"("code": -1)"}},
                "objects[7].chain[1].code: -1 is not from 0 to 32767"},
        Refusal{"AGroupCodeBeyondSixteenBits",
                {{R"("code": 301)", R"("code": 65837)"}},
                "objects[7].chain[1].code: 65837 is not from 0 to 32767"},
        Refusal{"ANumberInThePlaceOfAText",
                {{R"("value": "{")", R"("value": 5)"}},
                "objects[5].chain[1].value: must be a text"},
        Refusal{"ATextInThePlaceOfAnInteger",
                {{kHeader, R"("value": "1"})"}},
                "objects[5].chain[0].value: must be an integer"},
        Refusal{"ARealInThePlaceOfAnInteger",
                {{kHeader, R"("value": 1.5})"}},
                "objects[5].chain[0].value: must be an integer"},
        Refusal{
            "ATextInThePlaceOfAReal", {{"6378137.0", "\"6378137.0\""}}, "objects[7].chain[4].value: must be a number"},
        Refusal{
            "ATextInThePlaceOfBytes", {{R"("hex": "")", R"("value": "")"}}, "objects[7].chain[2].value: unknown field"},
        Refusal{"BytesInThePlaceOfAText",
                {{R"("code": 301, "value")", R"("code": 301, "hex")"}},
                "objects[7].chain[1].hex: unknown field"},
        Refusal{"AnUnknownFieldOfAValue",
                {{kHeader, R"("value": 1, "note": ""})"}},
                "objects[5].chain[0].note: unknown field"},
        Refusal{"A16BitIntegerTooSmall",
                {{"-32768", "-32769"}},
                "objects[7].chain[6].value: -32769 is not from -32768 to 32767"},
        Refusal{"A16BitIntegerTooLarge",
                {{"-32768", "32768"}},
                "objects[7].chain[6].value: 32768 is not from -32768 to 32767"},
        Refusal{"A32BitIntegerTooLarge",
                {{"2147483647", "2147483648"}},
                "objects[7].chain[7].value: 2147483648 is not from -2147483648 to 2147483647"},
        Refusal{"A32BitIntegerTooSmall",
                {{"2147483647", "-2147483649"}},
                "objects[7].chain[7].value: -2147483649 is not from -2147483648 to 2147483647"},
        Refusal{"HalfAByte", {{"0301ff8300", "0301ff830"}}, "objects[5].chain[2].hex: must be bytes"},
        Refusal{"BytesInUpperCase", {{"0301ff8300", "0301FF8300"}}, "objects[5].chain[2].hex: must be bytes"},
        Refusal{"BytesThatAreNone", {{"0301ff8300", "0301 f8300"}}, "objects[5].chain[2].hex: must be bytes"},
        Refusal{"AChunkBeyondItsLengthField",
                {{"0301ff8300", std::string(2 * 32'768, '0')}},
                "objects[5].chain[2].hex: 32768 bytes are more than the 32767 of a chunk"},
        Refusal{"BitsOfAFiniteReal",
                {{"7ff0000000000000", "3ff0000000000000"}},
                "objects[7].chain[5].value: must be a number"},
        Refusal{"TooFewBits", {{"7ff0000000000000", "7ff000000000000"}}, "objects[7].chain[5].value: must be a number"},
        Refusal{"BitsInUpperCase",
                {{"7ff0000000000000", "7FF0000000000000"}},
                "objects[7].chain[5].value: must be a number"},
        Refusal{"BitsWithAnUnknownField",
                {{R"("7ff0000000000000")", R"("7ff0000000000000", "x": 1)"}},
                "objects[7].chain[5].value: must be a number"},
        Refusal{"AUnitOfZero", {{"55357", "0"}}, "objects[7].chain[1].value: must be a text"},
        Refusal{"ANegativeUnit", {{"55357", "-1"}}, "objects[7].chain[1].value: must be a text"},
        Refusal{"AUnitBeyond32Bits", {{"55357", "4294967296"}}, "objects[7].chain[1].value: must be a text"},
        Refusal{"AUnitWithAFraction", {{"55357", "65.0"}}, "objects[7].chain[1].value: must be a text"},
        Refusal{"UnitsThatAreNoArray", {{"[65, 55357, 66]", "\"A\""}}, "objects[7].chain[1].value: must be a text"},
        Refusal{"UnitsWithAnUnknownField", {{"66]", "66], \"x\": 1"}}, "objects[7].chain[1].value: must be a text"}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    ExtendedData, DrawingFileRefusal,
    testing::Values(
        Refusal{"AnApplicationThatIsNotRegistered",
                {{R"("application": "KTN_PROJECTION")", R"("application": "KTN_PROJECTIONS")"}},
                "objects[0].extendedData[0].application: \"KTN_PROJECTIONS\" is not registered"},
        Refusal{"AnApplicationTwice",
                {{"\"EPSG:25832\"}\n      ]}",
                  R"("EPSG:25832"}]}, {"application": "ktn_projection", "chain": [{"code": 1070, "value": 3}]})"}},
                "objects[0].extendedData[1].application: duplicate application \"ktn_projection\""},
        Refusal{"AnEmptyChain",
                {{R"({"code": 1000, "value": "EPSG:25832"})", ""}},
                "objects[0].extendedData[0].chain: is empty"},
        Refusal{"ACodeBelow1000",
                {{R"("code": 1000)", R"("code": 300)"}},
                "objects[0].extendedData[0].chain[0].code: 300 is not a group code of a value in extended data"},
        Refusal{"AnApplicationNameAmongTheValues",
                {{R"("code": 1000)", R"("code": 1001)"}},
                "objects[0].extendedData[0].chain[0].code: 1001 is not a group code of a value in extended data"},
        Refusal{"AChunkOf128Bytes",
                {{R"("code": 1000, "value": "EPSG:25832")", R"("code": 1004, "hex": ")" + std::string(256, 'a') + '"'}},
                "objects[0].extendedData[0].chain[0].hex: 128 bytes are more than the 127 of a chunk"}),
    caseName);

INSTANTIATE_TEST_SUITE_P(
    Objects, DrawingFileRefusal,
    testing::Values(
        Refusal{"ANextHandleWithoutRoomAboveIt",
                {{R"("nextHandle": "B")", R"("nextHandle": "FFFFFFFFFFFFFFFE")"}},
                "nextHandle: FFFFFFFFFFFFFFFE is above 7FFFFFFFFFFFFFFF"},
        Refusal{"AHandleThatIsNotBelowTheNext",
                {{R"("nextHandle": "B")", R"("nextHandle": "A")"}},
                "objects[8].handle: A is not below nextHandle"},
        Refusal{"ADuplicateHandle",
                {{R"("handle": "A")", R"("handle": "8")"}},
                "objects[8].handle: duplicate handle 8, also of objects[7]"},
        Refusal{"ObjectsOutOfOrder",
                {{R"("handle": "8")", R"("handle": "9")"}, {R"("handle": "A")", R"("handle": "8")"}},
                "objects[8].handle: 8 is out of order"},
        Refusal{"ADanglingEntry", {{R"("id": "8")", R"("id": "9")"}}, "objects[6].entries[0].id: 9 names no object"},
        Refusal{"ADanglingRecord", {{R"(["5"])", R"(["9"])"}}, "objects[1].records[0]: 9 names no object"},
        Refusal{"ADanglingOwner",
                {{R"("owner": "7")", R"("owner": "9")"}},
                "objects[6].entries[0].id: 8 has another owner"},
        Refusal{"AnOwnerThatDoesNotExist",
                {{R"({"key": "values", "id": "8"})", ""}, {R"("owner": "7")", R"("owner": "9")"}},
                "objects[7].owner: 9 names no object"},
        Refusal{"AnOwnerThatDoesNotListTheObject",
                {{R"({"key": "values", "id": "8"})", ""}},
                "objects[7].owner: 7 does not list the object"},
        Refusal{"AnOwnerThatListsAnothersObject",
                {{R"("owner": "7")", R"("owner": "1")"}},
                "objects[6].entries[0].id: 8 has another owner"},
        Refusal{"AnObjectListedTwice",
                {{R"("id": "8"})", R"("id": "8"}, {"key": "again", "id": "8"})"}},
                "objects[6].entries[1].id: 8 is listed twice"},
        Refusal{"AnEntryWithoutAnOwner", {{R"("owner": "7", )", ""}}, "objects[6].entries[0].id: 8 has another owner"},
        Refusal{"ABlockAsAnEntry",
                {{R"("id": "8")", R"("id": "4")"},
                 {R"(["4"])", "[]"},
                 {R"("owner": "3")", R"("owner": "7")"},
                 {R"("owner": "7", "class": "QeDbX)", R"("class": "QeDbX)"}},
                "objects[6].entries[0].id: 4 is of the wrong class"},
        Refusal{"ARootThatDoesNotExist",
                {{R"("blockTable": "3")", R"("blockTable": "9")"}},
                "blockTable: 9 names no object"},
        Refusal{"ANamedObjectsDictionaryOfTheWrongClass",
                {{R"("namedObjects": "1")", R"("namedObjects": "2")"}},
                "namedObjects: 2 is of the wrong class, QeDbRegAppTable"},
        Refusal{"ARegisteredApplicationTableOfTheWrongClass",
                {{R"("regAppTable": "2")", R"("regAppTable": "3")"}},
                "regAppTable: 3 is of the wrong class, QeDbBlockTable"},
        Refusal{"ABlockTableOfTheWrongClass",
                {{R"("blockTable": "3")", R"("blockTable": "1")"}},
                "blockTable: 1 is of the wrong class, QeDbDictionary"},
        Refusal{"ARootWithAnOwner",
                {{R"("namedObjects": "1")", R"("namedObjects": "7")"}},
                "namedObjects: 7 may not have an owner"},
        Refusal{"ASecondTableOfRegisteredApplications",
                {{kGeoData, R"({"handle": "A", "class": "QeDbRegAppTable", "records": []})"}},
                "objects[8]: a second table of registered applications"},
        Refusal{"ASecondBlockTable",
                {{kGeoData, R"({"handle": "A", "class": "QeDbBlockTable", "records": []})"}},
                "objects[8]: a second block table"},
        Refusal{"ADictionaryThatOwnsItself",
                {{R"("owner": "1", "class": "QeDbDictionary")", R"("owner": "7", "class": "QeDbDictionary")"},
                 {R"({"key": "EXAMPLE", "id": "7"},)", ""},
                 {R"("id": "8"})", R"("id": "8"}, {"key": "self", "id": "7"})"}},
                "objects[6].owner: the object owns itself, through its owners"},
        Refusal{"TwoDictionariesThatOwnEachOther",
                {{kGeoData,
                  R"({"handle": "A", "owner": "7", "class": "QeDbDictionary", "entries": [{"key": "up", "id": "7"}]})"},
                 {R"("owner": "1", "class": "QeDbDictionary")", R"("owner": "A", "class": "QeDbDictionary")"},
                 {R"({"key": "EXAMPLE", "id": "7"},)", ""},
                 {R"("id": "8"})", R"("id": "8"}, {"key": "down", "id": "A"})"}},
                "objects[6].owner: the object owns itself, through its owners"},
        Refusal{"AGeoDataOnNoBlock", {{R"("block": "4")", R"("block": "1")"}}, "objects[8].block: 1 names no block"},
        Refusal{"AGeoDataOnABlockThatDoesNotExist",
                {{R"("block": "4")", R"("block": "9")"}},
                "objects[8].block: 9 names no block"},
        Refusal{
            "AGeoDataOfAnotherOwner", {{R"("owner": "4")", R"("owner": "3")"}}, "objects[8].owner: is not the block"},
        Refusal{"AGeoDataWithoutAnOwner", {{R"("owner": "4", )", ""}}, "objects[8].owner: is not the block"},
        Refusal{"NoModelSpace", {{"*Model_Space", "*Paper_Space"}}, "blockTable: has no block \"*Model_Space\""},
        Refusal{"ADuplicateKey",
                {{"\"EXAMPLE\"", "\"ORVEL_CSINDWG_REGAPP\""}},
                "objects[0].entries[1].key: duplicate key \"ORVEL_CSINDWG_REGAPP\""},
        Refusal{"ARecordOfAnotherTable", {{R"(["5"])", R"(["4"])"}}, "objects[1].records[0]: 4 is of the wrong class"},
        Refusal{"ARegisteredApplicationWithoutAnOwner",
                {{R"("owner": "2", )", ""}},
                "objects[1].records[0]: 5 has another owner"}),
    caseName);

} // namespace
} // namespace Tests
