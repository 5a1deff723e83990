// The completion scripts, asked in the shells that they are for.
#include <regex>
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

using Words = std::vector<std::string>;

Words splitLines(const std::string& text)
{
    Words lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (!line.empty())
            lines.push_back(line);
    return lines;
}

class Completion : public CommandLineTest {
protected:
    Completion()
    {
        given("plan.qedb", "");
        given("two words.qedb", "");
        std::filesystem::create_directory(path("folder"));
    }

    void givenScript(const std::string& shell, const std::string& name) const
    {
        const ProgramResult script = run({"completion", shell});
        ASSERT_EQ(script.status, 0) << script.errors;
        given(name, script.output);
    }

    /// Runs a script of the shell, which ends in good time whatever it waits for.
    std::string ask(const std::string& shell, const std::string& script) const
    {
        given("question", script);
        ProgramRun question = shellRun("exec timeout 60 " + shell + " question");
        question.environment["HOME"] = path("").string();
        const ProgramResult result = run(question);
        EXPECT_EQ(result.status, 0) << result.output << result.errors;
        return result.output;
    }

    /// What bash offers for the last of the words, cut as bash cuts a line.
    Words askBash(const Words& words) const
    {
        std::string script = ". ./orvelcs.bash\nCOMP_WORDS=(orvelcs";
        for (const std::string& word : words)
            script += " '" + word + "'";
        return splitLines(ask("bash --norc", script + ")\nCOMP_CWORD=" + std::to_string(words.size()) +
                                                 "\n_orvelcs\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n"));
    }

    /// What fish offers at the end of the line, without the descriptions.
    Words askFish(const std::string& line) const
    {
        Words words = splitLines(ask("fish --no-config", "source orvelcs.fish\ncomplete -C '" + line + "'\n"));
        for (std::string& word : words)
            word = word.substr(0, word.find('\t'));
        return words;
    }

    /// For each line, the arguments that zsh gives to the program after a key has completed the last of them.
    Words askZsh(const Words& lines) const
    {
        std::string script = "zmodload zsh/zpty\n"
                             "zpty shell zsh -f -i\n"
                             "zpty -w shell 'PS1=; fpath=(functions $fpath); autoload -Uz compinit; compinit -D -u; "
                             "orvelcs() { print -r -- \"<<${(j:|:)@}>>\" }; print READY$((1))'\n"
                             "zpty -r -m shell text '*READY1*'\n";
        for (const std::string& line : lines)
            script += "zpty -w shell '" + line + "'$'\\t'\nzpty -r -m shell text '*<<*>>*'\nprint -r -- $text\n";
        const std::string text = ask("zsh -f", script);
        static const std::regex kArguments("<<([^<>]*)>>");
        Words found;
        for (std::sregex_iterator match(text.begin(), text.end(), kArguments); match != std::sregex_iterator(); ++match)
            found.push_back((*match)[1]);
        return found;
    }
};

TEST_F(Completion, Bash_CompletesCommandsAndSubcommands)
{
    givenScript("bash", "orvelcs.bash");
    EXPECT_THAT(askBash({"c"}), IsSupersetOf({"catalog", "check", "clear", "config", "convert"}));
    EXPECT_THAT(askBash({"--json", "-q", "catalog", ""}), UnorderedElementsAre("search", "show"));
    EXPECT_THAT(askBash({"--user-dir", "config", "sho"}), ElementsAre("show")); // the value is no command
    EXPECT_THAT(askBash({"help", "transfor"}), UnorderedElementsAre("transform", "transformation"));
    EXPECT_THAT(askBash({"xyzzy"}), ElementsAre());
}

TEST_F(Completion, Bash_CompletesOptionsOfTheCommandAndOfAll)
{
    givenScript("bash", "orvelcs.bash");
    EXPECT_THAT(askBash({"catalog", "search", "--a"}), UnorderedElementsAre("--authority", "--at", "--area"));
    EXPECT_THAT(askBash({"config", "remove", "--"}), IsSupersetOf({"--source", "--drawing", "--json", "--color"}));
    EXPECT_THAT(askBash({"convert", "--to"}), ElementsAre()); // an old name
    EXPECT_THAT(askBash({"new", "-"}), Contains("-0"));
}

TEST_F(Completion, Bash_CompletesValues)
{
    givenScript("bash", "orvelcs.bash");
    EXPECT_THAT(askBash({"show", "--format", "w"}), UnorderedElementsAre("wkt1", "wkt2"));
    EXPECT_THAT(askBash({"show", "--format", "=", "w"}), UnorderedElementsAre("wkt1", "wkt2"));
    EXPECT_THAT(askBash({"show", "--format", "="}), testing::SizeIs(5));
    EXPECT_THAT(askBash({"show", "--color", "a"}), UnorderedElementsAre("auto", "always"));
    EXPECT_THAT(askBash({"completion", "f"}), ElementsAre("fish"));
    EXPECT_THAT(askBash({"--user-dir", ""}), ElementsAre("folder"));
    EXPECT_THAT(askBash({"encode", "--drawing-version", ""}), ElementsAre());
}

TEST_F(Completion, Bash_CompletesNamesOfFiles)
{
    givenScript("bash", "orvelcs.bash");
    EXPECT_THAT(askBash({"show", "pl"}), ElementsAre("plan.qedb"));
    EXPECT_THAT(askBash({"show", "plan.qedb", "two"}), ElementsAre("two words.qedb"));
    EXPECT_THAT(askBash({"assign", "@pl"}), ElementsAre("@plan.qedb"));
    EXPECT_THAT(askBash({"config", "get", "--drawing", "pl"}), ElementsAre("plan.qedb"));
    EXPECT_THAT(askBash({"show", "--", "pl"}), ElementsAre("plan.qedb"));
    EXPECT_THAT(askBash({"catalog", "search", "pl"}), ElementsAre());
}

TEST_F(Completion, Fish_CompletesCommandsOptionsValuesAndFiles)
{
    givenScript("fish", "orvelcs.fish");
    EXPECT_THAT(askFish("orvelcs catalog s"), UnorderedElementsAre("search", "show"));
    EXPECT_THAT(askFish("orvelcs --user-dir config sho"), ElementsAre("show"));
    EXPECT_THAT(askFish("orvelcs show --fo"), ElementsAre("--format"));
    EXPECT_THAT(askFish("orvelcs show --format w"), UnorderedElementsAre("wkt1", "wkt2"));
    EXPECT_THAT(askFish("orvelcs catalog search --kind "), UnorderedElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(askFish("orvelcs show pl"), ElementsAre("plan.qedb"));
    EXPECT_THAT(askFish("orvelcs catalog search pl"), ElementsAre());
}

TEST_F(Completion, Zsh_CompletesCommandsOptionsValuesAndFiles)
{
    std::filesystem::create_directory(path("functions"));
    givenScript("zsh", "functions/_orvelcs");
    const Words completed =
        askZsh({"orvelcs ass", "orvelcs --json catalog se", "orvelcs config remove --so", "orvelcs show --format es",
                "orvelcs show pl", "orvelcs transform EPSG:4326 @pl", "orvelcs catalog search pl"});
    EXPECT_THAT(completed,
                ElementsAre("assign", "--json|catalog|search", "config|remove|--source", "show|--format|esri",
                            "show|plan.qedb", "transform|EPSG:4326|@plan.qedb", "catalog|search|pl"));
}

/// No PowerShell is at hand, so this looks at the table alone.
TEST_F(Completion, Powershell_HasTheWordsOfEveryCommand)
{
    const std::string script = run({"completion", "powershell"}).output;
    for (const Json& command : runForJson({"commands"})) {
        const std::string entry = "'" + command["name"].get<std::string>() + "' = @(";
        EXPECT_THAT(script, testing::HasSubstr(entry));
    }
    EXPECT_THAT(script, testing::HasSubstr("'show --format' = @('wkt2', 'wkt1', 'esri', 'projjson', 'proj')"));
    EXPECT_THAT(script, testing::HasSubstr("'catalog' = @('search', 'show')"));
}

TEST_F(Completion, UnknownShell_IsRefusedWithTheNearest)
{
    expectWrongUsage(run({"completion", "fisch"}),
                     "orvelcs: completion: SHELL: expected one of bash, zsh, fish, powershell, found fisch; the "
                     "nearest is fish");
    expectWrongUsage(run({"completion"}), "orvelcs: completion: SHELL: is required");
}

} // namespace
} // namespace Tests
