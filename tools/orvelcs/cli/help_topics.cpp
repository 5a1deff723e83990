#include "orvelcs/cli/help_topics.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Orvelcs {
namespace {

constexpr const char* kOutput =
    "orvelcs is a host of the coordinate system module. It opens drawings (.qedb files), loads the module, calls its "
    "exported functions and prints the results.\n\n"
    "Standard output carries results only. Diagnostics go to standard error, one line each:\n\n"
    "  orvelcs: COMMAND: WHAT: MESSAGE\n\n"
    "A result code of the host is written as its name and number, such as eVetoed (325). In such lines control "
    "characters of names and texts, and bytes that are not UTF-8, are escaped, such as \\n and \\xFF.\n\n"
    "Where a drawing or a text is expected, - is standard input. new prints the drawing; assign, clear and forms --put "
    "read the drawing from standard input and print the changed one. If they fail they print nothing. The output is "
    "then the drawing only, so --json and --events are refused there.\n\n"
    "On a terminal tables are cut to its width, with … at the end of what was cut. In JSON and in a pipe nothing is "
    "cut.";

constexpr const char* kOptions =
    "Options of every command go before or after it; the options of a command go after it. A flag takes no value, and "
    "the value of any other option must not be empty.\n\n"
    "  --json  Absent values are null, and bytes are lower-case hexadecimal digits. The document ends with a newline. "
    "See the topic json.\n"
    "  -q, --quiet  Leaves out notes, confirmations such as \"assigned EPSG:25832\", and progress. Results and errors "
    "are still printed.\n"
    "  --color WHEN  auto uses colour on a terminal, unless NO_COLOR or TERM say otherwise. never shows progress "
    "without escape sequences, too. The last of --color and --no-color counts.\n"
    "  --user-dir DIR  The folder of the user's settings file in this run, of 259 characters at most. Commands that "
    "change the user's configuration create it if it does not exist. Without this option the environment names the "
    "folder, or else it is in the user's local application data.\n"
    "  --registry FILE  The file that stands for the user's registry on systems without a registry. Without this "
    "option it is orvel/registry.db in the user's configuration folder. On Windows it names a key, which stands for "
    "the user's registry in this run.\n"
    "  --wait SECONDS  A number from 0 to 86400, which may have decimals. On a terminal a line shows that the command "
    "waits. When the time is over the command fails and names what the other process has locked.\n"
    "  --check  With --version. The exit status is 1 for a database that is damaged or missing. In JSON the member "
    "check has its path as database and the damage as fault.\n"
    "  --  The arguments after it are not options, even if they begin with a dash.";

constexpr const char* kJson =
    "With --json a command prints one document. For several drawings it is an array in the order of the arguments, and "
    "each element is printed when its drawing is done. An entry that failed has a further member error.\n\n"
    "A command that fails prints its error as a document, beside the line on standard error:\n\n"
    "  {\"error\": {\"command\", \"what\", \"code\", \"name\", \"message\"}}\n\n"
    "code and name are the result of the host or of the spatial-reference library, or null. Wrong usage is such a "
    "document, too. Where nothing was found the command prints its usual document, which may be null.";

constexpr const char* kSystems =
    "Where a command takes a SYSTEM, it is one of these:\n\n"
    "  CODE  A code of the catalog, such as EPSG:25832.\n"
    "  @FILE  The system of a drawing, or the system that a text describes in WKT, PROJJSON or as a PROJ string. The "
    "text is UTF-8 with or without a byte-order mark, of 1,048,576 bytes at most.\n"
    "  @-  The same from standard input.\n\n"
    "The system of a drawing has the code that it has there. The system of a text has the identifier that the text "
    "gives it, unless the catalog has another system under that identifier; otherwise it has no code. Where it is "
    "stored, by assign and encode, it is user-defined and needs a code of its own: --code. A configuration names "
    "systems by their codes, so none applies to a system without a code.\n\n"
    "A text that is refused is reported with the reason, and with its line and column where they are known. A vertical "
    "system is named as such; a drawing cannot have one.";

constexpr const char* kBatches =
    "Commands that take several drawings take one after another. A drawing that fails does not end the batch. A "
    "system is looked up before the first drawing is opened, and an unknown one is one message. On a terminal a line "
    "shows the position, and after two seconds also the rate and the time that is left.\n\n"
    "  --files-from LIST  Also takes the drawings that this file names, one a line, after those of the command line. "
    "- is standard input. Blank lines are skipped. An empty list is no error: the command does nothing and ends with "
    "status 0. With a list the JSON document is always an array.\n"
    "  -0, --null  The names in the list end with NUL, as find writes them with -print0.\n\n"
    "An interruption (Ctrl-C, or the signal SIGTERM) lets the drawing in hand be finished. Then a message says how "
    "many drawings were done, the JSON array is closed, and the exit status is 130. A second one ends the program at "
    "once. If nobody reads standard output any more, the batch ends silently after the drawing in hand is saved.";

constexpr const char* kEnvironment =
    "  NO_COLOR  If it is set and not empty, no colour is used, and progress is shown without escape sequences.\n"
    "  TERM  The value dumb has the same effect.\n"
    "  COLUMNS  The width of help and tables, in the place of the terminal's own.\n"
    "  PROJ_NETWORK  ON lets transform read grids over the network.\n"
    "  PROJ_DATA  Folders in which PROJ looks for its catalog and for grids.";

constexpr const char* kExitStatus =
    "  0  Done.\n"
    "  1  The operation failed or was refused, or the results could not be written. This includes failed look-ups: "
    "the catalog is missing or damaged, a settings file cannot be read, or there is not enough memory. The message "
    "gives the cause and the file or folders.\n"
    "  2  Wrong usage; nothing was done.\n"
    "  3  Nothing was found: no coordinate system in the drawing, no match in the catalog, or no transformation.\n"
    "  130  A batch was interrupted.\n"
    "  141  Nobody read standard output to its end. On Windows the status is 1.\n\n"
    "For several drawings the status is 1 if one of them failed, or else 3 if nothing was found for one of them.";

} // namespace

const std::vector<HelpTopic>& helpTopics()
{
    static const std::vector<HelpTopic> topics = {{"output", "Output", kOutput},
                                                  {"options", "Options of every command", kOptions},
                                                  {"json", "JSON", kJson},
                                                  {"systems", "Systems", kSystems},
                                                  {"batches", "Several drawings", kBatches},
                                                  {"environment", "Environment", kEnvironment},
                                                  {"exit-status", "Exit status", kExitStatus}};
    return topics;
}

std::string helpTopicNames()
{
    std::vector<std::string> names;
    for (const HelpTopic& topic : helpTopics())
        names.push_back(topic.name);
    const std::string last = names.back();
    names.pop_back();
    return fmt::format("{} and {}", fmt::join(names, ", "), last);
}

} // namespace Orvelcs
