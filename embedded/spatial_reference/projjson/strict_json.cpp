#include "embedded/spatial_reference/projjson/strict_json.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Embedded {
namespace {

/// Stops the parser at the first thing out of bounds, before a document is built.
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

    const std::string& fault() const { return fault_; }

private:
    bool refuse(std::string fault)
    {
        fault_ = std::move(fault);
        return false;
    }
    /// It would end at the NUL for whoever reads it as the text of a name or code.
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
    std::string fault_;
};

} // namespace

std::optional<std::string> faultOfJson(std::string_view utf8)
{
    BoundsCheck check;
    return Projjson::sax_parse(utf8, &check) ? std::nullopt : std::optional(check.fault());
}

std::optional<Projjson> readJson(std::string_view utf8)
{
    if (faultOfJson(utf8))
        return std::nullopt;
    return Projjson::parse(utf8, nullptr, /* allow_exceptions */ false);
}

} // namespace Embedded
