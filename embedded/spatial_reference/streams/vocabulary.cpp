#include "embedded/spatial_reference/streams/vocabulary.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "embedded/spatial_reference/streams/vocabulary_entries.h"

namespace Embedded {
namespace {

/// A cheap look at a value, equal for equal values: most values are seen to be no entry by it.
std::string beginningOf(const Projjson& value)
{
    if (value.is_string())
        return value.get<std::string>();
    if (!value.is_object() || value.empty())
        return {};
    const auto first = value.begin();
    return first.key() + '=' + (first->is_string() ? first->get_ref<const std::string&>() : std::string());
}

struct Vocabulary {
    std::vector<Projjson> entries;
    std::unordered_set<std::string> beginnings;
    std::unordered_map<std::string, std::size_t> numbers; // by compact JSON text

    Vocabulary()
    {
        for (const std::string_view json : vocabularyEntries()) {
            entries.push_back(Projjson::parse(json));
            beginnings.insert(beginningOf(entries.back()));
            numbers.emplace(entries.back().dump(), entries.size() - 1);
        }
    }
};

const Vocabulary& vocabulary()
{
    static const Vocabulary instance;
    return instance;
}

} // namespace

std::optional<std::size_t> vocabularyNumberOf(const Projjson& value)
{
    if (!(value.is_string() || value.is_object()) || !vocabulary().beginnings.contains(beginningOf(value)))
        return std::nullopt;
    const auto found = vocabulary().numbers.find(value.dump());
    return found == vocabulary().numbers.end() ? std::nullopt : std::optional(found->second);
}

const Projjson* vocabularyEntry(std::size_t number)
{
    const auto& entries = vocabulary().entries;
    return number < entries.size() ? &entries[number] : nullptr;
}

} // namespace Embedded
