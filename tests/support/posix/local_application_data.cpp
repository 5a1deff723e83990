#include "support/local_application_data.h"

#include "support/variables.h"

namespace Tests {

void useLocalApplicationData(const std::filesystem::path& folder)
{
    setVariable("XDG_DATA_HOME", folder.string());
}

} // namespace Tests
