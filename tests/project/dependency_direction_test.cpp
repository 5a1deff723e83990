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
        for (const char* path :
             {"platform/host.h", "platform/windows.h", "platform/host/object.h", "src/storage/packing.h",
              "src/coordsys/result.h", "src/frame/module.h", "src/transformation/item.h", "embedded/base/text.h",
              "embedded/base/json/a.h", "embedded/host/database/drawing.h",
              "embedded/spatial_reference/catalog/catalog.h", "tools/orvelcs/cli/output.h",
              "embedded/host/drawing_file/schema.h", "embedded/diagnostics/faults.h",
              "embedded/spatial_reference/operations/chain.h", "tools/orvelcs/commands/assign.h",
              "src/coordsys/orvel_coordinate_system.h", "src/storage/run_length.h"})
            files_.push_back({path, ""});
    }

    /// The number of complaints about a file with one #include of the target, which has its quotes.
    std::size_t complaintsAbout(const std::string& path, const std::string& target)
    {
        std::vector<SourceFile> files = files_;
        files.push_back({path, "#include " + target + "\n"});
        return wrongIncludes(files).size();
    }

private:
    std::vector<SourceFile> files_;
};

struct Arrow {
    const char* from;
    const char* to;
};

TEST_F(DependencyDirectionTest, EveryIncludeOfTheProject_PointsTheAllowedWay)
{
    const std::vector<SourceFile> files = readProjectSources();
    ASSERT_FALSE(files.empty());
    EXPECT_EQ(joined(wrongIncludes(files)), "");
}

TEST_F(DependencyDirectionTest, EveryRoomThatTheRulesSpeakOf_IsRead)
{
    std::vector<std::string> unread{"src", "platform", "embedded", "tools", "tests"};
    for (const SourceFile& file : readProjectSources())
        std::erase(unread, roomOf(file.path));
    EXPECT_EQ(joined(unread), "");
}

TEST_F(DependencyDirectionTest, EverySourceOfTheProduct_LiesInARoom)
{
    std::string outside;
    for (const SourceFile& file : readProjectSources()) {
        const std::string top = roomOf(file.path);
        if ((top == "embedded" || top == "tools") && !isInARoom(file.path))
            outside += file.path + "\n";
    }
    EXPECT_EQ(outside, "");
}

TEST_F(DependencyDirectionTest, AllowedArrows_RaiseNoComplaint)
{
    for (const auto& [from, to] : {
             Arrow{"src/coordsys/a.cpp", "<vector>"},
             Arrow{"src/coordsys/a.cpp", "\"platform/host.h\""},
             Arrow{"src/coordsys/a.cpp", "\"storage/packing.h\""},
             Arrow{"src/coordsys/a.cpp", "\"result.h\""},
             Arrow{"src/frame/a.cpp", "\"coordsys/result.h\""},
             Arrow{"src/transformation/a.cpp", "\"storage/packing.h\""},
             Arrow{"platform/a.h", "\"host/object.h\""},
             Arrow{"platform/host/a.h", "\"object.h\""},
             Arrow{"platform/host/a.h", "<cstdint>"},
             Arrow{"embedded/foundation/a.cpp", "<utf8.h>"},
             Arrow{"embedded/host/database/a.cpp", "\"embedded/base/text.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"platform/host/object.h\""},
             Arrow{"embedded/host/database/a.cpp", "<nlohmann/json.hpp>"},
             Arrow{"embedded/host/drawing_file/a.cpp", "\"embedded/host/database/drawing.h\""},
             Arrow{"embedded/spatial_reference/operations/a.cpp", "\"embedded/spatial_reference/catalog/catalog.h\""},
             Arrow{"tools/orvelcs/drawing/a.cpp", "\"embedded/base/json/a.h\""},
             Arrow{"tools/orvelcs/drawing/a.cpp", "\"orvelcs/cli/output.h\""},
             Arrow{"tools/orvelcs/commands/a.cpp", "\"embedded/host/database/drawing.h\""},
             Arrow{"tools/orvelcs/commands/a.cpp", "\"coordsys/orvel_coordinate_system.h\""},
             Arrow{"tools/orvelcs/commands/codec.cpp", "\"storage/run_length.h\""},
             Arrow{"tests/coordsys/a.cpp", "\"orvelcs/cli/output.h\""},
         })
        EXPECT_EQ(complaintsAbout(from, to), 0U) << from << " -> " << to;
}

TEST_F(DependencyDirectionTest, WrongArrows_RaiseOneComplaintEach)
{
    for (const auto& [from, to] : {
             Arrow{"src/coordsys/a.cpp", "<proj.h>"},
             Arrow{"src/coordsys/a.cpp", "<nlohmann/json.hpp>"},
             Arrow{"src/coordsys/a.cpp", "<unistd.h>"},
             Arrow{"src/coordsys/a.cpp", "<platform/host.h>"},
             Arrow{"src/coordsys/a.cpp", "\"platform/host/object.h\""},
             Arrow{"src/coordsys/a.cpp", "\"../../platform/host.h\""},
             Arrow{"src/coordsys/a.cpp", "\"embedded/host/database/drawing.h\""},
             Arrow{"src/coordsys/a.cpp", "\"../../embedded/host/database/drawing.h\""},
             Arrow{"src/coordsys/a.cpp", "\"frame/module.h\""},
             Arrow{"src/coordsys/a.cpp", "\"nowhere.h\""},
             Arrow{"src/storage/a.cpp", "\"coordsys/result.h\""},
             Arrow{"src/storage/a.cpp", "\"../coordsys/result.h\""},
             Arrow{"src/storage/a.cpp", "\"frame/module.h\""},
             Arrow{"src/storage/a.cpp", "\"transformation/item.h\""},
             Arrow{"platform/host/a.h", "<windows.h>"},
             Arrow{"platform/host/a.h", "\"../../embedded/host/database/drawing.h\""},
             Arrow{"platform/host/a.h", "\"storage/packing.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"storage/packing.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"src/storage/packing.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"tools/orvelcs/cli/output.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"embedded/spatial_reference/catalog/catalog.h\""},
             Arrow{"embedded/spatial_reference/operations/a.cpp", "\"embedded/host/database/drawing.h\""},
             Arrow{"embedded/host/database/a.cpp", "\"embedded/host/drawing_file/schema.h\""},
             Arrow{"embedded/base/a.cpp", "\"embedded/base/json/a.h\""},
             Arrow{"embedded/base/a.cpp", "\"embedded/diagnostics/faults.h\""},
             Arrow{"embedded/spatial_reference/catalog/a.cpp", "\"embedded/spatial_reference/operations/chain.h\""},
             Arrow{"tools/orvelcs/cli/a.cpp", "\"orvelcs/commands/assign.h\""},
             Arrow{"tools/orvelcs/commands/a.cpp", "\"storage/packing.h\""},
             Arrow{"tools/orvelcs/commands/a.cpp", "\"storage/run_length.h\""},
             Arrow{"tools/orvelcs/commands/a.cpp", "\"coordsys/result.h\""},
             Arrow{"tools/orvelcs/cli/a.cpp", "\"coordsys/orvel_coordinate_system.h\""},
             Arrow{"embedded/foundation/a.cpp", "\"embedded/host/database/drawing.h\""},
             Arrow{"embedded/foundation/a.cpp", "\"../host/database/drawing.h\""},
         })
        EXPECT_EQ(complaintsAbout(from, to), 1U) << from << " -> " << to;
}

TEST_F(DependencyDirectionTest, SystemHeaders_AreAllowedInThePlatformsWindowsHeader)
{
    EXPECT_EQ(wrongIncludes({{"platform/windows.h", "#include <shlobj.h>\n"}}).size(), 0U);
}

TEST_F(DependencyDirectionTest, Complaint_NamesFileLineAndTarget)
{
    const std::vector<std::string> complaints =
        wrongIncludes({{"src/frame/a.cpp", "// first\n\n  #  include <proj.h>\n"}});
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_EQ(complaints[0].substr(0, 25), "src/frame/a.cpp:3: proj.h");
}

TEST_F(DependencyDirectionTest, IncludeBehindACommentMark_IsNotRead)
{
    EXPECT_TRUE(includesOf({"src/frame/a.cpp", "// #include <proj.h>\n"}).empty());
}

} // namespace
} // namespace Tests
