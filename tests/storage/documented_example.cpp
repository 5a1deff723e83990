#include "storage/documented_example.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "embedded/base/text.h"
#include "storage/byte_patterns.h"
#include "support/file_text.h"

namespace Tests {
namespace {

constexpr std::size_t kBytesPerLine = 32;

std::string withoutRemark(const std::string& line)
{
    return line.substr(0, line.find(';'));
}

void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

Item parseItem(int code, const std::string& value)
{
    if (value.starts_with('"'))
        return {code, Embedded::wideFromUtf8(value.substr(1, value.rfind('"') - 1))};
    if (code == 1040)
        return {code, std::stod(value)};
    if (code != 310)
        return {code, std::stoi(value)};
    return {code, parseHex(value)};
}

struct ValuePrinter {
    std::string operator()(const std::wstring& text) const { return '"' + Embedded::utf8FromWide(text) + '"'; }
    std::string operator()(int number) const { return std::to_string(number); }
    std::string operator()(double number) const { return std::to_string(number); }
    std::string operator()(const Bytes& bytes) const
    {
        std::string text;
        for (std::size_t at = 0; at < bytes.size(); at += kBytesPerLine) {
            const std::size_t count = std::min(kBytesPerLine, bytes.size() - at);
            text += (at == 0 ? "" : "\n      ") + toHex(Bytes(bytes.data() + at, bytes.data() + at + count));
        }
        return text;
    }
};

} // namespace

DocumentedExample::DocumentedExample(const std::string& page, const std::string& label) : page_(page), label_(label)
{
    const std::string contents = readFile(ORVEL_SOURCE_DIR "/docs/formats/" + page);
    const std::string opening = "\n```" + label + '\n';
    const std::size_t begin = contents.find(opening);
    const std::size_t end = begin == std::string::npos ? begin : contents.find("\n```", begin + opening.size());
    if (end == std::string::npos)
        throw std::runtime_error("docs/formats/" + page + " has no block labelled " + label);
    text_ = contents.substr(begin + opening.size(), end - begin - opening.size());
}

Bytes DocumentedExample::bytes() const
{
    Bytes bytes;
    std::istringstream lines(text_);
    for (std::string line; std::getline(lines, line);)
        append(bytes, parseHex(withoutRemark(line)));
    return bytes;
}

Items DocumentedExample::chain() const
{
    Items items;
    std::istringstream lines(text_);
    for (std::string line; std::getline(lines, line);) {
        line = withoutRemark(line);
        if (line.starts_with(' ')) {
            append(std::get<Bytes>(items.back().value), parseHex(line));
            continue;
        }
        const std::size_t value = line.find_first_not_of(' ', line.find(' '));
        items.push_back(parseItem(std::stoi(line), line.substr(value)));
    }
    return items;
}

std::string DocumentedExample::correction(const std::string& block) const
{
    return "The block \"" + label_ + "\" of docs/formats/" + page_ +
           " is not what the module writes. If the format was changed on purpose, put this into the block and write "
           "the remarks anew:\n" +
           block + '\n';
}

std::string printed(const Bytes& bytes)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += kBytesPerLine) {
        const std::size_t count = std::min(kBytesPerLine, bytes.size() - at);
        text += (at == 0 ? "" : "\n") + toHex(Bytes(bytes.data() + at, bytes.data() + at + count));
    }
    return text;
}

std::string printed(const Items& chain)
{
    std::string text;
    for (const Item& item : chain) {
        const std::string code = std::to_string(item.code);
        text += (text.empty() ? "" : "\n") + code + std::string(6 - code.size(), ' ') +
                std::visit(ValuePrinter{}, item.value);
    }
    return text;
}

} // namespace Tests
