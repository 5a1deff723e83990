#include "transformation/user_settings_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "platform/win32.h"
#include "storage/ignore_result.h"
#include "transformation/config_text.h"
#include "transformation/item_text.h"

namespace Orvel {
namespace {

constexpr const wchar_t* kFolderVariable = L"VORLEN_USER_DICTIONARY_PATH";
constexpr const wchar_t* kSubfolders = L"\\Zentara\\User Geospatial Coordinate Systems";
constexpr const wchar_t* kFileName = L"\\TransformationSetting.xml";

constexpr std::size_t kBlockInBytes = 65536;
constexpr int kUpToItsNul = -1; // the length of a text that ends with its NUL

using FolderText = std::array<wchar_t, 260>; // the length of the system's folder paths

struct TextFilePolicy {
    using Handle = std::FILE*;
    static void dispose(std::FILE* file)
    {
        ignoreResult([=] { return std::fclose(file); });
    }
};
using TextFile = Holder<TextFilePolicy>;

/// Other programs may open the file at the same time.
TextFile openSettings(const wchar_t* mode)
{
    const std::wstring path = GetUserTransformationSettingsPath();
    return TextFile(path.empty() ? nullptr : _wfsopen(path.c_str(), mode, _SH_DENYNO));
}

std::wstring userFolder()
{
    FolderText folder{};
    std::size_t characters = 0;
    if (_wgetenv_s(&characters, folder.data(), folder.size(), kFolderVariable) == 0 && folder[0] != L'\0')
        return folder.data();
    // A value that does not fit counts as none.
    if (!SHGetSpecialFolderPathW(nullptr, folder.data(), CSIDL_LOCAL_APPDATA, FALSE))
        return {};
    return folder.data() + std::wstring(kSubfolders);
}

/// Appends the text without the ends of its lines.
void appendLines(std::string& joined, std::string_view text)
{
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        joined.append(line);
        text.remove_prefix((std::min)(line.size() + 1, text.size()));
    }
}

/// The length of the file, which its text does not exceed. 0 if the stream cannot tell: the text then grows while it is
/// read.
std::size_t expectedLength(std::FILE* file)
{
    ignoreResult([&] { return std::fseek(file, 0, SEEK_END); });
    const long end = std::ftell(file);
    std::rewind(file);
    return end > 0 ? static_cast<std::size_t>(end) : 0;
}

/// The file's lines joined without their ends. No value without a file and after a read error.
std::optional<std::string> readLines()
{
    const TextFile file = openSettings(L"rt");
    if (!file)
        return std::nullopt;
    const auto block = std::make_unique_for_overwrite<char[]>(kBlockInBytes);
    std::string joined;
    joined.reserve(expectedLength(file.get()));
    while (const std::size_t read = std::fread(block.get(), 1, kBlockInBytes, file.get()))
        appendLines(joined, {block.get(), read});
    if (std::ferror(file.get()) != 0)
        return std::nullopt;
    return joined;
}

/// The buffer is zero and has one character more than the conversion asks for: where an incomplete sequence ends the
/// text, not every system writes the terminator.
HostString decodeUtf8(const char* utf8)
{
    const int characters = MultiByteToWideChar(CP_UTF8, 0, utf8, kUpToItsNul, nullptr, 0);
    if (characters <= 0)
        return {};
    HostString text = newConfigText(static_cast<std::size_t>(characters) + 1);
    if (text && MultiByteToWideChar(CP_UTF8, 0, utf8, kUpToItsNul, text.get(), characters) != characters)
        text.reset();
    return text;
}

/// Puts the chunk in UTF-8 and a line end in `line`, whose memory serves all lines. False if the chunk cannot be
/// converted.
[[nodiscard]] bool encodeLine(std::wstring_view chunk, std::string& line)
{
    if (chunk.size() > static_cast<std::size_t>((std::numeric_limits<int>::max)()))
        return false;
    const int characters = static_cast<int>(chunk.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, chunk.data(), characters, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0)
        return false;
    line.resize(static_cast<std::size_t>(bytes) + 1);
    line.back() = '\n';
    return WideCharToMultiByte(CP_UTF8, 0, chunk.data(), characters, line.data(), bytes, nullptr, nullptr) == bytes;
}

/// False when the line could not be written whole.
[[nodiscard]] bool writeLine(std::FILE* file, const std::string& line)
{
    return std::fwrite(line.data(), 1, line.size(), file) == line.size() && std::fflush(file) == 0;
}

} // namespace

std::wstring GetUserTransformationSettingsPath()
{
    try {
        std::wstring path = userFolder();
        return path.empty() ? path : path + kFileName;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

bool ReadUserTransformationSettings(wchar_t*& text)
{
    text = sharedEmptyText();
    const std::optional<std::string> lines = readLines();
    if (!lines)
        return false;
    HostString wide = decodeUtf8(lines->c_str());
    if (!wide)
        return false;
    text = wide.release();
    return true;
}

bool WriteUserTransformationSettings(const wchar_t* text)
{
    const TextFile file = openSettings(L"wt");
    if (!file)
        return false;
    std::wstring_view remaining = text;
    std::string line;
    bool isWritten = true; // after a line that cannot be written no other is; only conversions decide the result
    while (const std::optional<std::wstring_view> chunk = takeItemChunk(remaining)) {
        if (!encodeLine(*chunk, line))
            return false;
        if (isWritten)
            isWritten = writeLine(file.get(), line);
    }
    return true;
}

} // namespace Orvel
