#include "embedded/spatial_reference/definitions/user_text.h"

#include <algorithm>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/json/strict_json.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/trim.h"
#include "embedded/spatial_reference/catalog/vertical_systems.h"
#include "embedded/spatial_reference/definitions/text_fault.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"
#include "embedded/spatial_reference/projjson/unit_check.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

constexpr const char* kNoSystem = "not a coordinate reference system as WKT, PROJJSON or a PROJ string";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    return trim(text, " \t\r\n\v\f");
}

/// WKT begins with a keyword and an opening bracket. A name or a code has no bracket.
bool looksLikeWkt(std::string_view text)
{
    const auto isKeyword = [](char character) {
        return (toLowerAscii(character) >= 'a' && toLowerAscii(character) <= 'z') || isDigit(character) ||
               character == '_';
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

/// What a text is read as. A text of no such form is refused by kNoSystem alone.
enum class TextForm { wkt, projjson, projString, none };

TextForm formOf(std::string_view text)
{
    if (looksLikeJson(text))
        return TextForm::projjson;
    if (looksLikeProjString(text))
        return TextForm::projString;
    return looksLikeWkt(text) ? TextForm::wkt : TextForm::none;
}

const char* formName(TextForm form)
{
    return form == TextForm::wkt ? "WKT" : form == TextForm::projjson ? "PROJJSON" : "PROJ string";
}

/// PROJ's object, or null with PROJ's reason.
struct ReadText {
    ProjObject object;
    std::string reason{};
};

ReadText readProjString(const std::string& text)
{
    // PROJ would read a pipeline, which is an operation, as the system of its last step.
    if (text.find("proj=pipeline") != std::string::npos)
        return {nullptr, "a pipeline is an operation"};
    const bool hasType = text.find("type=crs") != std::string::npos;
    return {ProjObject(proj_create(projContext(), (hasType ? text : text + " +type=crs").c_str())), lastProjMessage()};
}

ReadText readWkt(const std::string& text)
{
    const char* const options[] = {"STRICT=NO", nullptr};
    PROJ_STRING_LIST errors = nullptr;
    ReadText read{ProjObject(proj_create_from_wkt(projContext(), text.c_str(), options, nullptr, &errors))};
    if (errors && *errors)
        read.reason = *errors;
    proj_string_list_destroy(errors);
    return read;
}

ReadText readText(TextForm form, const std::string& text)
{
    forgetProjMessage();
    switch (form) {
    case TextForm::projjson:
        return {ProjObject(proj_create(projContext(), text.c_str())), lastProjMessage()};
    case TextForm::projString:
        return readProjString(text);
    case TextForm::wkt:
        return readWkt(text);
    default:
        return {};
    }
}

/// `text` is the whole one, so that its lines are those of the user's file.
tl::unexpected<Error> refuse(TextForm form, std::string_view text, const std::string& reason)
{
    const auto fault = form == TextForm::wkt ? findSyntaxFault(text) : std::nullopt;
    if (!fault && reason.empty())
        return unreadable(kNoSystem);
    return unreadable(std::string("not a coordinate reference system as ") +
                      (form == TextForm::projString ? "a " : "") + formName(form) + ": " +
                      (fault ? *fault : describeWithPlace(text, reason)));
}

/// The parser says "at byte 37" of the text without the blanks around it.
std::string describeJsonFault(std::string_view utf8, const std::string& text, std::string reason)
{
    constexpr std::string_view kAtByte = " at byte ";
    const std::size_t at = reason.find(kAtByte);
    if (at == std::string::npos)
        return reason;
    const std::size_t number = at + kAtByte.size();
    const std::size_t end = std::min(reason.find_first_not_of("0123456789", number), reason.size());
    const auto byte = parseInteger<std::size_t>(reason.substr(number, end - number)).value_or(1);
    reason.erase(at, end - at);
    return placeInText(utf8, utf8.find(text) + std::max<std::size_t>(byte, 1) - 1) + reason;
}

/// What PROJ has made of a text that is no system of this library.
std::string describeForeign(const PJ* object)
{
    switch (proj_get_type(object)) {
    case PJ_TYPE_VERTICAL_CRS:
        return kVerticalSystem;
    case PJ_TYPE_TEMPORAL_CRS:
        return "a temporal system, which a drawing cannot have";
    case PJ_TYPE_ELLIPSOID:
        return "an ellipsoid, not a coordinate reference system";
    case PJ_TYPE_GEODETIC_REFERENCE_FRAME:
    case PJ_TYPE_DYNAMIC_GEODETIC_REFERENCE_FRAME:
    case PJ_TYPE_VERTICAL_REFERENCE_FRAME:
    case PJ_TYPE_DYNAMIC_VERTICAL_REFERENCE_FRAME:
    case PJ_TYPE_DATUM_ENSEMBLE:
        return "a datum, not a coordinate reference system";
    case PJ_TYPE_CONVERSION:
    case PJ_TYPE_TRANSFORMATION:
    case PJ_TYPE_CONCATENATED_OPERATION:
    case PJ_TYPE_OTHER_COORDINATE_OPERATION:
        return "an operation, not a coordinate reference system";
    default:
        return kNoSystem;
    }
}

/// The PROJJSON with the identifier that the text gives the system.
Expected<Projjson> readUserText(std::string_view utf8)
{
    const std::string text(trimmed(utf8));
    const TextForm form = formOf(text);
    if (form == TextForm::projjson) {
        if (const auto json = parseStrictJson(text, kDeepestJson); !json)
            return unreadable(describeJsonFault(utf8, text, json.error().text()));
    }
    const ReadText read = readText(form, text);
    if (!read.object)
        return refuse(form, utf8, read.reason);
    if (!proj_is_crs(read.object.get()))
        return unreadable(describeForeign(read.object.get()));
    Projjson projjson = canonicalProjjson(read.object.get());
    if (const auto units = checkUnits(read.object.get(), projjson); !units)
        return unreadable(units.error().message);
    if (!hasRequiredParts(DefinitionType::coordinateReferenceSystem, projjson))
        return unreadable(describeForeign(read.object.get()));
    return projjson;
}

} // namespace

Expected<Projjson> parseUserText(std::string_view utf8, std::string_view code)
{
    return readUserText(utf8).map([&](Projjson projjson) {
        if (hasIdentifier(projjson) && codeOf(projjson) != code) {
            projjson.erase("id");
            projjson.erase("ids");
        }
        return projjson;
    });
}

Expected<std::string> userTextCode(std::string_view utf8)
{
    return readUserText(utf8).map(
        [](const Projjson& projjson) { return hasIdentifier(projjson) ? codeOf(projjson) : std::string(); });
}

Expected<void> checkUserText(std::string_view utf8)
{
    return parseUserText(utf8, {}).map([](const Projjson&) {});
}

} // namespace Embedded
