// The fixture of tests that run the program: a temporary folder, in which it runs, and what it answers.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "embedded/base/path.h"
#include "program_run.h"
#include "support/drawing.h"
#include "support/file_text.h"
#include "support/platform_test.h"
#include "support/scoped_registry.h"
#include "support/temporary_folder.h"

namespace Tests {

using Json = nlohmann::ordered_json;

class CommandLineTest : public PlatformTest {
protected:
    CommandLineTest();

    ProgramResult run(std::vector<std::string> arguments, const std::string& input = "") const;
    ProgramResult run(const ProgramRun& programRun) const;
    /// For runs at the same time, each with a number of its own.
    ProgramResult runBeside(const std::vector<std::string>& arguments, int number) const;
    ProgramResult runWithoutCatalog(std::vector<std::string> arguments) const;
    /// Runs it with --json; expects the status and answers the document, which must be all that was printed.
    Json runForJson(std::vector<std::string> arguments, int expectedStatus = 0) const;

    /// A file of the temporary folder.
    std::filesystem::path path(const std::string& name) const { return folder_ / Embedded::pathFromUtf8(name); }
    std::string contents(const std::string& name) const { return readFile(path(name)); }
    void given(const std::string& name, const std::string& bytes) const { writeFile(path(name), bytes); }
    /// What a drawing of the temporary folder, or one that was printed, holds.
    std::string drawing(const std::string& name) const { return drawingIn(contents(name)); }
    static std::string drawingIn(const std::string& bytes) { return drawingContents(*loadFromBytes(bytes)); }
    /// The run printed a drawing that is equal to the file's, and nothing else.
    void expectPrinted(const ProgramResult& result, const std::string& name) const
    {
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(drawingIn(result.output), drawing(name));
    }
    /// Runs SQL on a file of the temporary folder, past all checks.
    void edit(const std::string& name, const std::string& sql) const;
    /// An empty drawing, of that version.
    void givenDrawing(const std::string& name, int version = 33) const;
    void givenDrawingWith(const std::string& name, const std::string& code) const;
    /// The names of all files in the folder, in order.
    std::vector<std::string> files() const;

private:
    using CommandLines = std::vector<std::vector<std::string>>;
    /// The drawing that the commands make of nothing: the same bytes each time, and so one of an earlier test will do.
    void givenOnceMade(const std::string& name, const CommandLines& commands) const;

    TemporaryFolder root_;
    std::filesystem::path folder_ = root_.path() / "work";
    std::filesystem::path captures_ = root_.path() / "captures";
    ScopedRegistry registry_{root_, root_.path() / "registry"}; // takes those of the runs with it
};

/// The run ended with the status, printed exactly that, and said nothing else.
void expectResult(const ProgramResult& result, int status, const std::string& output, const std::string& errors);
/// A refused command line: status 2, nothing on standard output, this one line on standard error.
void expectWrongUsage(const ProgramResult& result, const std::string& line);

} // namespace Tests
