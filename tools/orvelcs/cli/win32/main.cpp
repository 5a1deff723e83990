#include <string>
#include <vector>

#include "embedded/base/text.h"
#include "orvelcs/cli/output.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/program.h"

namespace {

/// UTF-8 cannot hold half a surrogate pair. A replacement character would be stored without notice.
int refuse(const std::string& argument)
{
    Orvelcs::prepareStandardStreams();
    Orvelcs::Output output("command line", {});
    output.error(argument, "holds half a surrogate pair");
    return static_cast<int>(output.finish(Orvelcs::ExitStatus::wrongUsage));
}

} // namespace

int wmain(int argumentCount, wchar_t** arguments)
{
    std::vector<std::string> texts;
    for (int index = 0; index < argumentCount; ++index)
        texts.push_back(Embedded::utf8FromWide(arguments[index]));
    for (int index = 1; index < argumentCount; ++index)
        if (!Embedded::isWellFormed(arguments[index]))
            return refuse(texts[static_cast<std::size_t>(index)]);
    std::vector<const char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(text.c_str());
    return Orvelcs::systemExitStatus(Orvelcs::runProgram(argumentCount, pointers.data()));
}
