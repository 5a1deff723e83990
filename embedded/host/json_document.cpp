#include "embedded/host/json_document.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "embedded/host/drawing_format.h"
#include "embedded/host/drawing_refusal.h"

namespace Embedded {
namespace {

using nlohmann::json;

std::string positionIn(std::string_view text, std::size_t byte)
{
    const auto before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    return "line " + std::to_string(line) + ", byte " + std::to_string(byte);
}

constexpr int kNumberOverflow = 406; // the parser's number for a literal beyond the largest double

/// The parser's own words, without its position and without the token, which may be long and invalid.
std::string reasonIn(const json::exception& error)
{
    if (error.id == kNumberOverflow)
        return "the number is too large for a real";
    std::string_view message = error.what();
    if (const auto position = message.find(": "); position != std::string_view::npos)
        message.remove_prefix(position + 2);
    return std::string(message.substr(0, message.find("; last read")));
}

/// Builds the tree from the parser's events, so that what is too deep is refused before it is built. The parser itself
/// does not recurse.
class TreeBuilder {
public:
    explicit TreeBuilder(std::string_view text) : text_(text) {}
    json take() { return std::move(root_); }

    bool null() { return add(nullptr); }
    bool boolean(bool value) { return add(value); }
    // Only "-0" arrives here as a zero, and an integer cannot hold its sign.
    bool number_integer(std::int64_t value) { return value == 0 ? add(-0.0) : add(value); }
    bool number_unsigned(std::uint64_t value) { return add(value); }
    bool number_float(double value, const std::string& digits);
    bool string(std::string& value) { return add(std::move(value)); }
    bool binary(json::binary_t&) { return false; }
    bool start_object(std::size_t) { return open(json::object()); }
    bool start_array(std::size_t) { return open(json::array()); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(std::string& name);
    bool parse_error(std::size_t position, const std::string& token, const json::exception& error);

private:
    struct Level {
        json* container;
        std::string key;
    };

    bool add(json value);
    json& place(json value);
    bool open(json container);
    bool close();
    std::string path() const;
    [[noreturn]] void refuse(const std::string& message) const;

    std::string_view text_;
    json root_;
    std::vector<Level> levels_;
};

bool TreeBuilder::number_float(double value, const std::string& digits)
{
    const std::string_view mantissa = std::string_view(digits).substr(0, digits.find_first_of("eE"));
    if (value == 0 && mantissa.find_first_of("123456789") != std::string_view::npos)
        refuse("the number " + excerpt(digits) + " is too small for a real");
    return add(value);
}

bool TreeBuilder::key(std::string& name)
{
    Level& level = levels_.back();
    if (level.container->contains(name)) {
        level.key.clear();
        refuse("the field \"" + excerpt(name) + "\" appears twice");
    }
    level.key = std::move(name);
    return true;
}

bool TreeBuilder::parse_error(std::size_t position, const std::string&, const json::exception& error)
{
    throw DrawingRefusal{Qeapp::eFileDamaged, positionIn(text_, position) + ": " + reasonIn(error)};
}

bool TreeBuilder::add(json value)
{
    place(std::move(value));
    return true;
}

json& TreeBuilder::place(json value)
{
    if (levels_.empty())
        return root_ = std::move(value);
    Level& level = levels_.back();
    if (level.container->is_object())
        return (*level.container)[level.key] = std::move(value);
    level.container->push_back(std::move(value));
    return level.container->back();
}

bool TreeBuilder::open(json container)
{
    if (levels_.size() == DrawingFormat::kDeepestNesting)
        refuse("nested deeper than " + std::to_string(DrawingFormat::kDeepestNesting) + " levels");
    json& placed = place(std::move(container));
    levels_.push_back({&placed, {}});
    return true;
}

bool TreeBuilder::close()
{
    levels_.pop_back();
    return true;
}

std::string TreeBuilder::path() const
{
    std::string path;
    for (const Level& level : levels_) {
        const bool innermost = &level == &levels_.back();
        if (level.container->is_array())
            path += "[" + std::to_string(level.container->size() - (innermost ? 0 : 1)) + "]";
        else if (!level.key.empty())
            path += (path.empty() ? "" : ".") + excerpt(level.key);
    }
    return path.empty() ? "drawing" : path;
}

void TreeBuilder::refuse(const std::string& message) const
{
    throw DrawingRefusal{Qeapp::eFileDamaged, path() + ": " + message};
}

/// Looks through the text before it is parsed: the C runtime's conversion of a number takes time with the square of its
/// digits on some systems, hours for one that fills a drawing file.
void refuseLongNumbers(std::string_view text)
{
    std::size_t length = 0;
    bool isInString = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (isInString && character == '\\') {
            ++index;
            continue;
        }
        isInString = isInString != (character == '"');
        const bool isDigit = character >= '0' && character <= '9';
        length = !isInString && (isDigit || character == '.') ? length + 1 : 0;
        if (length > DrawingFormat::kLongestNumber)
            throw DrawingRefusal{Qeapp::eFileDamaged, positionIn(text, index + 1) + ": the number has more than " +
                                                          std::to_string(DrawingFormat::kLongestNumber) + " digits"};
    }
}

} // namespace

json parseJsonDocument(std::string_view text)
{
    if (text.empty())
        throw DrawingRefusal{Qeapp::eFileDamaged, "line 1, byte 1: the file is empty"};
    refuseLongNumbers(text);
    TreeBuilder builder(text);
    if (!json::sax_parse(text, &builder))
        throw DrawingRefusal{Qeapp::eFileDamaged, "byte 1: no JSON document"};
    if (text.back() != '\n')
        throw DrawingRefusal{Qeapp::eFileDamaged,
                             positionIn(text, text.size() + 1) + ": the newline that ends the file is missing"};
    return builder.take();
}

} // namespace Embedded
