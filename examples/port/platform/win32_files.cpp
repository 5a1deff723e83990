// Stand-ins for the Win32 calls with folders and files, on other systems.
#include "win32.h"

#include "win32_needs.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t pathRoom = 260;

std::FILE* asFile(void* cookie)
{
    return static_cast<std::FILE*>(cookie);
}

// Lines end with CR LF in the file and with LF in the program.
ssize_t readLines(void* cookie, char* buffer, std::size_t size)
{
    std::size_t count = 0;
    for (int character = 0; count < size && (character = std::getc(asFile(cookie))) != EOF;) {
        if (character == '\r') {
            const int following = std::getc(asFile(cookie));
            if (following == '\n')
                character = following;
            else if (following != EOF)
                std::ungetc(following, asFile(cookie));
        }
        buffer[count++] = static_cast<char>(character);
    }
    return static_cast<ssize_t>(count);
}

ssize_t writeLines(void* cookie, const char* buffer, std::size_t size)
{
    for (const char character : std::string_view(buffer, size)) {
        if (character == '\n')
            std::putc('\r', asFile(cookie));
        std::putc(character, asFile(cookie));
    }
    return std::ferror(asFile(cookie)) ? 0 : static_cast<ssize_t>(size);
}

int closeLines(void* cookie)
{
    return std::fclose(asFile(cookie));
}

} // namespace

int _wgetenv_s(std::size_t* required, wchar_t* buffer, std::size_t characters, const wchar_t* name)
{
    const char* const value = std::getenv(Win32::toUtf8(name).c_str());
    const std::wstring text = value ? Win32::toWide(value) : std::wstring();
    *required = value ? text.size() + 1 : 0;
    if (characters == 0)
        return *required == 0 ? 0 : 34;
    buffer[0] = L'\0';
    if (*required > characters)
        return 34;
    buffer[text.copy(buffer, characters - 1)] = L'\0';
    return 0;
}

BOOL SHGetSpecialFolderPathW(void*, wchar_t* path, int folder, BOOL)
{
    const std::wstring text = Win32::userFolder();
    if (folder != CSIDL_LOCAL_APPDATA || text.empty() || text.size() >= pathRoom || Win32::failsNow())
        return FALSE;
    path[text.copy(path, text.size())] = L'\0';
    return TRUE;
}

std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int)
{
    if (Win32::failsNow())
        return nullptr;
    std::string name = Win32::toUtf8(path);
    std::replace(name.begin(), name.end(), '\\', '/');
    const bool isRead = std::wcscmp(mode, L"rt") == 0;
    std::FILE* const file = std::fopen(name.c_str(), isRead ? "rb" : "wb");
    if (!file)
        return nullptr;
    const cookie_io_functions_t lines{readLines, writeLines, nullptr, closeLines};
    std::FILE* const stream = fopencookie(file, isRead ? "r" : "w", lines);
    if (!stream)
        std::fclose(file);
    return stream;
}
