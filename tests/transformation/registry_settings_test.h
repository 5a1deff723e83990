// The fixture for the user's configuration in the registry, below a product root of the test.
#pragma once

#include <cwchar>
#include <optional>
#include <string>
#include <vector>

#include "transformation/registry_settings.h"
#include "transformation/registry_strings.h"
#include "transformation/transformation_test.h"

namespace Tests {

inline const std::wstring kProduct = L"Software\\A product\\7";
inline const std::wstring kStore = kProduct + L"\\Applications\\OrvelCoordinateSystem\\Transformation";

class RegistrySettingsTest : public TransformationTest {
protected:
    using Names = std::vector<std::wstring>;

    RegistrySettingsTest() { Embedded::setUserRegistryProductRootKey(kProduct); }
    ~RegistrySettingsTest() override { Embedded::setUserRegistryProductRootKey(formerRoot); }

    static bool write(const std::wstring& text) { return Orvel::WriteRegistryTransformationSettings(text.c_str()); }
    static ReadText read() { return readWith(Orvel::ReadRegistryTransformationSettings); }
    static std::optional<Names> names()
    {
        Names names;
        return Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, kStore, names) ? std::optional(names) : std::nullopt;
    }
    static std::wstring value(const std::wstring& name)
    {
        std::wstring text = L"missing";
        static_cast<void>(
            Orvel::RegistryQueryString(HKEY_CURRENT_USER, kStore, name, text)); // the text shows a failure
        return text;
    }
    /// Joins the values in the order of the names.
    static std::wstring joinValues(const Names& inOrder)
    {
        std::wstring joined;
        for (const std::wstring& name : inOrder)
            joined += value(name);
        return joined;
    }
    static void storeText(const std::wstring& name, const std::wstring& text)
    {
        ASSERT_TRUE(Orvel::RegistrySetString(HKEY_CURRENT_USER, kStore, name, text));
    }
    static void storeDefault(const wchar_t* text)
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kStore.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        const auto lengthInBytes = static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t));
        EXPECT_EQ(RegSetValueExW(key, L"", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), lengthInBytes),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    }
    static std::wstring item(int number) { return itemElement(L"A", L"B", std::to_wstring(number)); }

private:
    std::wstring formerRoot = qedbHostApplicationServices()->getUserRegistryProductRootKey();
};

} // namespace Tests
