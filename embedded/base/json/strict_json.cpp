#include "embedded/base/json/strict_json.h"

#include <string>
#include <utility>
#include <vector>

#include "embedded/base/json/json_builder.h"
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

/// Stops the parser at the first thing that is out of bounds.
class StrictBuilder final : public JsonBuilder {
public:
    explicit StrictBuilder(std::size_t mostLevels) : mostLevels_(mostLevels) {}

    bool null() override { return JsonBuilder::null() && endValue(); }
    bool boolean(bool value) override { return JsonBuilder::boolean(value) && endValue(); }
    bool number_integer(number_integer_t value) override { return JsonBuilder::number_integer(value) && endValue(); }
    bool number_unsigned(number_unsigned_t value) override { return JsonBuilder::number_unsigned(value) && endValue(); }
    bool number_float(number_float_t value, const string_t& text) override
    {
        return JsonBuilder::number_float(value, text) && endValue();
    }
    bool string(string_t& text) override { return hasNoNul(text) && JsonBuilder::string(text) && endValue(); }
    bool start_object(std::size_t count) override { return enter(false) && JsonBuilder::start_object(count); }
    bool end_object() override { return JsonBuilder::end_object() && leave(); }
    bool start_array(std::size_t count) override { return enter(true) && JsonBuilder::start_array(count); }
    bool end_array() override { return JsonBuilder::end_array() && leave(); }
    bool key(string_t& name) override
    {
        Level& object = levels_.back();
        object.key.clear();
        if (!hasNoNul(name))
            return false;
        if (!addMember(name))
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
    StrictBuilder builder(mostLevels);
    if (!Json::sax_parse(utf8, &builder))
        return failure(builder.error());
    return builder.take();
}

} // namespace Embedded
