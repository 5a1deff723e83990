// The fixture of tests of the registry. Each test has a registry of its own.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/windows/registry_file.h"
#include "platform/win32.h"
#include "support/platform_test.h"
#include "support/scoped_registry.h"
#include "support/temporary_folder.h"

namespace Tests {

/// An open key. The end of the scope closes it.
class OpenKey {
public:
    explicit OpenKey(HKEY key = nullptr) : key_(key) {}
    OpenKey(OpenKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    OpenKey& operator=(OpenKey&&) = delete;
    ~OpenKey()
    {
        if (key_ != nullptr) {
            EXPECT_EQ(RegCloseKey(key_), ERROR_SUCCESS);
        }
    }

    HKEY get() const { return key_; }

private:
    HKEY key_;
};

class RegistryTest : public PlatformTest {
protected:
    static LSTATUS create(const wchar_t* path, HKEY* key, REGSAM access = KEY_WRITE, DWORD* disposition = nullptr)
    {
        return RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, key,
                               disposition);
    }
    static OpenKey createKey(const wchar_t* path = L"Software\\Test", REGSAM access = KEY_ALL_ACCESS)
    {
        HKEY key = nullptr;
        EXPECT_EQ(create(path, &key, access), ERROR_SUCCESS);
        return OpenKey(key);
    }
    static LSTATUS openStatus(const wchar_t* path)
    {
        HKEY key = nullptr;
        const LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key);
        const OpenKey closed(key);
        return status;
    }
    static LSTATUS setText(const OpenKey& key, const wchar_t* name, const std::wstring& text, DWORD type = REG_SZ)
    {
        return RegSetValueExW(key.get(), name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    /// Asks for nothing but the status.
    static LSTATUS queryStatus(const OpenKey& key, const wchar_t* name)
    {
        return RegQueryValueExW(key.get(), name, nullptr, nullptr, nullptr, nullptr);
    }
    /// Enumerates the name without type and data.
    static LSTATUS enumerateName(const OpenKey& key, DWORD index, wchar_t* name, DWORD* length)
    {
        return RegEnumValueW(key.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    }
    /// Windows also looks behind the data for the end of a text, and must not find one there.
    static LSTATUS setBytes(const OpenKey& key, const wchar_t* name, DWORD type, const std::string& bytes)
    {
        const std::string followed = bytes + "more";
        return RegSetValueExW(key.get(), name, 0, type, reinterpret_cast<const BYTE*>(followed.data()),
                              static_cast<DWORD>(bytes.size()));
    }
    /// Asks for the length first, as clients do. Returns nothing if there is no such value.
    static std::optional<std::string> readBytes(const OpenKey& key, const wchar_t* name)
    {
        DWORD length = 0;
        if (RegQueryValueExW(key.get(), name, nullptr, nullptr, nullptr, &length) != ERROR_SUCCESS)
            return std::nullopt;
        std::string bytes(length, '?');
        EXPECT_EQ(RegQueryValueExW(key.get(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()), &length),
                  ERROR_SUCCESS);
        EXPECT_EQ(bytes.size(), length);
        return bytes;
    }
    /// The data as characters, including a NUL.
    static std::optional<std::wstring> readText(const OpenKey& key, const wchar_t* name)
    {
        const auto bytes = readBytes(key, name);
        if (!bytes)
            return std::nullopt;
        std::wstring text(bytes->size() / sizeof(wchar_t), L'?');
        std::memcpy(text.data(), bytes->data(), text.size() * sizeof(wchar_t));
        return text;
    }
    static std::vector<std::wstring> valueNames(const OpenKey& key)
    {
        std::vector<std::wstring> names;
        std::wstring name(16'384, L'?');
        auto length = static_cast<DWORD>(name.size());
        for (DWORD index = 0; enumerateName(key, index, name.data(), &length) != ERROR_NO_MORE_ITEMS; ++index) {
            names.push_back(name.substr(0, length));
            length = static_cast<DWORD>(name.size());
        }
        return names;
    }
    /// Why the file of the registry cannot be used. Empty if it can.
    static std::string registryFault()
    {
        const auto checked = Embedded::checkRegistryFile();
        return checked ? std::string() : checked.error().text();
    }
    /// Opens the file again, so that nothing is left of earlier reads.
    void reopenRegistry() const
    {
        Embedded::useRegistryFile(file.parent_path() / "other.db");
        EXPECT_EQ(registryFault(), "");
        Embedded::useRegistryFile(file);
    }
    /// A text as the registry stores it.
    static std::wstring withNul(const std::wstring& text) { return text + L'\0'; }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "settings" / "registry.db";
    ScopedRegistry registry{folder, file};
};

} // namespace Tests
