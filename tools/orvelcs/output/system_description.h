// The properties of a definition and of a coordinate reference system, as lines of a label and a value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/cli/json.h"
#include "orvelcs/cli/output.h"
#include "orvelcs/output/table.h"
#include "platform/spatial_reference.h"

namespace Orvelcs {

/// Each part is absent where the system has none.
struct SystemDescription {
    std::optional<std::wstring> code;
    std::optional<std::wstring> name;
    std::optional<int> kind;
    std::optional<std::wstring> datum;
    std::optional<std::wstring> ellipsoid;
    std::optional<std::wstring> wkt;
};

/// "CoordinateReferenceSystemDefinition", "DatumDefinition", "EllipsoidDefinition"; "DefinitionBase" for any other.
std::string definitionType(const Zentara::Infrastructure::SpatialReference::DefinitionBase& definition);

template <class Owner>
using TextQuery = Zentara::Infrastructure::SpatialReference::Status (Owner::*)(const wchar_t*&) const;

/// The text that the query gives; nothing when it fails and for an empty text, which is the library's way of saying
/// that there is none.
template <class Definition, class Owner>
std::optional<std::wstring> definitionText(const Definition& definition, TextQuery<Owner> query)
{
    const wchar_t* text = nullptr;
    if ((definition.*query)(text) != Zentara::Infrastructure::SpatialReference::statusOk || text == nullptr ||
        *text == L'\0')
        return std::nullopt;
    return text;
}

using System = Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition;

/// Reads everything but the WKT.
SystemDescription describe(const System& system);
/// The system as WKT of the default flavor; WKT 2 where WKT 1 cannot express it. Throws Failure when neither can.
std::wstring writeWkt(const System& system);

/// The codes of the systems that replace a deprecated one, in one text; nothing when there is none.
std::optional<std::wstring> replacementsText(const std::vector<std::wstring>& codes);
/// The first of them; null when there is none.
Json firstReplacement(const std::vector<std::wstring>& codes);

/// "projected" for 3.
std::string kindName(int kind);

/// Lines of a label and a value, with the values aligned.
class LabelledLines {
public:
    /// An absent value is left out.
    void add(std::string_view label, const std::optional<std::wstring>& value);
    void add(std::string_view label, std::string_view value);
    /// Code, name, kind, datum, ellipsoid.
    void add(const SystemDescription& description);
    void print(Output& output) const;

private:
    std::vector<TableRow> lines_;
};

} // namespace Orvelcs
