// The interface is the same on every system. The list for the DLL has mangled names, as the linker sees them. The list
// for the ELF library has the names of the sources.
#include <gtest/gtest.h>

#include "module/published_names.h"

namespace Tests {
namespace {

/// An ELF library exports the text of a class's name, so that type information can be compared by address. A DLL does
/// not.
bool isOnlyInElf(const std::string& name)
{
    return name.starts_with("typeinfo name for ");
}

Names namesOnEverySystem()
{
    Names names = readNames("exported_names.txt");
    std::erase_if(names, isOnlyInElf);
    return names;
}

Names namesOnWindows()
{
    Names names;
    for (const std::string& name : readNames("exported_names_windows.txt"))
        names.insert(demangle(name));
    return names;
}

TEST(PublishedNames, WindowsPublishesNoOtherName)
{
    ASSERT_FALSE(namesOnWindows().empty());
    EXPECT_EQ(missingNames(namesOnWindows(), namesOnEverySystem()), "");
}

TEST(PublishedNames, WindowsPublishesEveryName)
{
    ASSERT_FALSE(namesOnEverySystem().empty());
    EXPECT_EQ(missingNames(namesOnEverySystem(), namesOnWindows()), "");
}

} // namespace
} // namespace Tests
