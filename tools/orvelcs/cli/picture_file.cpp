#include "orvelcs/cli/picture_file.h"

#include "embedded/base/case_folding.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/output_file.h"

namespace Orvelcs {
namespace {

bool hasEnding(const PictureFile& file, std::string_view ending)
{
    return Embedded::toLowerAscii(file.name).ends_with(ending);
}

} // namespace

bool PictureFile::isStandardOutput() const
{
    return name == kStandardStream;
}

PictureFormat PictureFile::format() const
{
    return hasEnding(*this, ".html") ? PictureFormat::html : PictureFormat::svg;
}

CLI::Option* addPictureOptions(CLI::App& command, PictureFile& file)
{
    command.add_flag("--force", file.force, "overwrite a file that exists");
    return addArgument(command, "-o,--output OUT", file.name,
                       "the picture or page to write; - is standard output, for a picture");
}

void checkPictureFile(const PictureFile& file, const Output& output)
{
    if (file.isStandardOutput() && output.json())
        throw wrongUsage("--output", "the picture itself goes to standard output, where --json has no place");
    if (file.isWanted() && !file.isStandardOutput() && !hasEnding(file, ".svg") && !hasEnding(file, ".html"))
        throw wrongUsage("--output", "expected a name that ends with .svg or .html, found " + file.name);
}

void writePicture(const PictureFile& file, std::string_view picture, Output& output)
{
    if (file.isStandardOutput())
        output.write(picture);
    else
        writeOutputFile(file.name, picture, file.force ? OverwritingFiles::allowed : OverwritingFiles::refused);
}

} // namespace Orvelcs
