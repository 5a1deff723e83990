#include "embedded/spatial_reference/definitions/user_text.h"

#include <algorithm>
#include <cctype>

#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/strict_json.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"
#include "embedded/spatial_reference/projjson/unit_check.h"

namespace Embedded {
namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// A keyword and an opening bracket; a name or a code has none.
bool looksLikeWkt(std::string_view text)
{
    const auto isKeyword = [](unsigned char character) { return std::isalnum(character) || character == '_'; };
    const auto end = std::ranges::find_if_not(text, isKeyword);
    const auto bracket = text.find_first_not_of(" \t\r\n", static_cast<std::size_t>(end - text.begin()));
    return end != text.begin() && bracket != std::string_view::npos && (text[bracket] == '[' || text[bracket] == '(');
}

bool looksLikeJson(std::string_view text)
{
    return text.starts_with('{');
}

bool looksLikeProjString(std::string_view text)
{
    return text.starts_with("+proj=") || text.starts_with("proj=") || text.find(" +proj=") != std::string_view::npos;
}

ProjObject objectFromText(const std::string& text)
{
    if (looksLikeJson(text))
        return faultOfJson(text) ? nullptr : ProjObject(proj_create(projContext(), text.c_str()));
    if (looksLikeProjString(text)) {
        if (text.find("proj=pipeline") != std::string::npos)
            return nullptr; // an operation, which PROJ would read as the system of its last step
        const bool typed = text.find("type=crs") != std::string::npos;
        return ProjObject(proj_create(projContext(), (typed ? text : text + " +type=crs").c_str()));
    }
    if (!looksLikeWkt(text))
        return nullptr;
    const char* const options[] = {"STRICT=NO", nullptr};
    return ProjObject(proj_create_from_wkt(projContext(), text.c_str(), options, nullptr, nullptr));
}

bool describesSystem(const ProjObject& object)
{
    return object && proj_is_crs(object.get());
}

} // namespace

std::optional<std::string> whyNoDocument(std::string_view utf8)
{
    const std::string text(trimmed(utf8));
    if (const auto fault = looksLikeJson(text) ? faultOfJson(text) : std::nullopt)
        return fault;
    const ProjObject object = objectFromText(text);
    return describesSystem(object) ? faultOfUnits(object.get(), canonicalProjjson(object.get())) : std::nullopt;
}

std::optional<Projjson> documentFromUserText(std::string_view utf8, std::string_view code)
{
    const ProjObject object = objectFromText(std::string(trimmed(utf8)));
    if (!describesSystem(object))
        return std::nullopt;
    Projjson document = canonicalProjjson(object.get());
    if (faultOfUnits(object.get(), document))
        return std::nullopt;
    if (hasIdentifier(document) && codeOf(document) != code) {
        document.erase("id");
        document.erase("ids");
    }
    if (!isSoundDocument(DefinitionType::coordinateReferenceSystem, document))
        return std::nullopt;
    return document;
}

} // namespace Embedded
