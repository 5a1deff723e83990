#include "orvelcs/drawing/drawing_files.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/file_list.h"
#include "orvelcs/cli/input.h"

namespace Orvelcs {
namespace {

bool hasStandardStream(const std::vector<std::string>& names)
{
    return std::ranges::find(names, kStandardStream) != names.end();
}

} // namespace

void addFileListOptions(CLI::App& command, DrawingFiles& files)
{
    textOf(command).exitStatuses.push_back({ExitStatus::interrupted, "interrupted"});
    files.listOption = addArgument(command, "--files-from LIST", files.list,
                                   "also take the drawings that LIST names, one a line; - is standard input");
    command.add_flag("-0,--null", files.nulEndsNames, "the names in LIST end with NUL, as find -print0 writes them");
}

void readFileList(DrawingFiles& files)
{
    if (!files.hasList()) {
        if (files.nulEndsNames)
            throw wrongUsage("--null", "goes with --files-from only");
        if (files.names.empty())
            throw wrongUsage("FILE", "is required");
        return;
    }
    if (files.list == kStandardStream && hasStandardStream(files.names))
        throw wrongUsage(kStandardStream, "standard input cannot be both the list and a drawing");
    std::vector<std::string> listed =
        splitFileList(readWhole(files.list), files.nulEndsNames ? NameEnd::nul : NameEnd::line);
    if (hasStandardStream(listed))
        throw Failure(files.list, "names -, which is not a file; ./- is a file of that name");
    std::ranges::move(listed, std::back_inserter(files.names));
}

void checkFileNames(const std::vector<std::string>& files, bool drawingIsPrinted, const Output& output)
{
    if (std::find(files.begin(), files.end(), "") != files.end())
        throw wrongUsage("FILE", "is empty");
    if (!hasStandardStream(files))
        return;
    if (files.size() > 1)
        throw wrongUsage(kStandardStream, "stands for the only drawing, not for one of several");
    if (drawingIsPrinted && output.json())
        throw wrongUsage(kStandardStream, "the drawing itself goes to standard output, where --json has no place");
}

} // namespace Orvelcs
