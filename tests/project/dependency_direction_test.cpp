#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "project/dependency_rules.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

class DependencyDirectionTest : public PlatformTest {
protected:
    DependencyDirectionTest()
    {
        for (const char* path : {"platform/host.h", "platform/win32.h", "platform/host/object.h",
                                 "src/storage/packing.h", "src/coordsys/result.h", "src/frame/module.h",
                                 "src/transformation/item.h", "embedded/base/text.h", "embedded/base/json/a.h",
                                 "embedded/host/database/drawing.h", "embedded/spatial_reference/catalog/catalog.h",
                                 "tools/orvelcs/cli/output.h", "embedded/host/drawing_file/schema.h",
                                 "embedded/diagnostics/faults.h", "embedded/spatial_reference/operations/chain.h",
                                 "tools/orvelcs/commands/assign.h", "src/coordsys/orvel_coordinate_system.h",
                                 "src/storage/run_length.h", "embedded/host/application/application.h"})
            files_.push_back({path, ""});
    }

    /// The number of complaints about a file that includes the target, which is given with its quotes or brackets.
    std::size_t countComplaints(const std::string& path, const std::string& target)
    {
        std::vector<SourceFile> files = files_;
        files.push_back({path, "#include " + target + "\n"});
        return findForbiddenIncludes(files).size();
    }

private:
    std::vector<SourceFile> files_;
};

struct Include {
    const char* from;
    const char* to;
};

TEST_F(DependencyDirectionTest, EveryIncludeOfTheProject_PointsInTheAllowedDirection)
{
    const std::vector<SourceFile> files = readProjectSources();
    ASSERT_FALSE(files.empty());
    EXPECT_EQ(joinLines(findForbiddenIncludes(files)), "");
}

TEST_F(DependencyDirectionTest, EveryTopFolderOfTheRules_IsRead)
{
    std::vector<std::string> unread{"src", "platform", "embedded", "tools", "tests"};
    for (const SourceFile& file : readProjectSources())
        std::erase(unread, topFolder(file.path));
    EXPECT_EQ(joinLines(unread), "");
}

TEST_F(DependencyDirectionTest, EverySourceOfTheProduct_BelongsToARoom)
{
    std::string outside;
    for (const SourceFile& file : readProjectSources()) {
        const std::string top = topFolder(file.path);
        if ((top == "embedded" || top == "tools") && !belongsToRoom(file.path))
            outside += file.path + "\n";
    }
    EXPECT_EQ(outside, "");
}

TEST_F(DependencyDirectionTest, AllowedIncludes_CauseNoComplaint)
{
    for (const auto& [from, to] : {
             Include{"src/coordsys/a.cpp", "<vector>"},
             Include{"src/coordsys/a.cpp", "\"platform/host.h\""},
             Include{"src/coordsys/a.cpp", "\"storage/packing.h\""},
             Include{"src/coordsys/a.cpp", "\"result.h\""},
             Include{"src/frame/a.cpp", "\"coordsys/result.h\""},
             Include{"src/transformation/a.cpp", "\"storage/packing.h\""},
             Include{"platform/a.h", "\"host/object.h\""},
             Include{"platform/host/a.h", "\"object.h\""},
             Include{"platform/host/a.h", "<cstdint>"},
             Include{"embedded/foundation/a.cpp", "<utf8.h>"},
             Include{"embedded/host/database/a.cpp", "\"embedded/base/text.h\""},
             Include{"embedded/host/database/a.cpp", "\"platform/host/object.h\""},
             Include{"embedded/host/database/a.cpp", "<nlohmann/json.hpp>"},
             Include{"embedded/host/drawing_file/a.cpp", "\"embedded/host/database/drawing.h\""},
             Include{"embedded/spatial_reference/operations/a.cpp", "\"embedded/spatial_reference/catalog/catalog.h\""},
             Include{"tools/orvelcs/drawing/a.cpp", "\"embedded/base/json/a.h\""},
             Include{"tools/orvelcs/drawing/a.cpp", "\"orvelcs/cli/output.h\""},
             Include{"tools/orvelcs/commands/a.cpp", "\"embedded/host/database/drawing.h\""},
             Include{"tools/orvelcs/commands/a.cpp", "\"coordsys/orvel_coordinate_system.h\""},
             Include{"tools/orvelcs/commands/codec.cpp", "\"storage/run_length.h\""},
             Include{"tests/coordsys/a.cpp", "\"orvelcs/cli/output.h\""},
             Include{"examples/a.cpp", "<vector>"},
             Include{"examples/a.cpp", "\"embedded/host/application/application.h\""},
             Include{"examples/a.cpp", "\"coordsys/orvel_coordinate_system.h\""},
             Include{"examples/a.cpp", "\"platform/host.h\""},
         })
        EXPECT_EQ(countComplaints(from, to), 0U) << from << " -> " << to;
}

TEST_F(DependencyDirectionTest, ForbiddenIncludes_CauseOneComplaintEach)
{
    for (const auto& [from, to] : {
             Include{"src/coordsys/a.cpp", "<proj.h>"},
             Include{"src/coordsys/a.cpp", "<nlohmann/json.hpp>"},
             Include{"src/coordsys/a.cpp", "<unistd.h>"},
             Include{"src/coordsys/a.cpp", "<platform/host.h>"},
             Include{"src/coordsys/a.cpp", "\"platform/host/object.h\""},
             Include{"src/coordsys/a.cpp", "\"../../platform/host.h\""},
             Include{"src/coordsys/a.cpp", "\"embedded/host/database/drawing.h\""},
             Include{"src/coordsys/a.cpp", "\"../../embedded/host/database/drawing.h\""},
             Include{"src/coordsys/a.cpp", "\"frame/module.h\""},
             Include{"src/coordsys/a.cpp", "\"nowhere.h\""},
             Include{"src/storage/a.cpp", "\"coordsys/result.h\""},
             Include{"src/storage/a.cpp", "\"../coordsys/result.h\""},
             Include{"src/storage/a.cpp", "\"frame/module.h\""},
             Include{"src/storage/a.cpp", "\"transformation/item.h\""},
             Include{"platform/host/a.h", "<windows.h>"},
             Include{"platform/host/a.h", "\"../../embedded/host/database/drawing.h\""},
             Include{"platform/host/a.h", "\"storage/packing.h\""},
             Include{"embedded/host/database/a.cpp", "\"storage/packing.h\""},
             Include{"embedded/host/database/a.cpp", "\"src/storage/packing.h\""},
             Include{"embedded/host/database/a.cpp", "\"tools/orvelcs/cli/output.h\""},
             Include{"embedded/host/database/a.cpp", "\"embedded/spatial_reference/catalog/catalog.h\""},
             Include{"embedded/spatial_reference/operations/a.cpp", "\"embedded/host/database/drawing.h\""},
             Include{"embedded/host/database/a.cpp", "\"embedded/host/drawing_file/schema.h\""},
             Include{"embedded/base/a.cpp", "\"embedded/base/json/a.h\""},
             Include{"embedded/base/a.cpp", "\"embedded/diagnostics/faults.h\""},
             Include{"embedded/spatial_reference/catalog/a.cpp", "\"embedded/spatial_reference/operations/chain.h\""},
             Include{"tools/orvelcs/cli/a.cpp", "\"orvelcs/commands/assign.h\""},
             Include{"tools/orvelcs/commands/a.cpp", "\"storage/packing.h\""},
             Include{"tools/orvelcs/commands/a.cpp", "\"storage/run_length.h\""},
             Include{"tools/orvelcs/commands/a.cpp", "\"coordsys/result.h\""},
             Include{"tools/orvelcs/cli/a.cpp", "\"coordsys/orvel_coordinate_system.h\""},
             Include{"embedded/foundation/a.cpp", "\"embedded/host/database/drawing.h\""},
             Include{"embedded/foundation/a.cpp", "\"../host/database/drawing.h\""},
             Include{"examples/a.cpp", "<proj.h>"},
             Include{"examples/a.cpp", "\"coordsys/result.h\""},
             Include{"examples/a.cpp", "\"platform/host/object.h\""},
             Include{"examples/a.cpp", "\"embedded/base/text.h\""},
         })
        EXPECT_EQ(countComplaints(from, to), 1U) << from << " -> " << to;
}

TEST_F(DependencyDirectionTest, SystemHeaders_AreAllowedInThePlatformsWindowsHeader)
{
    EXPECT_EQ(findForbiddenIncludes({{"platform/win32.h", "#include <shlobj.h>\n"}}).size(), 0U);
}

TEST_F(DependencyDirectionTest, Complaint_NamesFileLineAndTarget)
{
    const std::vector<std::string> complaints =
        findForbiddenIncludes({{"src/frame/a.cpp", "// first\n\n  #  include <proj.h>\n"}});
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_EQ(complaints[0].substr(0, 25), "src/frame/a.cpp:3: proj.h");
}

TEST_F(DependencyDirectionTest, IncludeInAComment_IsIgnored)
{
    EXPECT_TRUE(parseIncludes({"src/frame/a.cpp", "// #include <proj.h>\n"}).empty());
}

} // namespace
} // namespace Tests
