// A registry of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/windows/registry_file.h"
#include "platform/windows.h"
#include "support/platform_test.h"
#include "support/scoped_registry.h"
#include "support/temporary_folder.h"

namespace Tests {

/// An open key, closed with the scope.
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
    static OpenKey created(const wchar_t* path = L"Software\\Test", REGSAM access = KEY_ALL_ACCESS)
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
    static LSTATUS set(const OpenKey& key, const wchar_t* name, const std::wstring& text, DWORD type = REG_SZ)
    {
        return RegSetValueExW(key.get(), name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    /// Windows looks for the end of a text behind the data too; there is none.
    static LSTATUS setBytes(const OpenKey& key, const wchar_t* name, DWORD type, const std::string& bytes)
    {
        const std::string followed = bytes + "more";
        return RegSetValueExW(key.get(), name, 0, type, reinterpret_cast<const BYTE*>(followed.data()),
                              static_cast<DWORD>(bytes.size()));
    }
    /// The data, its length asked first; nothing when there is no such value.
    static std::optional<std::string> bytesOf(const OpenKey& key, const wchar_t* name)
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
    /// The characters, with whatever NUL there is.
    static std::optional<std::wstring> textOf(const OpenKey& key, const wchar_t* name)
    {
        const auto bytes = bytesOf(key, name);
        if (!bytes)
            return std::nullopt;
        std::wstring text(bytes->size() / sizeof(wchar_t), L'?');
        std::memcpy(text.data(), bytes->data(), text.size() * sizeof(wchar_t));
        return text;
    }
    static std::vector<std::wstring> namesOf(const OpenKey& key)
    {
        std::vector<std::wstring> names;
        std::wstring name(16'384, L'?');
        auto length = static_cast<DWORD>(name.size());
        for (DWORD index = 0; RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                                            nullptr) != ERROR_NO_MORE_ITEMS;
             ++index) {
            names.push_back(name.substr(0, length));
            length = static_cast<DWORD>(name.size());
        }
        return names;
    }
    /// Why the registry's file cannot be used; empty when it can.
    static std::string registryFault()
    {
        const auto checked = Embedded::checkRegistryFile();
        return checked ? std::string() : checked.error().text();
    }
    /// What another process would see: nothing is known from before.
    void readAfresh() const
    {
        Embedded::useRegistryFile(file.parent_path() / "other.db");
        EXPECT_EQ(registryFault(), "");
        Embedded::useRegistryFile(file);
    }
    /// As a text with its end is stored.
    static std::wstring ended(const std::wstring& text) { return text + L'\0'; }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "settings" / "registry.db";
    ScopedRegistry registry{folder, file};
};

} // namespace Tests
