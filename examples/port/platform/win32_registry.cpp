// A stand-in for the registry, on other systems: keys and their values in memory.
#include "win32.h"

#include "win32_needs.h"

#include <algorithm>
#include <cwctype>
#include <map>
#include <string>
#include <vector>

struct RegistryKeyHandle {
    std::wstring path;
};

namespace {

constexpr int noSuchThing = 2;
constexpr int moreRoomNeeded = 234;
constexpr int outOfOrder = 31;

struct Value {
    std::wstring name;
    DWORD type = 0;
    std::vector<BYTE> data;
};

// The keys by their paths, which are in lower case and end with a backslash, with their values in the order of their
// making.
using Keys = std::map<std::wstring, std::vector<Value>>;

Keys& keys()
{
    static Keys all;
    return all;
}

std::wstring lowerCase(const wchar_t* text)
{
    std::wstring lower = text ? text : L"";
    for (wchar_t& character : lower)
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    return lower;
}

std::wstring pathBelow(HKEY key, const wchar_t* subKey)
{
    const std::wstring name = lowerCase(subKey);
    return key->path + name + (name.empty() || name.back() == L'\\' ? L"" : L"\\");
}

// A value of an open key, or the end.
std::vector<Value>::iterator findValue(HKEY key, const wchar_t* name)
{
    std::vector<Value>& values = keys()[key->path];
    const std::wstring wanted = lowerCase(name);
    return std::find_if(values.begin(), values.end(),
                        [&wanted](const Value& value) { return lowerCase(value.name.c_str()) == wanted; });
}

RegistryKeyHandle currentUser{L""};

} // namespace

const HKEY HKEY_CURRENT_USER = &currentUser;

int RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY* result, DWORD*)
{
    *result = nullptr;
    if (Win32::failsNow())
        return outOfOrder;
    const std::wstring path = pathBelow(key, subKey);
    for (std::size_t end = path.find(L'\\', key->path.size()); end != std::wstring::npos;
         end = path.find(L'\\', end + 1))
        keys()[path.substr(0, end + 1)];
    *result = new RegistryKeyHandle{path};
    Win32::countRegistryKeys(1);
    return ERROR_SUCCESS;
}

int RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD, DWORD, HKEY* result)
{
    *result = nullptr;
    if (Win32::failsNow())
        return outOfOrder;
    const std::wstring path = pathBelow(key, subKey);
    if (!path.empty() && keys().count(path) == 0)
        return noSuchThing;
    *result = new RegistryKeyHandle{path};
    Win32::countRegistryKeys(1);
    return ERROR_SUCCESS;
}

int RegCloseKey(HKEY key)
{
    if (key == HKEY_CURRENT_USER)
        return ERROR_SUCCESS;
    delete key;
    Win32::countRegistryKeys(-1);
    return ERROR_SUCCESS;
}

int RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD lengthInBytes)
{
    if (Win32::failsNow())
        return outOfOrder;
    auto value = findValue(key, name);
    if (value == keys()[key->path].end())
        value = keys()[key->path].insert(value, Value{name ? name : L"", 0, {}});
    value->type = type;
    value->data.assign(data, data + lengthInBytes);
    return ERROR_SUCCESS;
}

int RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* lengthInBytes)
{
    if (Win32::failsNow())
        return outOfOrder;
    const auto value = findValue(key, name);
    if (value == keys()[key->path].end())
        return noSuchThing;
    if (type)
        *type = value->type;
    const DWORD room = lengthInBytes ? *lengthInBytes : 0;
    if (lengthInBytes)
        *lengthInBytes = static_cast<DWORD>(value->data.size());
    if (!data)
        return ERROR_SUCCESS;
    if (room < value->data.size())
        return moreRoomNeeded;
    std::copy(value->data.begin(), value->data.end(), data);
    return ERROR_SUCCESS;
}

int RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD*, DWORD*, BYTE*, DWORD*)
{
    if (Win32::failsNow())
        return outOfOrder;
    const std::vector<Value>& values = keys()[key->path];
    if (index >= values.size())
        return ERROR_NO_MORE_ITEMS;
    const std::wstring& text = values[index].name;
    if (text.size() >= *nameLength)
        return moreRoomNeeded;
    name[text.copy(name, text.size())] = L'\0';
    *nameLength = static_cast<DWORD>(text.size());
    return ERROR_SUCCESS;
}

int RegDeleteValueW(HKEY key, const wchar_t* name)
{
    if (Win32::failsNow())
        return outOfOrder;
    const auto value = findValue(key, name);
    if (value == keys()[key->path].end())
        return noSuchThing;
    keys()[key->path].erase(value);
    return ERROR_SUCCESS;
}
