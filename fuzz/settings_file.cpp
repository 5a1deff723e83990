#include "transformation/user_settings_file.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "fuzz/input_text.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"
#include "storage/host_holders.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Fuzz {
namespace {

constexpr wchar_t kReplacement = L'\uFFFD';

const std::filesystem::path& settingsFolder()
{
    static const Tests::TemporaryFolder folder;
    return folder.path();
}

void put(Input input)
{
    std::ofstream file(settingsFolder() / "TransformationSetting.xml", std::ios::binary);
    file << asText(input);
    file.close();
    require(file.good(), "the file can be written");
}

/// The text up to a control-Z or a NUL, without line ends.
std::string joinedLines(Input input)
{
    const std::string_view whole = asText(input).substr(0, asText(input).find('\x1A'));
    std::string joined;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if (whole[at] != '\n' && whole.substr(at, 2) != "\r\n")
            joined += whole[at];
    }
    return joined.substr(0, joined.find('\0'));
}

std::wstring read()
{
    wchar_t* text = nullptr;
    require(Orvel::ReadUserTransformationSettings(text), "a file that is there is read");
    const Orvel::HostString holder(text);
    return text;
}

std::wstring withoutReplacements(std::wstring text)
{
    std::erase(text, kReplacement);
    return text;
}

/// The text up to the end of the last item.
std::wstring items(const std::wstring& text)
{
    constexpr std::wstring_view kEnd = L"</Item>";
    const std::size_t last = text.rfind(kEnd);
    return last == std::wstring::npos ? std::wstring() : text.substr(0, last + kEnd.size());
}

/// Systems differ in how many replacement characters they write for bytes that are not UTF-8, and in what they do with
/// an incomplete character at the end.
void requireLines(const std::wstring& text, Input input)
{
    constexpr std::size_t kMaximumLost = 3;
    const std::string joined = joinedLines(input);
    const std::wstring expected = Embedded::wideFromUtf8(joined);
    if (Embedded::isValidUtf8(joined)) {
        require(text == expected, "the text is that of the file's lines");
        return;
    }
    const std::wstring kept = withoutReplacements(text);
    const std::wstring valid = withoutReplacements(expected);
    require(valid.starts_with(kept) && valid.size() <= kept.size() + kMaximumLost,
            "what is UTF-8 in the lines is in the text");
}

} // namespace

void settingsFile(Input input)
{
    const LeakCheck guard;
    const Tests::ScopedVariable variable("VORLEN_USER_DICTIONARY_PATH", settingsFolder().string());
    put(input);
    const std::wstring text = read();
    requireLines(text, input);
    require(Orvel::WriteUserTransformationSettings(text.c_str()), "what was read can be written");
    require(read() == items(text), "what was written is read again");
}

} // namespace Fuzz
