// Several processes use one registry.
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/file_text.h"
#include "support/posix/child_process.h"
#include "windows/registry_test.h"

namespace Tests {
namespace {

class RegistryProcesses : public RegistryTest {
protected:
    static constexpr int kValues = 10;

    static std::wstring nameOf(int writer, int number)
    {
        return std::to_wstring(writer) + L'.' + std::to_wstring(number);
    }
    /// Returns how many values were written.
    static int writeAll(int writer)
    {
        int count = 0;
        for (int number = 0; number < kValues; ++number) {
            const OpenKey key = createKey(L"Software\\Shared", KEY_WRITE);
            count += setText(key, nameOf(writer, number).c_str(), nameOf(writer, number)) == ERROR_SUCCESS ? 1 : 0;
        }
        return count;
    }
    static pid_t start(const std::function<int()>& function)
    {
        const pid_t child = ::fork();
        EXPECT_GE(child, 0);
        if (child == 0)
            ::_exit(function());
        return child;
    }
    static int waitFor(pid_t child)
    {
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return status;
    }
};

TEST_F(RegistryProcesses, EightWriters_LoseNoValue)
{
    constexpr int kWriters = 8;
    createKey(L"Other"); // so that the processes inherit a connection
    std::vector<pid_t> writers(kWriters);
    for (int writer = 0; writer < kWriters; ++writer)
        writers[static_cast<std::size_t>(writer)] = start([writer] { return writeAll(writer) == kValues ? 0 : 1; });
    for (const pid_t writer : writers)
        EXPECT_EQ(waitFor(writer), 0);
    const OpenKey key = createKey(L"Software\\Shared");
    EXPECT_EQ(valueNames(key).size(), std::size_t{kWriters} * kValues);
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int number = 0; number < kValues; ++number)
            EXPECT_EQ(readText(key, nameOf(writer, number).c_str()), withNul(nameOf(writer, number)));
    }
    EXPECT_EQ(registryFault(), "");
}

TEST_F(RegistryProcesses, Reader_SeesCompleteValuesWhileAnotherProcessReplacesThem)
{
    createKey(L"Software\\Shared");
    const std::wstring text(2'000, L'x'); // more than a page
    const pid_t writer = start([&] {
        const OpenKey key = createKey(L"Software\\Shared");
        for (int number = 100; number < 140;
             ++number) { // all texts have the same length, which readText asks for first
            if (setText(key, L"a", text + std::to_wstring(number)) != ERROR_SUCCESS)
                return 1;
        }
        return 0;
    });
    const OpenKey key = createKey(L"Software\\Shared", KEY_READ);
    int status = -1;
    while (::waitpid(writer, &status, WNOHANG) == 0) {
        EXPECT_EQ(registryFault(), "");
        const auto found = readText(key, L"a");
        EXPECT_TRUE(!found || found->starts_with(text));
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readText(key, L"a"), withNul(text + L"139"));
}

TEST_F(RegistryProcesses, OpenHandle_SeesChangesOfAnotherProcess)
{
    const OpenKey key = createKey();
    EXPECT_EQ(runInChildProcess([&] { return std::to_string(setText(key, L"a", L"from the child")); }), "0");
    EXPECT_EQ(readText(key, L"a"), withNul(L"from the child"));
}

TEST_F(RegistryProcesses, KilledWriter_LeavesItsReportedValuesAndAtMostOneMore)
{
    constexpr int kRounds = 6;
    const OpenKey key = createKey(L"Software\\Shared");
    int stored = 0;
    for (int round = 0; round < kRounds; ++round) {
        int ends[2] = {-1, -1};
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = start([&] {
            for (int number = stored;; ++number) {
                if (setText(key, std::to_wstring(number).c_str(), std::to_wstring(number)) != ERROR_SUCCESS ||
                    ::write(ends[1], "x", 1) != 1)
                    return 1;
            }
        });
        ::close(ends[1]);
        char report = 0;
        for (int count = 0; count <= round; ++count)
            ASSERT_EQ(::read(ends[0], &report, 1), 1);
        stored += round + 1;
        ASSERT_EQ(::kill(child, SIGKILL), 0); // during one of the next changes
        EXPECT_TRUE(WIFSIGNALED(waitFor(child)));
        while (::read(ends[0], &report, 1) == 1)
            ++stored;
        ::close(ends[0]);
        const auto names = valueNames(key);
        const int found = static_cast<int>(names.size());
        ASSERT_TRUE(found == stored || found == stored + 1) << found << " after " << stored;
        for (const std::wstring& name : names)
            EXPECT_EQ(readText(key, name.c_str()), withNul(name));
        stored = found;
    }
    EXPECT_EQ(registryFault(), "");
    EXPECT_EQ(setText(key, L"after", L"it"), ERROR_SUCCESS);
}

TEST_F(RegistryProcesses, ReadOnlyFile_ReturnsAccessDenied)
{
    {
        const OpenKey key = createKey();
        ASSERT_EQ(setText(key, L"a", L"old"), ERROR_SUCCESS);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    const std::string before = readFile(file);
    const std::string codes = runAsOrdinaryUser([] {
        const OpenKey key = createKey();
        HKEY fresh = nullptr;
        return std::to_string(setText(key, L"a", L"new")) + ' ' + std::to_string(RegDeleteValueW(key.get(), L"a")) +
               ' ' + std::to_string(create(L"Fresh", &fresh)) + ' ' +
               (readText(key, L"a") == withNul(L"old") ? "old" : "new");
    });
    EXPECT_EQ(codes, "5 5 5 old");
    EXPECT_EQ(readFile(file), before);
}

// SQLite creates its journal in the folder.
TEST_F(RegistryProcesses, ReadOnlyFolder_ReturnsAccessDenied)
{
    {
        const OpenKey key = createKey();
        ASSERT_EQ(setText(key, L"a", L"old"), ERROR_SUCCESS);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(file.parent_path().c_str(), 0555), 0);
    const std::string before = readFile(file);
    const std::string codes = runAsOrdinaryUser([this] {
        const OpenKey key = createKey();
        const LSTATUS present = setText(key, L"a", L"new");
        Embedded::useRegistryFile(file.parent_path() / "absent.db");
        HKEY fresh = nullptr;
        return std::to_string(present) + ' ' + std::to_string(create(L"Fresh", &fresh));
    });
    EXPECT_EQ(codes, "5 5");
    EXPECT_EQ(readFile(file), before);
}

TEST_F(RegistryProcesses, UnreadableFile_ReturnsAccessDenied)
{
    createKey();
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0000), 0);
    const std::string answer = runAsOrdinaryUser([this] {
        reopenRegistry();
        return std::to_string(openStatus(L"Software")) + ' ' + registryFault();
    });
    EXPECT_EQ(answer, "5 " + file.string() + ": cannot be opened: the user lacks the right to");
}

} // namespace
} // namespace Tests
