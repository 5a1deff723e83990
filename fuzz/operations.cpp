#include "fuzz/oracle.h"
#include "fuzz/sample_definitions.h"
#include "fuzz/session.h"
#include "fuzz/targets.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Fuzz {
namespace {

/// A folder in which no settings file is written.
std::string emptyFolder()
{
    static const Tests::TemporaryFolder folder;
    return folder.path().string();
}

} // namespace

void operations(Input input)
{
    static_cast<void>(sampleDefinitions()); // makes them before resources are counted
    const LeakCheck guard;
    const Tests::ScopedVariable variable("VORLEN_USER_DICTIONARY_PATH", emptyFolder());
    Session session(input);
    while (!session.isOver())
        session.step();
}

} // namespace Fuzz
