// The interface is the same on every system. The list for the DLL has mangled names, as the linker sees them. The list
// for the ELF library has the names of the sources.
#include <gtest/gtest.h>

#include "module/published_names.h"

namespace Tests {
namespace {

/// An ELF library exports the text of a class's name, so that type information can be compared by address. A DLL does
/// not.
bool isOfElfAlone(const std::string& name)
{
    return name.starts_with("typeinfo name for ");
}

Names publishedByEverySystem()
{
    Names names = namesInFile("exported_names.txt");
    std::erase_if(names, isOfElfAlone);
    return names;
}

Names publishedByWindows()
{
    Names names;
    for (const std::string& name : namesInFile("exported_names_windows.txt"))
        names.insert(demangled(name));
    return names;
}

TEST(PublishedNames, WindowsPublishesNothingElse)
{
    ASSERT_FALSE(publishedByWindows().empty());
    EXPECT_EQ(difference(publishedByWindows(), publishedByEverySystem()), "");
}

TEST(PublishedNames, WindowsLacksNothing)
{
    ASSERT_FALSE(publishedByEverySystem().empty());
    EXPECT_EQ(difference(publishedByEverySystem(), publishedByWindows()), "");
}

} // namespace
} // namespace Tests
