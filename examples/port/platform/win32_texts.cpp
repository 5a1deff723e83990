// Stand-ins for the Win32 calls with texts, on other systems.
#include "win32.h"

#include "win32_needs.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <string>

namespace {

// The text has the form of an identifier: hyphens and braces where they belong, hexadecimal digits elsewhere.
bool isIdentifier(const std::wstring& text)
{
    const std::wstring form = L"{00000000-0000-0000-0000-000000000000}";
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](wchar_t character, wchar_t expected) {
        return expected == L'0' ? character < 128 && std::iswxdigit(static_cast<std::wint_t>(character)) != 0
                                : character == expected;
    });
}

template <class T>
T readHex(const std::wstring& text, std::size_t at, std::size_t digits)
{
    return static_cast<T>(std::wcstoul(text.substr(at, digits).c_str(), nullptr, 16));
}

// Copies a converted text, or gives its length where there is no room asked for.
template <class Text>
int copyOut(const Text& text, typename Text::value_type* output, int room)
{
    const int length = static_cast<int>(text.size());
    if (room == 0)
        return length;
    if (length > room)
        return 0;
    text.copy(output, text.size());
    return length;
}

int compareIgnoringCase(const wchar_t* left, const wchar_t* right, std::size_t characters)
{
    for (; characters > 0; --characters, ++left, ++right) {
        const std::wint_t one = std::towlower(static_cast<std::wint_t>(*left));
        const std::wint_t other = std::towlower(static_cast<std::wint_t>(*right));
        if (one != other)
            return one < other ? -1 : 1;
        if (*left == L'\0')
            break;
    }
    return 0;
}

} // namespace

BOOL DisableThreadLibraryCalls(HMODULE)
{
    return TRUE;
}

int CLSIDFromString(const wchar_t* text, CLSID* identifier)
{
    const std::wstring digits = text ? text : L"";
    if (!isIdentifier(digits))
        return -1;
    identifier->Data1 = readHex<std::uint32_t>(digits, 1, 8);
    identifier->Data2 = readHex<std::uint16_t>(digits, 10, 4);
    identifier->Data3 = readHex<std::uint16_t>(digits, 15, 4);
    for (std::size_t byte = 0; byte < 8; ++byte)
        identifier->Data4[byte] = readHex<unsigned char>(digits, (byte < 2 ? 20 : 21) + 2 * byte, 2);
    return S_OK;
}

int StringFromCLSID(const CLSID& identifier, wchar_t** text)
{
    constexpr std::size_t characters = 39;
    *text = static_cast<wchar_t*>(std::calloc(characters, sizeof(wchar_t)));
    if (!*text)
        return -1;
    const unsigned char* const end = identifier.Data4;
    std::swprintf(*text, characters, L"{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", identifier.Data1,
                  unsigned{identifier.Data2}, unsigned{identifier.Data3}, unsigned{end[0]}, unsigned{end[1]},
                  unsigned{end[2]}, unsigned{end[3]}, unsigned{end[4]}, unsigned{end[5]}, unsigned{end[6]},
                  unsigned{end[7]});
    return S_OK;
}

void CoTaskMemFree(void* memory)
{
    std::free(memory);
}

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    return compareIgnoringCase(left, right, static_cast<std::size_t>(-1));
}

int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t characters)
{
    return compareIgnoringCase(left, right, characters);
}

int MultiByteToWideChar(unsigned int codePage, DWORD, const char* text, int length, wchar_t* output, int characters)
{
    if (codePage != CP_UTF8 || !text || length == 0)
        return 0;
    const std::size_t bytes = length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(length);
    return copyOut(Win32::toWide(std::string_view(text, bytes)), output, characters);
}

int WideCharToMultiByte(unsigned int codePage, DWORD, const wchar_t* text, int length, char* output, int bytes,
                        const char*, BOOL*)
{
    if (codePage != CP_UTF8 || !text || length == 0)
        return 0;
    const std::size_t characters = length < 0 ? std::wcslen(text) + 1 : static_cast<std::size_t>(length);
    return copyOut(Win32::toUtf8(std::wstring_view(text, characters)), output, bytes);
}
