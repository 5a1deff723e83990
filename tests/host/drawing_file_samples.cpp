#include "drawing_file_samples.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <limits>
#include <sstream>
#include <utility>
#include <vector>

namespace Tests {

using namespace Embedded;

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::array<char32_t, 22> kHardCharacters = {
    U'a',   U'Z',   U' ',   U'"',   U'\\',  U'/',   0x01,   0x1F,   0x7F,    0x80,     0xE4,
    0x2028, 0xD7FF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xFEFF, 0xFFFF, 0x1F30D, 0x10FFFF, 0xFFFD,
};
constexpr std::array<char32_t, 3> kNoCodePoints = {0x110000, 0x7FFFFFFF, 0xFFFFFFFF};
constexpr std::array<double, 9> kHardReals = {0.0,
                                              -0.0,
                                              0.1,
                                              -1.0 / 3,
                                              std::numeric_limits<double>::denorm_min(),
                                              std::numeric_limits<double>::max(),
                                              std::numeric_limits<double>::lowest(),
                                              std::numeric_limits<double>::infinity(),
                                              -std::numeric_limits<double>::infinity()};

} // namespace

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    std::ostringstream contents;
    if (stream.peek() != std::ifstream::traits_type::eof())
        contents << stream.rdbuf();
    return contents.str();
}

void put(const std::filesystem::path& file, const std::string& contents)
{
    std::ofstream stream(file, std::ios::binary);
    stream << contents;
    EXPECT_TRUE(stream.flush()) << file;
}

std::set<std::string> namesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

std::string exampleText()
{
    static const std::string opening = "```json\n";
    const std::string page = contentsOf(std::filesystem::path(ORVEL_SOURCE_DIR) / "docs/formats/drawing-file.md");
    const auto begin = page.find(opening) + opening.size();
    return page.substr(begin, page.find("```", begin) - begin);
}

DrawingImage exampleImage()
{
    const std::wstring unpaired = {L'A', static_cast<wchar_t>(0xD83D), L'B'};
    const XrecordImage definition{{{1071, 1}, {1002, L"{"}, {310, Bytes{3, 1, 255, 131, 0}}, {1002, L"}"}}};
    const XrecordImage values{{{300, L"L\u00E4ngengrad \"\u00F6stlich\" \U0001F30D"},
                               {301, unpaired},
                               {311, Bytes{}},
                               {1040, -0.0},
                               {1040, 6378137.0},
                               {1040, std::numeric_limits<double>::infinity()},
                               {1070, -32768},
                               {1071, 2147483647}}};
    return {29,
            11,
            1,
            2,
            3,
            {{1,
              0,
              {{L"KTN_PROJECTION", {{1000, L"EPSG:25832"}}}},
              DictionaryImage{{{L"EXAMPLE", 7}, {L"ORVEL_CSINDWG_REGAPP", 6}}}},
             {2, 0, {}, RegAppTableImage{{5}}},
             {3, 0, {}, BlockTableImage{{4}}},
             {4, 3, {}, BlockRecordImage{L"*Model_Space"}},
             {5, 2, {}, RegAppRecordImage{L"KTN_PROJECTION"}},
             {6, 1, {}, definition},
             {7, 1, {}, DictionaryImage{{{L"values", 8}}}},
             {8, 7, {}, values},
             {10, 4, {}, GeoDataImage{L"LOCAL_CS[\"Werksnetz\"]", 4}}}};
}

std::string edited(std::string text, const std::string& from, const std::string& to)
{
    const auto place = text.find(from);
    EXPECT_NE(place, std::string::npos) << "no \"" << from << "\" in the text";
    EXPECT_EQ(text.find(from, place + 1), std::string::npos) << "more than one \"" << from << "\" in the text";
    return place == std::string::npos ? text : text.replace(place, from.size(), to);
}

std::wstring RandomImages::text(std::size_t leastCharacters)
{
    std::wstring text;
    for (std::size_t left = leastCharacters + below(9); left > 0; --left)
        text += static_cast<wchar_t>(kHardCharacters[below(kHardCharacters.size())]);
    if (sizeof(wchar_t) > 2 && below(8) == 0)
        text += static_cast<wchar_t>(kNoCodePoints[below(kNoCodePoints.size())]);
    return text;
}

ImageValue RandomImages::value(bool inExtendedData)
{
    const auto chunk = [this](std::size_t most) {
        Bytes bytes(below(most + 1));
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>(below(256));
        return bytes;
    };
    switch (below(inExtendedData ? 6 : 8)) {
    case 0:
        return {1000, text(0)};
    case 1:
        return {1002, text(0)};
    case 2:
        return {1004, chunk(127)};
    case 3:
        return {1040, kHardReals[below(kHardReals.size())]};
    case 4:
        return {1070, static_cast<std::int32_t>(below(65536)) - 32768};
    case 5:
        return {1071, static_cast<std::int32_t>(static_cast<std::uint32_t>(random_()))};
    case 6:
        return {300 + static_cast<int>(below(10)), text(0)};
    default:
        return {310 + static_cast<int>(below(10)), chunk(300)};
    }
}

ImageChain RandomImages::chain(std::size_t leastValues, bool inExtendedData)
{
    ImageChain chain;
    for (std::size_t left = leastValues + below(6); left > 0; --left)
        chain.push_back(value(inExtendedData));
    return chain;
}

ObjectImage& RandomImages::add(Handle owner, decltype(ObjectImage::contents) contents)
{
    image_.objects.push_back({image_.nextHandle, owner, {}, std::move(contents)});
    image_.nextHandle += 1 + below(3);
    return image_.objects.back();
}

void RandomImages::addRegisteredApplications()
{
    for (std::uint64_t number = 0, count = below(4); number < count; ++number) {
        const Handle handle = add(image_.regAppTable, RegAppRecordImage{text(1) + std::to_wstring(number)}).handle;
        std::get<RegAppTableImage>(image_.objects[1].contents).records.push_back(handle);
    }
}

void RandomImages::addBlocks()
{
    for (std::uint64_t number = 0, count = 1 + below(3); number < count; ++number) {
        const std::wstring name = number == 0 ? L"*Model_Space" : text(1) + std::to_wstring(number);
        const Handle handle = add(image_.blockTable, BlockRecordImage{name}).handle;
        std::get<BlockTableImage>(image_.objects[2].contents).records.push_back(handle);
        if (number == 0 && below(2) == 0)
            add(handle, GeoDataImage{text(0), handle});
    }
}

void RandomImages::addDictionaryContents()
{
    std::vector<std::size_t> dictionaries = {0};
    for (std::uint64_t number = 0, count = below(12); number < count; ++number) {
        const std::size_t dictionary = dictionaries[below(dictionaries.size())];
        const bool nested = below(3) == 0;
        if (nested)
            dictionaries.push_back(image_.objects.size());
        const bool detached = below(6) == 0;
        const Handle owner = detached ? 0 : image_.objects[dictionary].handle;
        const Handle handle =
            (nested ? add(owner, DictionaryImage{}) : add(owner, XrecordImage{chain(0, false)})).handle;
        if (!detached)
            std::get<DictionaryImage>(image_.objects[dictionary].contents)
                .entries.emplace_back(std::to_wstring(number) + text(0), handle);
    }
}

void RandomImages::addExtendedData()
{
    for (ObjectImage& object : image_.objects) {
        for (const ObjectImage& other : image_.objects) {
            const auto* application = std::get_if<RegAppRecordImage>(&other.contents);
            if (application != nullptr && below(5) == 0)
                object.extendedData.emplace_back(application->name, chain(1, true));
        }
    }
}

DrawingImage RandomImages::next()
{
    image_ = {};
    image_.drawingVersion = 21 + static_cast<int>(below(13));
    image_.nextHandle = 1 + below(1000);
    image_.namedObjects = add(0, DictionaryImage{}).handle;
    image_.regAppTable = add(0, RegAppTableImage{}).handle;
    image_.blockTable = add(0, BlockTableImage{}).handle;
    addRegisteredApplications();
    addBlocks();
    addDictionaryContents();
    addExtendedData();
    return image_;
}

} // namespace Tests
