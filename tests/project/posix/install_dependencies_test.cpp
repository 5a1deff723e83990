#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

/// Runs scripts/install-dependencies.sh with substitutes for the programs that it calls. dpkg-query reports the
/// packages that the test names, and apt-get and sudo record their calls.
class InstallDependenciesTest : public PlatformTest {
protected:
    InstallDependenciesTest()
    {
        std::string pattern = (fs::temp_directory_path() / "install-dependencies-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        for (const char* tool : {"grep", "env"})
            fs::create_symlink(fs::exists(fs::path("/usr/bin") / tool) ? fs::path("/usr/bin") / tool
                                                                       : fs::path("/bin") / tool,
                               folder_ / tool);
        givenProgram("dpkg-query", R"(for package; do :; done; grep -qsx "$package" installed && echo installed)");
        givenProgram("apt-get", R"(echo "$*" >>apt-calls)");
        givenProgram("sudo", R"(echo "$*" >>sudo-calls; exec "$@")");
        givenUser(0);
    }
    ~InstallDependenciesTest() override { fs::remove_all(folder_); }

    void givenProgram(const std::string& name, const std::string& body)
    {
        std::ofstream(folder_ / name) << "#!/bin/sh\n" << body << "\n";
        fs::permissions(folder_ / name, fs::perms::owner_all);
    }
    void givenNoProgram(const std::string& name) { fs::remove(folder_ / name); }
    void givenUser(int number) { givenProgram("id", "echo " + std::to_string(number)); }
    /// Makes dpkg-query report these packages as installed. Before the call it reports none.
    void givenDemoPackagesExcept(const std::string& missing)
    {
        std::ofstream list(folder_ / "installed");
        for (const char* package :
             {"g++", "cmake", "ninja-build", "make", "libproj-dev", "proj-data", "libsqlite3-dev", "libsqlitecpp-dev",
              "libxxhash-dev", "nlohmann-json3-dev", "libcli11-dev", "libfmt-dev", "libutfcpp-dev", "libexpected-dev"})
            if (package != missing)
                list << package << "\n";
    }

    /// The script's exit status.
    int run(const std::string& arguments)
    {
        const std::string script = (fs::path(ORVEL_SOURCE_DIR) / "scripts" / "install-dependencies.sh").string();
        const std::string command = "cd '" + folder_.string() + "' && PATH=\"$PWD\" /bin/sh '" + script + "' " +
                                    arguments + " >output 2>&1 </dev/null";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string output() const { return readFile(folder_, "output").text; }
    std::string aptCalls() const { return readFile(folder_, "apt-calls").text; }
    std::string sudoCalls() const { return readFile(folder_, "sudo-calls").text; }

private:
    fs::path folder_;
};

TEST_F(InstallDependenciesTest, CompleteInstallation_CallsNeitherAptGetNorSudo)
{
    givenUser(1000);
    givenDemoPackagesExcept("");
    EXPECT_EQ(run("demo"), 0);
    EXPECT_EQ(aptCalls(), "");
    EXPECT_EQ(sudoCalls(), "");
    EXPECT_EQ(output(), "install-dependencies: everything that 'demo' needs is installed\n");
}

TEST_F(InstallDependenciesTest, OneMissingPackage_IsTheOnlyOneInstalled)
{
    givenDemoPackagesExcept("libfmt-dev");
    EXPECT_EQ(run("demo"), 0);
    EXPECT_EQ(aptCalls(), "-qq update\n"
                          "-qq --yes --no-install-recommends -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 "
                          "install libfmt-dev\n");
    EXPECT_EQ(sudoCalls(), "");
}

TEST_F(InstallDependenciesTest, OrdinaryUser_InstallsThroughSudo)
{
    givenUser(1000);
    givenDemoPackagesExcept("cmake");
    EXPECT_EQ(run("demo"), 0);
    EXPECT_EQ(splitLines(sudoCalls()).size(), 2U);
    EXPECT_EQ(splitLines(aptCalls()).size(), 2U);
}

TEST_F(InstallDependenciesTest, OrdinaryUserWithoutSudo_SeesTheCommand)
{
    givenUser(1000);
    givenNoProgram("sudo");
    givenDemoPackagesExcept("cmake");
    EXPECT_EQ(run("demo"), 1);
    EXPECT_EQ(aptCalls(), "");
    EXPECT_EQ(output(), "install-dependencies: missing: cmake\n"
                        "install-dependencies: there is no sudo here; run as root: "
                        "apt-get update && apt-get install --no-install-recommends cmake\n");
}

TEST_F(InstallDependenciesTest, CheckOption_NamesMissingPackagesAndInstallsNothing)
{
    givenDemoPackagesExcept("proj-data");
    EXPECT_EQ(run("--check demo"), 1);
    EXPECT_EQ(aptCalls(), "");
    EXPECT_EQ(splitLines(output()).at(0), "install-dependencies: missing: proj-data");
}

TEST_F(InstallDependenciesTest, DemoTarget_NeedsNoTestTools)
{
    EXPECT_EQ(run("demo"), 0);
    for (const char* tool : {"clang", "gtest", "gmock", "tidy"})
        EXPECT_EQ(aptCalls().find(tool), std::string::npos) << tool;
}

TEST_F(InstallDependenciesTest, TestTarget_AlsoNeedsTheTestTools)
{
    givenDemoPackagesExcept("");
    EXPECT_EQ(run("test"), 0);
    EXPECT_TRUE(splitLines(aptCalls())
                    .at(1)
                    .ends_with("install libgtest-dev libgmock-dev clang libclang-rt-dev proj-bin gdal-bin "
                               "python3-gdal parallel jq python3-jsonschema mandoc zsh fish pkg-config file dpkg-dev "
                               "chromium nodejs npm"));
}

TEST_F(InstallDependenciesTest, NpmThatIsThere_StaysWithItsNodeJs)
{
    givenDemoPackagesExcept("");
    givenProgram("npm", "");
    EXPECT_EQ(run("test"), 0);
    EXPECT_TRUE(splitLines(aptCalls()).at(1).ends_with(" chromium"));
}

TEST_F(InstallDependenciesTest, OnlyTheBenchTarget_NeedsTheBenchmarkLibrary)
{
    givenDemoPackagesExcept("");
    EXPECT_EQ(run("bench"), 0);
    EXPECT_TRUE(splitLines(aptCalls()).at(1).ends_with("install libbenchmark-dev"));
    EXPECT_EQ(run("test"), 0);
    EXPECT_EQ(splitLines(aptCalls()).at(3).find("benchmark"), std::string::npos);
}

TEST_F(InstallDependenciesTest, PackageTarget_AlsoNeedsThePackingTools)
{
    givenDemoPackagesExcept("");
    EXPECT_EQ(run("package"), 0);
    EXPECT_TRUE(splitLines(aptCalls()).at(1).ends_with(" file zip"));
}

TEST_F(InstallDependenciesTest, FailedInstallation_FailsAndPrintsTheCommand)
{
    givenProgram("apt-get", "exit 100");
    givenDemoPackagesExcept("cmake");
    EXPECT_EQ(run("demo"), 1);
    EXPECT_EQ(splitLines(output()).back(), "install-dependencies: failed; to install by hand, run as root: "
                                           "apt-get update && apt-get install --no-install-recommends cmake");
}

TEST_F(InstallDependenciesTest, SystemWithoutAptGet_SucceedsWithANote)
{
    givenNoProgram("apt-get");
    EXPECT_EQ(run("demo"), 0);
    EXPECT_NE(output().find("this system has no apt-get"), std::string::npos);
}

TEST_F(InstallDependenciesTest, UnknownTarget_IsWrongUsage)
{
    EXPECT_EQ(run("everything"), 2);
    EXPECT_EQ(aptCalls(), "");
}

} // namespace
} // namespace Tests
