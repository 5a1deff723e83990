// The fixture of tests that run the program in a temporary folder.
#pragma once

#include <filesystem>
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
using Arguments = std::vector<std::string>;

/// The files that the program keeps in the user's folder.
constexpr const char* kSettingsFile = "TransformationSetting.xml";
constexpr const char* kLockFile = "orvelcs.lock";

class CommandLineTest : public PlatformTest {
protected:
    CommandLineTest();

    ProgramResult run(Arguments arguments, const std::string& input = "") const;
    ProgramResult run(const ProgramRun& programRun) const;
    /// Runs the program while others run. Each of them needs a number of its own.
    ProgramResult runInParallel(const Arguments& arguments, int number) const;
    ProgramResult runWithoutCatalog(Arguments arguments) const;
    /// Runs the program with --json and expects the exit status. Returns the document, which must be the whole output.
    Json runForJson(Arguments arguments, int expectedStatus = 0) const;

    /// The path of a file in the temporary folder.
    std::filesystem::path path(const std::string& name) const { return folder_ / Embedded::pathFromUtf8(name); }
    std::string contents(const std::string& name) const { return readFile(path(name)); }
    void given(const std::string& name, const std::string& bytes) const { writeFile(path(name), bytes); }
    /// The contents of a drawing as text, from its file in the temporary folder or from its bytes.
    std::string drawing(const std::string& name) const { return drawingFromBytes(contents(name)); }
    static std::string drawingFromBytes(const std::string& bytes) { return drawingContents(*loadFromBytes(bytes)); }
    /// Expects that the run printed a drawing equal to that of the file, and nothing else.
    void expectPrinted(const ProgramResult& result, const std::string& name) const;
    /// Runs SQL on a file of the temporary folder, without the checks of the program.
    void edit(const std::string& name, const std::string& sql) const;
    /// Creates an empty drawing.
    void givenDrawing(const std::string& name, int version = 33) const;
    /// Creates a drawing with a coordinate system of the catalog.
    void givenDrawingWith(const std::string& name, const std::string& code) const;
    /// Creates a drawing whose transformation configuration is the text.
    void givenConfiguredDrawing(const std::string& name, const std::string& configuration) const;
    /// The names of all files in a folder of the temporary folder, in order.
    std::vector<std::string> files(const std::string& folder = "") const;

private:
    using CommandLines = std::vector<Arguments>;
    /// Creates a drawing by running the commands. They make the same bytes each time, so the bytes are made once.
    void givenDrawingMadeBy(const CommandLines& commands, const std::string& name) const;

    TemporaryFolder root_;
    std::filesystem::path folder_ = root_.path() / "work";
    std::filesystem::path captures_ = root_.path() / "captures";
    ScopedRegistry registry_{root_, root_.path() / "registry"}; // also holds the registries of the runs
};

Arguments concatenate(Arguments arguments, const Arguments& more);

/// An event as it is printed in JSON.
Json event(const std::string& name, const Json& code);

/// An item of a transformation configuration; type 1 is a path and type 2 a transformation.
std::string configurationItem(const std::string& source, const std::string& target, const std::string& name, int type,
                              const std::string& note = "");

/// Expects the exit status, exactly that output, and those errors or errors that match.
void expectResult(const ProgramResult& result, int status, const std::string& output,
                  const testing::Matcher<const std::string&>& errors);
/// Expects exit status 2, no output, and this one line of errors.
void expectWrongUsage(const ProgramResult& result, const std::string& line);
/// The same with --json: the output is the document that says what the line says.
void expectWrongUsageAsJson(const ProgramResult& result, const std::string& line);
/// The member "error" of a JSON document. `name` is null where `code` is.
Json errorMember(const std::string& command, const std::string& what, const Json& code, const Json& name,
                 const std::string& message);
/// The line on standard error for the member "error" of a JSON document.
std::string errorLine(const Json& error);

} // namespace Tests
