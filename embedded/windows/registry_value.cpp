#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "embedded/foundation/text.h"
#include "embedded/windows/current_registry.h"
#include "embedded/windows/registry_call.h"
#include "embedded/windows/registry_handle.h"
#include "embedded/windows/registry_name.h"
#include "platform/windows.h"

namespace {

using namespace Embedded;

/// Throws RegistryFailure unless the handle is open for it.
void require(HKEY key, REGSAM access)
{
    if (!isOpenHandle(key))
        throw RegistryFailure{ERROR_INVALID_HANDLE, {}};
    if ((key->access & access) != access)
        throw RegistryFailure{ERROR_ACCESS_DENIED, {}};
}

/// Throws RegistryFailure when the key has gone since the handle was opened, with the file it was in.
const RegistryKey& keyOf(HKEY key, const RegistryTree& tree)
{
    const RegistryKey* const found = tree.find(key->path);
    if (found == nullptr)
        throw RegistryFailure{ERROR_KEY_DELETED, {}};
    return *found;
}

/// Texts are kept as UTF-16, so that the file does not depend on how wide characters are here. Bytes at the end that
/// make no whole character are left out.
std::string storedData(DWORD type, const BYTE* data, DWORD lengthInBytes)
{
    const auto* const bytes = reinterpret_cast<const char*>(data);
    if (!isTextType(type))
        return lengthInBytes == 0 ? std::string() : std::string(bytes, lengthInBytes);
    std::wstring text(lengthInBytes / sizeof(wchar_t), L'\0');
    if (!text.empty())
        std::memcpy(text.data(), bytes, text.size() * sizeof(wchar_t));
    return utf16leFromWide(text);
}

std::string handedOutData(const RegistryValue& value)
{
    if (!isTextType(value.type))
        return value.data;
    const std::wstring text = wideFromUtf16le(value.data);
    std::string bytes(text.size() * sizeof(wchar_t), '\0');
    std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
}

/// The value's type and data to whoever asks for them; the length alone where `data` is null.
LSTATUS handOut(const RegistryValue& value, DWORD* type, BYTE* data, DWORD* lengthInBytes)
{
    if (type != nullptr)
        *type = value.type;
    if (lengthInBytes == nullptr)
        return ERROR_SUCCESS;
    const std::string bytes = handedOutData(value);
    if (bytes.size() > std::numeric_limits<DWORD>::max())
        return ERROR_OUTOFMEMORY;
    const DWORD room = *lengthInBytes;
    *lengthInBytes = static_cast<DWORD>(bytes.size());
    if (data == nullptr)
        return ERROR_SUCCESS;
    if (room < bytes.size())
        return ERROR_MORE_DATA;
    std::ranges::copy(bytes, data);
    return ERROR_SUCCESS;
}

} // namespace

LSTATUS RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD lengthInBytes)
{
    return answered("RegSetValueExW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        require(key, KEY_SET_VALUE);
        const std::wstring valueName = normalName(name);
        if (data == nullptr && lengthInBytes != 0)
            return ERROR_NOACCESS;
        if (reserved != 0 || utf16Length(valueName) > kLongestValueName)
            return ERROR_INVALID_PARAMETER;
        RegistryJournal::Change change(currentRegistry());
        const std::wstring& path = keyOf(key, change.tree()).path();
        change.record({RegistryChange::Kind::setValue, path, valueName, type, storedData(type, data, lengthInBytes)});
        return ERROR_SUCCESS;
    });
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature is the system's
LSTATUS RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* lengthInBytes)
{
    return answered("RegQueryValueExW", ERROR_FILE_NOT_FOUND, [&]() -> LSTATUS {
        require(key, KEY_QUERY_VALUE);
        if (reserved != nullptr || (data != nullptr && lengthInBytes == nullptr))
            return ERROR_INVALID_PARAMETER;
        const RegistryValue* const value = keyOf(key, currentRegistry().current()).find(normalName(name));
        return value != nullptr ? handOut(*value, type, data, lengthInBytes) : ERROR_FILE_NOT_FOUND;
    });
}

// A plan that fails it from then on would otherwise keep whoever enumerates from ever reaching the end.
// NOLINTNEXTLINE(readability-non-const-parameter): the signature is the system's
LSTATUS RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* lengthInBytes)
{
    return answered("RegEnumValueW", ERROR_NO_MORE_ITEMS, [&]() -> LSTATUS {
        require(key, KEY_QUERY_VALUE);
        if (name == nullptr || nameLength == nullptr || reserved != nullptr ||
            (data != nullptr && lengthInBytes == nullptr))
            return ERROR_INVALID_PARAMETER;
        const RegistryValue* const value = keyOf(key, currentRegistry().current()).at(index);
        if (value == nullptr)
            return ERROR_NO_MORE_ITEMS;
        if (*nameLength <= value->name.size())
            return ERROR_MORE_DATA;
        if (const LSTATUS status = handOut(*value, type, data, lengthInBytes); status != ERROR_SUCCESS)
            return status;
        std::copy_n(value->name.c_str(), value->name.size() + 1, name);
        *nameLength = static_cast<DWORD>(value->name.size());
        return ERROR_SUCCESS;
    });
}

LSTATUS RegDeleteValueW(HKEY key, const wchar_t* name)
{
    return answered("RegDeleteValueW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        require(key, KEY_SET_VALUE);
        RegistryJournal::Change change(currentRegistry());
        const RegistryKey& owner = keyOf(key, change.tree());
        const RegistryValue* const value = owner.find(normalName(name));
        if (value == nullptr)
            return ERROR_FILE_NOT_FOUND;
        const RegistryChange deletion{RegistryChange::Kind::deleteValue, owner.path(), value->name, REG_NONE, {}};
        change.record(deletion);
        return ERROR_SUCCESS;
    });
}
