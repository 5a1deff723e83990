// Several processes with one registry.
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/posix/child_process.h"
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

class RegistryProcesses : public RegistryFileTest {
protected:
    static constexpr int kValues = 10;

    static std::wstring nameOf(int writer, int number)
    {
        return std::to_wstring(writer) + L'.' + std::to_wstring(number);
    }
    /// The number of values written.
    static int writeAll(int writer)
    {
        int count = 0;
        for (int number = 0; number < kValues; ++number) {
            const OpenKey key = created(L"Software\\Shared", KEY_WRITE);
            count += set(key, nameOf(writer, number).c_str(), nameOf(writer, number)) == ERROR_SUCCESS ? 1 : 0;
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
    static int statusOf(pid_t child)
    {
        int status = -1;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return status;
    }
};

TEST_F(RegistryProcesses, EightWritersLoseNothingOfEachOther)
{
    constexpr int kWriters = 8;
    created(L"Other"); // the connection to the file is inherited
    std::vector<pid_t> writers(kWriters);
    for (int writer = 0; writer < kWriters; ++writer)
        writers[static_cast<std::size_t>(writer)] = start([writer] { return writeAll(writer) == kValues ? 0 : 1; });
    for (const pid_t writer : writers)
        EXPECT_EQ(statusOf(writer), 0);
    const OpenKey key = created(L"Software\\Shared");
    EXPECT_EQ(namesOf(key).size(), std::size_t{kWriters} * kValues);
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int number = 0; number < kValues; ++number)
            EXPECT_EQ(textOf(key, nameOf(writer, number).c_str()), ended(nameOf(writer, number)));
    }
    EXPECT_EQ(registryFault(), "");
}

TEST_F(RegistryProcesses, AReaderSeesEachValueWholeWhileAnotherProcessReplacesIt)
{
    created(L"Software\\Shared");
    const std::wstring text(2'000, L'x'); // more than a page
    const pid_t writer = start([&] {
        const OpenKey key = created(L"Software\\Shared");
        for (int number = 100; number < 140; ++number) { // all of one length, which is asked first
            if (set(key, L"a", text + std::to_wstring(number)) != ERROR_SUCCESS)
                return 1;
        }
        return 0;
    });
    const OpenKey key = created(L"Software\\Shared", KEY_READ);
    int status = -1;
    while (::waitpid(writer, &status, WNOHANG) == 0) {
        EXPECT_EQ(registryFault(), "");
        const auto found = textOf(key, L"a");
        EXPECT_TRUE(!found || found->starts_with(text));
    }
    EXPECT_EQ(status, 0);
    EXPECT_EQ(textOf(key, L"a"), ended(text + L"139"));
}

TEST_F(RegistryProcesses, OpenHandle_SeesWhatAnotherProcessWrites)
{
    const OpenKey key = created();
    EXPECT_EQ(runInChildProcess([&] { return std::to_string(set(key, L"a", L"from the child")); }), "0");
    EXPECT_EQ(textOf(key, L"a"), ended(L"from the child"));
}

TEST_F(RegistryProcesses, AWriterThatIsKilledLeavesWhatItReportedAndAtMostOneMore)
{
    constexpr int kRounds = 6;
    const OpenKey key = created(L"Software\\Shared");
    int kept = 0;
    for (int round = 0; round < kRounds; ++round) {
        int ends[2] = {-1, -1};
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = start([&] {
            for (int number = kept;; ++number) {
                if (set(key, std::to_wstring(number).c_str(), std::to_wstring(number)) != ERROR_SUCCESS ||
                    ::write(ends[1], "x", 1) != 1)
                    return 1;
            }
        });
        ::close(ends[1]);
        char report = 0;
        for (int count = 0; count <= round; ++count)
            ASSERT_EQ(::read(ends[0], &report, 1), 1);
        kept += round + 1;
        ASSERT_EQ(::kill(child, SIGKILL), 0); // somewhere in the next change
        EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
        while (::read(ends[0], &report, 1) == 1)
            ++kept;
        ::close(ends[0]);
        const auto names = namesOf(key);
        const int found = static_cast<int>(names.size());
        ASSERT_TRUE(found == kept || found == kept + 1) << found << " after " << kept;
        for (const std::wstring& name : names)
            EXPECT_EQ(textOf(key, name.c_str()), ended(name));
        kept = found;
    }
    EXPECT_EQ(registryFault(), "");
    EXPECT_EQ(set(key, L"after", L"it"), ERROR_SUCCESS);
}

TEST_F(RegistryProcesses, ReadOnlyFile_ReturnsAccessDenied)
{
    {
        const OpenKey key = created();
        ASSERT_EQ(set(key, L"a", L"old"), ERROR_SUCCESS);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    const std::string before = onDisk();
    const std::string codes = runAsOrdinaryUser([] {
        const OpenKey key = created();
        HKEY fresh = nullptr;
        return std::to_string(set(key, L"a", L"new")) + ' ' + std::to_string(RegDeleteValueW(key.get(), L"a")) + ' ' +
               std::to_string(create(L"Fresh", &fresh)) + ' ' + (textOf(key, L"a") == ended(L"old") ? "old" : "new");
    });
    EXPECT_EQ(codes, "5 5 5 old");
    EXPECT_EQ(onDisk(), before);
}

// SQLite puts its journal there.
TEST_F(RegistryProcesses, ReadOnlyFolder_ReturnsAccessDenied)
{
    {
        const OpenKey key = created();
        ASSERT_EQ(set(key, L"a", L"old"), ERROR_SUCCESS);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(file.parent_path().c_str(), 0555), 0);
    const std::string before = onDisk();
    const std::string codes = runAsOrdinaryUser([this] {
        const OpenKey key = created();
        const LSTATUS present = set(key, L"a", L"new");
        Embedded::useRegistryFile(file.parent_path() / "absent.db");
        HKEY fresh = nullptr;
        return std::to_string(present) + ' ' + std::to_string(create(L"Fresh", &fresh));
    });
    EXPECT_EQ(codes, "5 5");
    EXPECT_EQ(onDisk(), before);
}

TEST_F(RegistryProcesses, UnreadableFile_ReturnsAccessDenied)
{
    created();
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0000), 0);
    const std::string answer = runAsOrdinaryUser([this] {
        readAfresh();
        return std::to_string(openStatus(L"Software")) + ' ' + registryFault();
    });
    EXPECT_EQ(answer, "5 " + file.string() + ": cannot be opened: the user lacks the right to");
}

} // namespace
} // namespace Tests
