// Drawings whose save was interrupted between the two steps that it takes on this system.
#include <windows.h>

#include "cli/command_line_test.h"
#include "embedded/foundation/win32/file_handle.h"

namespace Tests {
namespace {

class InterruptedSave : public CommandLineTest {
protected:
    void givenDrawingLeftAside(const std::string& name) const
    {
        givenDrawingWith(name, "EPSG:25832");
        std::filesystem::rename(path(name), path(name + ".before-save"));
    }
};

TEST_F(InterruptedSave, LeavesADrawingThatIsShown)
{
    givenDrawingLeftAside("a.qedb");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"});
}

TEST_F(InterruptedSave, LeavesADrawingThatExistsForNew)
{
    givenDrawingLeftAside("a.qedb");
    expectResult(run({"new", "a.qedb"}), 1, "", "orvelcs: new: a.qedb: exists; --force overwrites it\n");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
}

TEST_F(InterruptedSave, IsOverWithTheNextSave)
{
    givenDrawingLeftAside("a.qedb");
    ASSERT_EQ(run({"assign", "EPSG:4326", "a.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:4326");
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"});
}

TEST_F(InterruptedSave, OfAFileOfBytes_LeavesOneThatIsRead)
{
    ASSERT_EQ(run({"encode", "EPSG:4326", "--drawing-version", "33", "-q", "-o", "block"}).status, 0);
    std::filesystem::rename(path("block"), path("block.before-save"));
    EXPECT_EQ(runForJson({"decode", "block"}).at(0)["code"], "EPSG:4326");
    EXPECT_EQ(files(), std::vector<std::string>{"block"});
}

TEST_F(InterruptedSave, AfterItsSteps_LeavesTheNewDrawing)
{
    givenDrawingWith("a.qedb", "EPSG:25832");
    given("a.qedb.before-save", "the drawing before");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(contents("a.qedb.before-save"), "the drawing before");
    ASSERT_EQ(run({"clear", "a.qedb"}).status, 0);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"});
}

TEST_F(InterruptedSave, WithADrawingThatCannotComeBack_IsToldByEveryCommand)
{
    givenDrawingLeftAside("a.qedb");
    const std::filesystem::path aside = path("a.qedb.before-save");
    const Embedded::FileHandle held(
        CreateFileW(aside.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(held.isOpen());
    const std::string reason =
        "is still in a.qedb.before-save, where an interrupted save left it: in use by another program\n";
    expectResult(run({"new", "a.qedb"}), 1, "", "orvelcs: new: a.qedb: eFileWriteFailed (54): " + reason);
    expectResult(run({"show", "a.qedb"}), 1, "", "orvelcs: show: a.qedb: eFileNotFound (50): " + reason);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb.before-save"});
}

TEST_F(InterruptedSave, IsNotSeenInAFolder)
{
    std::filesystem::create_directory(path("a.qedb.before-save"));
    expectResult(run({"new", "a.qedb"}), 0, "a.qedb: new drawing, version 33\n", "");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.qedb", "a.qedb.before-save"}));
}

} // namespace
} // namespace Tests
