#include "saves/posix/save_scenario.h"

#include <vector>

#include "embedded/foundation/text.h"
#include "embedded/host/drawing_file.h"
#include "embedded/windows/registry_file.h"
#include "platform/windows.h"
#include "support/drawing.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kKey = L"Software\\Saves";

fs::path drawingIn(const fs::path& folder)
{
    return folder / "a.qedb";
}

bool saveDrawingWith(const fs::path& folder, const std::wstring& text)
{
    Drawing drawing;
    drawing.withGeoData(text).withLegacyCode(L"EPSG:25832");
    return Embedded::saveDrawing(*drawing.database(), drawingIn(folder), QeDb::kCurrentDwg).status == Qeapp::eOk;
}

void nothing(const fs::path& /*folder*/)
{
}

void olderDrawing(const fs::path& folder)
{
    static_cast<void>(saveDrawingWith(folder, std::wstring(300, L'o'))); // what is there is compared
}

void linkToOlderDrawing(const fs::path& folder)
{
    olderDrawing(folder);
    fs::rename(drawingIn(folder), folder / "real.qedb");
    fs::create_symlink("real.qedb", drawingIn(folder));
}

bool newDrawing(const fs::path& folder)
{
    return saveDrawingWith(folder, std::wstring(20'000, L'n'));
}

std::string drawingContent(const fs::path& folder)
{
    std::unique_ptr<QeDbDatabase> database;
    const Embedded::FileResult result = Embedded::loadDrawing(drawingIn(folder), database);
    if (result.status == Qeapp::eFileNotFound && !fs::exists(drawingIn(folder)))
        return {};
    return database ? Embedded::drawingTextFrom(Embedded::imageOf(*database)) : "refused: " + result.message;
}

std::string linkedContent(const fs::path& folder)
{
    return fs::is_symlink(drawingIn(folder)) ? drawingContent(folder) : "refused: not a link";
}

fs::path registryIn(const fs::path& folder)
{
    return folder / "settings" / "registry.jsonl";
}

/// The registry of the folder, read afresh, for the length of a scope.
class RegistryOf {
public:
    explicit RegistryOf(const fs::path& folder) { Embedded::useRegistryFile(registryIn(folder)); }
    RegistryOf(const RegistryOf&) = delete;
    RegistryOf& operator=(const RegistryOf&) = delete;
    ~RegistryOf()
    {
        Embedded::useRegistryFile(registryIn("/nowhere"));
        static_cast<void>(Embedded::checkRegistryFile()); // so that the next one is read afresh
    }
};

class Key {
public:
    explicit Key(REGSAM access)
    {
        if (access == KEY_READ)
            status_ = RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, access, &key_);
        else
            status_ = RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                                      &key_, nullptr);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key()
    {
        if (status_ == ERROR_SUCCESS)
            static_cast<void>(RegCloseKey(key_)); // a key that was opened can be closed
    }

    bool isOpen() const { return status_ == ERROR_SUCCESS; }
    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
    LSTATUS status_ = ERROR_SUCCESS;
};

/// Empty behind the last.
std::string valueAt(const Key& key, DWORD index)
{
    std::vector<wchar_t> name(64);
    auto characters = static_cast<DWORD>(name.size());
    std::vector<wchar_t> data(8'000);
    auto bytes = static_cast<DWORD>(data.size() * sizeof(wchar_t));
    if (RegEnumValueW(key.get(), index, name.data(), &characters, nullptr, nullptr,
                      reinterpret_cast<BYTE*>(data.data()), &bytes) != ERROR_SUCCESS)
        return {};
    return Embedded::utf8FromWide(name.data()) + '=' + Embedded::utf8FromWide(data.data()) + '\n';
}

bool set(const Key& key, const wchar_t* name, const std::wstring& text)
{
    return key.isOpen() && RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

bool setFirst(const fs::path& folder)
{
    return setRegistryValue(folder, L"first", L"value");
}

void oneValue(const fs::path& folder)
{
    static_cast<void>(setFirst(folder)); // what is there is compared
}

bool setFurther(const fs::path& folder)
{
    return setRegistryValue(folder, L"further", std::wstring(5'000, L'f'));
}

/// Almost as long as it gets before it is rewritten.
void longRegistry(const fs::path& folder)
{
    const RegistryOf registry(folder);
    const Key key(KEY_WRITE);
    for (wchar_t unit = L'a'; unit < L'm'; ++unit)
        static_cast<void>(set(key, L"again", std::wstring(5'000, unit))); // what is there is compared
}

bool setOnceMore(const fs::path& folder)
{
    return setRegistryValue(folder, L"again", std::wstring(7'000, L'z'));
}

} // namespace

bool setRegistryValue(const fs::path& folder, const wchar_t* name, const std::wstring& text)
{
    const RegistryOf registry(folder);
    return set(Key(KEY_WRITE), name, text);
}

std::string registryContent(const fs::path& folder)
{
    const RegistryOf registry(folder);
    if (const std::string refusal = Embedded::checkRegistryFile(); !refusal.empty())
        return "refused: " + refusal;
    const Key key(KEY_READ);
    std::string content;
    for (DWORD index = 0; key.isOpen(); ++index) {
        const std::string value = valueAt(key, index);
        if (value.empty())
            break;
        content += value;
    }
    return content;
}

constinit const SaveScenario kNewDrawing = {"NewDrawing", nothing, newDrawing, drawingContent};
constinit const SaveScenario kReplacedDrawing = {"ReplacedDrawing", olderDrawing, newDrawing, drawingContent};
constinit const SaveScenario kLinkedDrawing = {"LinkedDrawing", linkToOlderDrawing, newDrawing, linkedContent};
constinit const SaveScenario kFirstValue = {"FirstValue", nothing, setFirst, registryContent};
constinit const SaveScenario kFurtherValue = {"FurtherValue", oneValue, setFurther, registryContent};
constinit const SaveScenario kCompaction = {"Compaction", longRegistry, setOnceMore, registryContent};

} // namespace Tests
