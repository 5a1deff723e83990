#include "embedded/base/json/strict_json.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "embedded/base/text.h"

namespace Embedded {
namespace {

using Json = nlohmann::ordered_json;

/// Why the parser stopped. Its message is "[name and number] what at line and column: during what - why; last read: …",
/// and what was read last can be long.
std::string parserReason(std::string_view message)
{
    constexpr std::string_view kBeforeReason = " - ";
    const auto start = message.find(kBeforeReason);
    if (start == std::string_view::npos)
        return {};
    const auto reason = message.substr(start + kBeforeReason.size());
    return ": " + std::string(reason.substr(0, reason.find("; last read: ")));
}

/// Stops the parser at the first thing that is out of bounds, before a value is built.
class BoundsCheck final : public nlohmann::json_sax<Json> {
public:
    explicit BoundsCheck(std::size_t mostLevels) : mostLevels_(mostLevels) {}

    bool null() override { return endValue(); }
    bool boolean(bool) override { return endValue(); }
    bool number_integer(number_integer_t) override { return endValue(); }
    bool number_unsigned(number_unsigned_t) override { return endValue(); }
    bool number_float(number_float_t, const string_t&) override { return endValue(); }
    bool string(string_t& text) override { return hasNoNul(text) && endValue(); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return enter(false); }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(true); }
    bool end_array() override { return leave(); }
    bool key(string_t& name) override
    {
        Level& object = levels_.back();
        object.key.clear();
        if (!hasNoNul(name))
            return false;
        if (!object.keys.insert(name).second)
            return refuse("the key \"" + truncateForMessage(name) + "\" appears twice");
        object.key = name;
        return true;
    }
    bool parse_error(std::size_t position, const std::string& lastRead, const Json::exception& error) override
    {
        if (dynamic_cast<const Json::out_of_range*>(&error) != nullptr)
            return refuse("the number " + truncateForMessage(lastRead) + " is beyond all bounds");
        return refuse("not JSON at byte " + std::to_string(position) + parserReason(error.what()));
    }

    const Error& error() const { return error_; }

private:
    struct Level {
        bool isArray;
        std::size_t index = 0; // of the element that is being read
        std::string key{};     // of the member that is being read
        std::set<std::string> keys{};
    };

    bool refuse(std::string message)
    {
        error_ = {0, std::move(message), place()};
        return false;
    }
    std::string place() const
    {
        std::string text;
        for (const Level& level : levels_) {
            if (level.isArray)
                text += "[" + std::to_string(level.index) + "]";
            else if (!level.key.empty())
                text += (text.empty() ? "" : ".") + level.key;
        }
        return truncateForMessage(text);
    }
    /// Whoever reads a name or a code as a C string would see it end at the NUL.
    bool hasNoNul(const string_t& text)
    {
        return text.find('\0') == string_t::npos || refuse("a text holds a NUL character (\\u0000)");
    }
    bool enter(bool isArray)
    {
        if (levels_.size() == mostLevels_)
            return refuse("nested deeper than " + std::to_string(mostLevels_) + " levels");
        levels_.push_back({isArray});
        return true;
    }
    bool leave()
    {
        levels_.pop_back();
        return endValue();
    }
    bool endValue()
    {
        if (!levels_.empty())
            ++levels_.back().index;
        return true;
    }

    std::size_t mostLevels_;
    std::vector<Level> levels_;
    Error error_;
};

} // namespace

Expected<Json> parseStrictJson(std::string_view utf8, std::size_t mostLevels)
{
    BoundsCheck check(mostLevels);
    if (!Json::sax_parse(utf8, &check))
        return failure(check.error());
    constexpr bool kAllowExceptions = false;
    return Json::parse(utf8, nullptr, kAllowExceptions);
}

} // namespace Embedded
