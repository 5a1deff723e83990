// The library writes and reads the examples of the format pages.
#include <algorithm>
#include <fstream>
#include <sstream>

#include "embedded/base/text.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

std::vector<std::string> readLines(const std::string& file)
{
    std::ifstream stream(std::string(ORVEL_SOURCE_DIR) + "/" + file);
    EXPECT_TRUE(stream.is_open()) << file;
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// The lines of a fenced code block without their comments, which begin with `mark`.
std::vector<std::string> example(const std::string& file, const std::string& block, const std::string& mark)
{
    const auto lines = readLines(file);
    auto line = std::ranges::find(lines, "```" + block);
    EXPECT_NE(line, lines.end()) << block;
    std::vector<std::string> result;
    while (line != lines.end() && *++line != "```")
        result.push_back(line->substr(0, line->find(mark)));
    return result;
}

class FormatPages : public SpatialReferenceTest {};

TEST_F(FormatPages, TheExampleOfAStreamEqualsTheWrittenStream)
{
    Bytes bytes;
    for (const std::string& line : example("docs/formats/definition-stream.md", "definition-stream", ";")) {
        std::istringstream stream(line);
        for (unsigned byte = 0; stream >> std::hex >> byte;)
            bytes.push_back(static_cast<unsigned char>(byte));
    }
    EXPECT_EQ(bytes, writeStream({loadSystem(L"EPSG:25832").get()}));
}

TEST_F(FormatPages, TheExampleOfATextEqualsTheWrittenText)
{
    std::string text;
    for (const std::string& line : example("docs/formats/definition-text.md", "definition-text", "//")) {
        const auto first = line.find_first_not_of(' ');
        text += line.substr(first, line.find_last_not_of(' ') + 1 - first);
    }
    EXPECT_EQ(text, Embedded::utf8FromWide(serializedText(*loadSystem(L"EPSG:4326"), true)));
}

TEST_F(FormatPages, TheIndentedExampleOfATextCanBeRead)
{
    std::string text;
    for (const std::string& line : example("docs/formats/definition-text.md", "definition-text", "//"))
        text += line + "\n";
    Holder<DefinitionBaseArray> definitions;
    EXPECT_EQ(deserialize(Embedded::wideFromUtf8(text), definitions), statusOk);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 3);
}

/// FNV-1a. Any digest would do.
std::uint64_t digest(const std::string& text)
{
    std::uint64_t value = 0xCBF29CE484222325;
    for (const char character : text)
        value = (value ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    return value;
}

TEST_F(FormatPages, TheVocabularyOfVersion1IsUnchanged)
{
    constexpr std::size_t kEntriesOfVersion1 = 273;
    const std::string opening = "R\"json(";
    std::string entries;
    std::size_t count = 0;
    for (const std::string& line : readLines("embedded/spatial_reference/streams/vocabulary.cpp")) {
        const auto begin = line.find(opening);
        if (begin == std::string::npos || count == kEntriesOfVersion1)
            continue;
        entries += line.substr(begin + opening.size(), line.rfind(")json\"") - begin - opening.size()) + '\n';
        ++count;
    }
    EXPECT_EQ(count, kEntriesOfVersion1);
    EXPECT_EQ(digest(entries), 18357932436897240231U) << "streams in drawings refer to the entries by number";
}

} // namespace
