#include "platform/spatial_reference/format_converter.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Zentara::Infrastructure::SpatialReference {
namespace {

std::optional<std::wstring> wktOf(const PJ* system, PJ_WKT_TYPE type)
{
    const char* const options[] = {"MULTILINE=NO", nullptr};
    const char* text = proj_as_wkt(Embedded::projContext(), system, type, options);
    return text ? std::optional(Embedded::wideFromUtf8(text)) : std::nullopt;
}

bool fits(const std::wstring& text, std::size_t bufferCharacters)
{
    return text.size() < bufferCharacters;
}

void copyWithNul(const std::wstring& text, wchar_t* buffer)
{
    std::copy_n(text.c_str(), text.size() + 1, buffer);
}

/// What a system can be written as, and what writing it so comes to.
struct Forms {
    Status status = statusFailed;
    std::vector<std::wstring> texts{}; // the best one first
};

Forms formsOf(const PJ* system)
{
    if (auto text = wktOf(system, PJ_WKT1_GDAL))
        return {statusOk, {*std::move(text)}};
    Forms forms{statusInexact};
    for (const PJ_WKT_TYPE type : {PJ_WKT2_2019, PJ_WKT2_2019_SIMPLIFIED}) {
        if (auto text = wktOf(system, type))
            forms.texts.push_back(*std::move(text));
    }
    return forms;
}

Forms formsOf(const Embedded::Projjson& document)
{
    static Embedded::MemoCache<std::string, Forms> remembered;
    const auto make = [&document] {
        const Embedded::ProjObject system = Embedded::projObjectFrom(document);
        return system ? formsOf(system.get()) : Forms();
    };
    return remembered.getOrCompute(document.dump(), make, [](const Forms& forms) { return !forms.texts.empty(); });
}

Status writeWkt(const Embedded::Projjson& document, wchar_t* buffer, std::size_t bufferCharacters)
{
    const Forms forms = formsOf(document);
    if (forms.texts.empty())
        return statusFailed;
    const auto text = std::ranges::find_if(
        forms.texts, [bufferCharacters](const std::wstring& form) { return fits(form, bufferCharacters); });
    if (text == forms.texts.end())
        return statusBufferTooSmall;
    copyWithNul(*text, buffer);
    return forms.status;
}

} // namespace

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                          wchar_t* buffer, std::size_t bufferCharacters)
{
    if (const auto failure = Embedded::injectedStatus("FormatConverter::DefinitionToWkt_s"))
        return *failure;
    if (!definition || !buffer)
        return statusInvalidArgument;
    if (flavor != wktFlavorDefault)
        return statusUnsupported;
    return Embedded::guarded(statusFailed,
                             [&] { return writeWkt(definition->data().document, buffer, bufferCharacters); });
}

} // namespace Zentara::Infrastructure::SpatialReference
