#include "embedded/spatial_reference/projjson/strict_json.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

/// Stops the parser at the first thing that is out of bounds, before a value is built.
class BoundsCheck final : public nlohmann::json_sax<Projjson> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t& text) override { return hasNoNul(text); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return enter(); }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(); }
    bool end_array() override { return leave(); }
    bool key(string_t& name) override
    {
        return hasNoNul(name) && (keys_.back().insert(name).second || refuse("the key \"" + name + "\" appears twice"));
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
    bool enter()
    {
        keys_.emplace_back();
        return keys_.size() <= kDeepestJson || refuse("nested deeper than " + std::to_string(kDeepestJson) + " levels");
    }
    bool leave()
    {
        keys_.pop_back();
        return true;
    }

    std::vector<std::set<std::string>> keys_;
    std::string error_;
};

} // namespace

Expected<Projjson> parseStrictJson(std::string_view utf8)
{
    BoundsCheck check;
    if (!Projjson::sax_parse(utf8, &check))
        return failure(Zentara::Infrastructure::SpatialReference::statusUnreadable, check.error());
    constexpr bool kAllowExceptions = false;
    return Projjson::parse(utf8, nullptr, kAllowExceptions);
}

} // namespace Embedded
