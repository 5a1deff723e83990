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
    file << viewOf(input);
    file.close();
    require(file.good(), "the file can be written");
}

/// Up to a control-Z, without the ends of its lines, up to a NUL.
std::string joinedLines(Input input)
{
    const std::string_view whole = viewOf(input).substr(0, viewOf(input).find('\x1A'));
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

/// Everything up to the end of the last item.
std::wstring items(const std::wstring& text)
{
    constexpr std::wstring_view kEnd = L"</Item>";
    const std::size_t last = text.rfind(kEnd);
    return last == std::wstring::npos ? std::wstring() : text.substr(0, last + kEnd.size());
}

/// How many replacements there are for bytes that are no UTF-8 is left to the system. So is what it makes of the end,
/// where the first of four bytes may take the last three with it although they do not belong to it.
void requireLines(const std::wstring& text, Input input)
{
    constexpr std::size_t kMostTaken = 3;
    const std::string joined = joinedLines(input);
    const std::wstring expected = Embedded::wideFromUtf8(joined);
    if (Embedded::isValidUtf8(joined)) {
        require(text == expected, "the text is that of the file's lines");
        return;
    }
    const std::wstring kept = withoutReplacements(text);
    const std::wstring valid = withoutReplacements(expected);
    require(valid.starts_with(kept) && valid.size() <= kept.size() + kMostTaken,
            "what is UTF-8 in the lines is in the text");
}

} // namespace

void settingsFile(Input input)
{
    const NothingLeft guard;
    const Tests::ScopedVariable variable("VORLEN_USER_DICTIONARY_PATH", settingsFolder().string());
    put(input);
    const std::wstring text = read();
    requireLines(text, input);
    require(Orvel::WriteUserTransformationSettings(text.c_str()), "what was read can be written");
    require(read() == items(text), "what was written is read again");
}

} // namespace Fuzz
