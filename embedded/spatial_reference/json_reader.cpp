#include "embedded/spatial_reference/json_reader.h"

#include <set>
#include <string>
#include <vector>

namespace Embedded {
namespace {

/// Stops the parser at the first thing out of bounds, before a document is built.
class BoundsCheck final : public nlohmann::json_sax<Document> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return enter(); }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(); }
    bool end_array() override { return leave(); }
    bool key(string_t& name) override { return keys_.back().insert(name).second; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }

private:
    bool enter()
    {
        keys_.emplace_back();
        return keys_.size() <= kDeepestJson;
    }
    bool leave()
    {
        keys_.pop_back();
        return true;
    }

    std::vector<std::set<std::string>> keys_;
};

} // namespace

bool isReadableJson(std::string_view utf8)
{
    BoundsCheck check;
    return Document::sax_parse(utf8, &check);
}

std::optional<Document> readJson(std::string_view utf8)
{
    if (!isReadableJson(utf8))
        return std::nullopt;
    return Document::parse(utf8, nullptr, /* allow_exceptions */ false);
}

} // namespace Embedded
