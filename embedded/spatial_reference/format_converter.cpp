#include "platform/spatial_reference/format_converter.h"

#include <algorithm>
#include <optional>
#include <string>

#include "embedded/foundation/text.h"
#include "embedded/spatial_reference/canonical_document.h"
#include "embedded/spatial_reference/definition_data.h"
#include "embedded/spatial_reference/outcome.h"

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

Status writeWkt2(const PJ* system, wchar_t* buffer, std::size_t bufferCharacters)
{
    auto text = wktOf(system, PJ_WKT2_2019);
    if (text && !fits(*text, bufferCharacters))
        text = wktOf(system, PJ_WKT2_2019_SIMPLIFIED);
    if (!text)
        return statusFailed;
    if (!fits(*text, bufferCharacters))
        return statusBufferTooSmall;
    copyWithNul(*text, buffer);
    return statusInexact;
}

Status writeWkt(const Embedded::Document& document, wchar_t* buffer, std::size_t bufferCharacters)
{
    const Embedded::ProjObject system = Embedded::projObjectFrom(document);
    if (!system)
        return statusFailed;
    const auto text = wktOf(system.get(), PJ_WKT1_GDAL);
    if (!text)
        return writeWkt2(system.get(), buffer, bufferCharacters);
    if (!fits(*text, bufferCharacters))
        return statusBufferTooSmall;
    copyWithNul(*text, buffer);
    return statusOk;
}

} // namespace

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                          wchar_t* buffer, std::size_t bufferCharacters)
{
    if (const auto failure = Embedded::struck("FormatConverter::DefinitionToWkt_s"))
        return *failure;
    if (!definition || !buffer)
        return statusInvalidArgument;
    if (flavor != wktFlavorDefault)
        return statusUnsupported;
    return Embedded::guarded(statusFailed,
                             [&] { return writeWkt(definition->data().document, buffer, bufferCharacters); });
}

} // namespace Zentara::Infrastructure::SpatialReference
