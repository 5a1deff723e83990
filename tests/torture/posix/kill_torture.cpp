// Kills processes at random moments while they save. The content must then be complete: the last state that was
// reported as saved, or the one that was being saved.
//
//     orvel_kill_torture [KILLS [SEED]]
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>

#include "embedded/host/drawing_file/drawing_file.h"
#include "embedded/windows/registry_file.h"
#include "platform/win32.h"
#include "support/drawing.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

using Number = std::uint32_t;

/// A kind of content that is saved with a number in it.
struct Target {
    const char* name;
    bool (*save)(const fs::path& folder, Number number);
    /// Reads the number; throws when the content is not complete.
    Number (*read)(const fs::path& folder);
};

[[noreturn]] void fail(const std::string& found)
{
    throw std::runtime_error("found: " + found.substr(0, 200));
}

/// A text so long that a save takes a while. Its length depends on the number, so that a mix of two texts is noticed.
std::wstring textOf(Number number)
{
    return std::to_wstring(number) + L':' +
           std::wstring(2'000 + number % 3'000, static_cast<wchar_t>(L'a' + number % 26));
}

Number readNumber(const std::wstring& text)
{
    const auto number = static_cast<Number>(std::wcstoul(text.c_str(), nullptr, 10));
    if (text != textOf(number))
        fail("a text that was never saved");
    return number;
}

Drawing& withNumber(Drawing& drawing, Number number)
{
    return drawing.withXrecord({{300, textOf(number)}}, L"first").withXrecord({{300, textOf(number)}}, L"second");
}

/// Changes the existing drawing, or makes one.
bool saveDrawing(const fs::path& folder, Number number)
{
    const fs::path file = folder / "a.qedb";
    std::unique_ptr<QeDbDatabase> database =
        fs::exists(file) ? Embedded::loadDrawing(file, Embedded::DrawingAccess::changing).value_or(nullptr)
                         : std::make_unique<QeDbDatabase>();
    if (database == nullptr)
        return false;
    Drawing drawing(std::move(database));
    withNumber(drawing, number);
    return Embedded::saveDrawing(*drawing.database(), file, QeDb::kCurrentDwg).has_value();
}

/// Writes a drawing over the existing one.
bool overwriteDrawing(const fs::path& folder, Number number)
{
    Drawing drawing;
    withNumber(drawing, number);
    return Embedded::saveDrawing(*drawing.database(), folder / "a.qedb", QeDb::kCurrentDwg,
                                 Embedded::Overwriting::drawings)
        .has_value();
}

Number readDrawing(const fs::path& folder)
{
    auto database = Embedded::loadDrawing(folder / "a.qedb");
    if (!database)
        fail(database.error().text());
    const Drawing drawing(std::move(*database));
    const std::optional<Items> first = drawing.xrecord(L"first");
    if (!first || first != drawing.xrecord(L"second"))
        fail("two numbers in one drawing");
    return readNumber(std::get<std::wstring>(first->at(0).value));
}

std::string registryFault()
{
    const auto checked = Embedded::checkRegistryFile();
    return checked ? std::string() : checked.error().text();
}

class RegistryKey {
public:
    explicit RegistryKey(const fs::path& folder)
    {
        Embedded::useRegistryFile(folder / "registry.db");
        if (RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Saved", 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                            nullptr, &key_, nullptr) != ERROR_SUCCESS)
            fail(registryFault());
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() { static_cast<void>(RegCloseKey(key_)); } // a key that was opened can be closed

    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

bool saveValue(const fs::path& folder, Number number)
{
    const std::wstring text = textOf(number);
    return RegSetValueExW(RegistryKey(folder).get(), L"value", 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

Number readValue(const fs::path& folder)
{
    const RegistryKey key(folder);
    std::wstring text(6'000, L'\0');
    auto length = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegQueryValueExW(key.get(), L"value", nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &length) !=
        ERROR_SUCCESS)
        fail("no value: " + registryFault());
    text.resize(text.find(L'\0'));
    return readNumber(text);
}

/// A process that saves increasing numbers and reports each.
class Saver {
public:
    Saver(const Target& target, const fs::path& folder, Number first)
    {
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0 || (process_ = ::fork()) < 0)
            throw std::runtime_error("no process could be started");
        reports_ = ends[0];
        if (process_ != 0) {
            static_cast<void>(::close(ends[1])); // otherwise the reports would never end
            return;
        }
        for (Number number = first; target.save(folder, number); ++number) {
            if (::write(ends[1], &number, sizeof number) != sizeof number)
                break;
        }
        ::_exit(1);
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    ~Saver() { static_cast<void>(::close(reports_)); } // all reports have been read

    /// Kills the process after that time. Returns the last number that it reported; 0 for none.
    Number killAfter(unsigned microseconds)
    {
        static_cast<void>(::usleep(microseconds)); // an interrupted sleep is as good
        if (::kill(process_, SIGKILL) != 0)
            throw std::runtime_error("the process could not be killed");
        int status = 0;
        if (::waitpid(process_, &status, 0) != process_ || !WIFSIGNALED(status))
            throw std::runtime_error("the process ended by itself");
        Number last = 0;
        for (Number number = 0; ::read(reports_, &number, sizeof number) == sizeof number;)
            last = number;
        return last;
    }

private:
    int reports_ = -1;
    pid_t process_ = -1;
};

struct Counts {
    int old = 0;
    int replaced = 0;
    int temporaryFiles = 0;
};

/// Whether the folder holds a temporary file or a journal of a killed process.
bool hasTemporaryFile(const fs::path& folder)
{
    return std::ranges::any_of(fs::recursive_directory_iterator(folder), [](const fs::directory_entry& entry) {
        const std::string name = entry.path().filename();
        return name.starts_with(".saving-") || name.ends_with("-journal");
    });
}

/// Saves number 1 before the first process begins.
Counts killOften(const Target& target, int kills, std::mt19937_64& random)
{
    const TemporaryFolder folder;
    Counts counts;
    Number last = 1;
    if (!target.save(folder.path(), last))
        throw std::runtime_error("the first save failed");
    for (int kill = 0; kill < kills; ++kill) {
        const Number reported =
            Saver(target, folder.path(), last + 1).killAfter(static_cast<unsigned>(random() % 20'000));
        last = reported != 0 ? reported : last;
        counts.temporaryFiles += hasTemporaryFile(folder.path()) ? 1 : 0;
        const Number found = target.read(folder.path());
        if (found != last && found != last + 1)
            fail("number " + std::to_string(found) + " after " + std::to_string(last) + " was reported");
        ++(found == last ? counts.old : counts.replaced);
        last = found;
    }
    if (!target.save(folder.path(), last + 1) || target.read(folder.path()) != last + 1)
        throw std::runtime_error("the last save failed");
    if (hasTemporaryFile(folder.path()))
        throw std::runtime_error("a temporary file was left");
    return counts;
}

constexpr Target kDrawing = {"changed drawings", saveDrawing, readDrawing};
constexpr Target kOverwritten = {"overwritten drawings", overwriteDrawing, readDrawing};
constexpr Target kRegistry = {"registry", saveValue, readValue};

int run(int kills, std::uint64_t seed)
{
    std::printf("kill torture: %d kills each, seed %llu\n", kills, static_cast<unsigned long long>(seed));
    std::mt19937_64 random(seed);
    for (const Target& target : {kDrawing, kOverwritten, kRegistry}) {
        try {
            const Counts counts = killOften(target, kills, random);
            std::printf("%s: the old was found %d times and the new %d times, both complete; %d times a temporary "
                        "file was left and removed\n",
                        target.name, counts.old, counts.replaced, counts.temporaryFiles);
        } catch (const std::exception& failure) {
            std::printf("%s: FAILED: %s\n", target.name, failure.what());
            return 1;
        }
    }
    return 0;
}

} // namespace
} // namespace Tests

int main(int count, char** arguments)
{
    const int kills = count > 1 ? std::atoi(arguments[1]) : 1'000;
    const std::uint64_t seed = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : std::random_device()();
    return Tests::run(kills, seed);
}
