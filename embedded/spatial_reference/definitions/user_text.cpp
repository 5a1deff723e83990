#include "embedded/spatial_reference/definitions/user_text.h"

#include <algorithm>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/json/strict_json.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"
#include "embedded/spatial_reference/projjson/unit_check.h"
#include "platform/spatial_reference/status.h"

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

/// WKT begins with a keyword and an opening bracket. A name or a code has no bracket.
bool looksLikeWkt(std::string_view text)
{
    const auto isKeyword = [](char character) {
        return (toLowerAscii(character) >= 'a' && toLowerAscii(character) <= 'z') ||
               (character >= '0' && character <= '9') || character == '_';
    };
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

tl::unexpected<Error> unreadable(std::string message)
{
    return failure(Zentara::Infrastructure::SpatialReference::statusUnreadable, std::move(message));
}

ProjObject objectFromProjString(const std::string& text)
{
    // PROJ would read a pipeline, which is an operation, as the system of its last step.
    if (text.find("proj=pipeline") != std::string::npos)
        return nullptr;
    const bool hasType = text.find("type=crs") != std::string::npos;
    return ProjObject(proj_create(projContext(), (hasType ? text : text + " +type=crs").c_str()));
}

ProjObject objectFromText(const std::string& text)
{
    if (looksLikeJson(text))
        return ProjObject(proj_create(projContext(), text.c_str()));
    if (looksLikeProjString(text))
        return objectFromProjString(text);
    if (!looksLikeWkt(text))
        return nullptr;
    const char* const options[] = {"STRICT=NO", nullptr};
    return ProjObject(proj_create_from_wkt(projContext(), text.c_str(), options, nullptr, nullptr));
}

} // namespace

Expected<Projjson> parseUserText(std::string_view utf8, std::string_view code)
{
    constexpr const char* kNoSystem = "not a coordinate reference system as WKT, PROJJSON or a PROJ string";
    const std::string text(trimmed(utf8));
    if (looksLikeJson(text)) {
        if (const auto json = parseStrictJson(text, kDeepestJson); !json)
            return unreadable(json.error().text());
    }
    const ProjObject object = objectFromText(text);
    if (!object || !proj_is_crs(object.get()))
        return unreadable(kNoSystem);
    Projjson projjson = canonicalProjjson(object.get());
    if (const auto units = checkUnits(object.get(), projjson); !units)
        return unreadable(units.error().message);
    if (hasIdentifier(projjson) && codeOf(projjson) != code) {
        projjson.erase("id");
        projjson.erase("ids");
    }
    if (!hasRequiredParts(DefinitionType::coordinateReferenceSystem, projjson))
        return unreadable(kNoSystem);
    return projjson;
}

Expected<void> checkUserText(std::string_view utf8)
{
    return parseUserText(utf8, {}).map([](const Projjson&) {});
}

} // namespace Embedded
