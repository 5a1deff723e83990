#include <algorithm>
#include <filesystem>

#include "command_line_test.h"

namespace Tests {
namespace {

class SchemaCommand : public CommandLineTest {
protected:
    static std::filesystem::path folder() { return std::filesystem::path(ORVEL_SOURCE_DIR) / "docs/schema"; }
    static Json fileOf(std::string command)
    {
        std::ranges::replace(command, ' ', '-');
        return Json::parse(readFile(folder() / (command + ".json")));
    }
    std::vector<std::string> listed() const { return runForJson({"schema"}).get<std::vector<std::string>>(); }
};

TEST_F(SchemaCommand, WithoutACommand_ListsEachFile)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        std::string name = entry.path().stem().string();
        std::ranges::replace(name, '-', ' ');
        if (entry.path().extension() == ".json")
            names.push_back(name);
    }
    EXPECT_THAT(listed(), testing::UnorderedElementsAreArray(names));
    std::string lines;
    for (const std::string& name : listed())
        lines += name + "\n";
    expectResult(run({"schema"}), 0, lines, "");
}

TEST_F(SchemaCommand, WithACommand_PrintsTheFileWithWhatItRefersTo)
{
    const std::string sharedFile = "error.json";
    for (const std::string& command : listed()) {
        std::string text = fileOf(command).dump();
        const bool refersToIt = text.find(sharedFile) != std::string::npos;
        for (auto place = text.find(sharedFile); place != std::string::npos; place = text.find(sharedFile))
            text.erase(place, sharedFile.size());
        Json expected = Json::parse(text);
        if (refersToIt)
            expected["$defs"].update(fileOf("error")["$defs"]);
        EXPECT_EQ(Json::parse(run({"schema", command}).output), expected) << command;
    }
}

TEST_F(SchemaCommand, EachSchema_SaysItsVersionAndWhatItIs)
{
    for (const std::string& command : listed()) {
        const Json schema = fileOf(command);
        EXPECT_EQ(schema["$schema"], "https://json-schema.org/draft/2020-12/schema") << command;
        EXPECT_NE(schema["title"], "") << command;
        EXPECT_NE(schema["description"], "") << command;
    }
}

TEST_F(SchemaCommand, WordsOfTheCommand_AreOneOrSeveralArguments)
{
    const std::string schema = run({"schema", "catalog", "search"}).output;
    EXPECT_EQ(Json::parse(schema)["title"], "orvelcs catalog search");
    EXPECT_EQ(run({"schema", "catalog search"}).output, schema);
    EXPECT_EQ(run({"schema", "catalog-search"}).output, schema);
    EXPECT_EQ(run({"schema", "catalog-search", "--json"}).output, schema);
}

TEST_F(SchemaCommand, MisspeltCommand_IsRefusedWithTheNearest)
{
    expectWrongUsage(
        run({"schema", "catalog", "serch"}),
        "orvelcs: schema: catalog serch: no such schema; orvelcs schema lists them; the nearest is catalog "
        "search");
    expectWrongUsageAsJson(run({"schema", "shwo", "--json"}),
                           "orvelcs: schema: shwo: no such schema; orvelcs schema lists them; the nearest is show");
}

TEST_F(SchemaCommand, CommandWithParts_IsRefusedWithTheParts)
{
    expectWrongUsage(
        run({"schema", "catalog"}),
        "orvelcs: schema: catalog: no such schema; orvelcs schema lists them; the nearest are catalog search, "
        "catalog show");
}

} // namespace
} // namespace Tests
