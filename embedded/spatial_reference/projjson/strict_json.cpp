#include "embedded/spatial_reference/projjson/strict_json.h"

#include <string>
#include <utility>

#include "embedded/spatial_reference/projjson/json_builder.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

/// Stops the parser at the first thing that is out of bounds.
class StrictBuilder final : public JsonBuilder {
public:
    bool string(string_t& text) override { return hasNoNul(text) && JsonBuilder::string(text); }
    bool start_object(std::size_t count) override { return mayEnter() && JsonBuilder::start_object(count); }
    bool start_array(std::size_t count) override { return mayEnter() && JsonBuilder::start_array(count); }
    bool key(string_t& name) override
    {
        return hasNoNul(name) && (addMember(name) || refuse("the key \"" + name + "\" appears twice"));
    }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception&) override
    {
        return refuse("not JSON at byte " + std::to_string(position));
    }

    const std::string& error() const { return error_; }

private:
    bool refuse(std::string error)
    {
        error_ = std::move(error);
        return false;
    }
    /// Whoever reads a name or a code as a C string would see it end at the NUL.
    bool hasNoNul(const string_t& text)
    {
        return text.find('\0') == string_t::npos || refuse("a text holds a NUL character (\\u0000)");
    }
    bool mayEnter()
    {
        return levels() < kDeepestJson || refuse("nested deeper than " + std::to_string(kDeepestJson) + " levels");
    }

    std::string error_;
};

} // namespace

Expected<Projjson> parseStrictJson(std::string_view utf8)
{
    StrictBuilder builder;
    if (!Projjson::sax_parse(utf8, &builder))
        return failure(Zentara::Infrastructure::SpatialReference::statusUnreadable, builder.error());
    return builder.take();
}

} // namespace Embedded
