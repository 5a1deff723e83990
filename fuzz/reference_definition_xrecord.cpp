#include "fuzz/reference_definition_xrecord.h"

#include <cwctype>

#include "fuzz/definition_round_trip.h"
#include "storage/packed_definition.h"
#include "support/library_definitions.h"

namespace Fuzz {
namespace {

namespace Library = Orvel::Library;

constexpr int kLayout = 1071;
constexpr int kControl = 1002;
constexpr int kChunk = 310;

/// What reading gathers; the last definition of each kind.
struct Gathered {
    FoundCodes codes;
    int systemKind = 0;
    std::wstring namedDatum;          // by the system
    std::wstring ellipsoidOfSystem{}; // named by it
    std::wstring ellipsoidOfDatum{};
};

std::wstring asked(const auto& query)
{
    const wchar_t* text = nullptr;
    Tests::requireOk(query(text));
    return text;
}

void gatherSystem(const Library::CoordinateReferenceSystemDefinition& system, Gathered& gathered)
{
    gathered.codes.system = asked([&](const wchar_t*& text) { return system.GetCode(text); });
    gathered.namedDatum = asked([&](const wchar_t*& text) { return system.GetDatumCode(text); });
    gathered.ellipsoidOfSystem = asked([&](const wchar_t*& text) { return system.GetEllipsoidCode(text); });
    Tests::requireOk(system.GetKind(gathered.systemKind));
}

void gatherDatum(const Library::DatumDefinition& datum, Gathered& gathered)
{
    gathered.codes.datum = asked([&](const wchar_t*& text) { return datum.GetCode(text); });
    gathered.ellipsoidOfDatum = asked([&](const wchar_t*& text) { return datum.GetEllipsoidCode(text); });
}

void gather(const Bytes& packed, Gathered& gathered)
{
    if (packed.empty())
        return;
    const DefinitionHolder held(Orvel::DecodeDefinitionBytes(packed.data(), packed.size()));
    const Library::DefinitionBase* const definition = held.get();
    if (const auto* const system = dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definition))
        gatherSystem(*system, gathered);
    else if (const auto* const datum = dynamic_cast<const Library::DatumDefinition*>(definition))
        gatherDatum(*datum, gathered);
    else if (const auto* const ellipsoid = dynamic_cast<const Library::EllipsoidDefinition*>(definition))
        gathered.codes.ellipsoid = asked([&](const wchar_t*& text) { return ellipsoid->GetCode(text); });
}

/// The bytes of the chunks from `at` on, which an empty one spoils.
Bytes joinedChunks(const Items& chain, std::size_t at)
{
    Bytes joined;
    for (; at < chain.size() && chain[at].code == kChunk; ++at) {
        const auto& chunk = std::get<Bytes>(chain[at].value);
        if (chunk.empty())
            return {};
        joined.insert(joined.end(), chunk.begin(), chunk.end());
    }
    return joined;
}

/// False where a group has no end.
bool gatherGroups(const Items& chain, std::size_t at, Gathered& gathered)
{
    const Item end{kControl, L"}"};
    while (at < chain.size()) {
        if (chain[at].code == kControl)
            gather(joinedChunks(chain, at + 1), gathered);
        while (at < chain.size() && chain[at] != end)
            ++at;
        if (at++ == chain.size())
            return false;
    }
    return true;
}

bool gatherChain(const Items& chain, Gathered& gathered)
{
    const bool hasLayout = !chain.empty() && chain.front().code == kLayout;
    const int layout = hasLayout ? std::get<int>(chain.front().value) : 0;
    if (layout == 1)
        return gatherGroups(chain, 1, gathered);
    for (const Item& item : chain) {
        if (item.code == kChunk)
            gather(std::get<Bytes>(item.value), gathered);
    }
    return layout == 0 && !chain.empty();
}

std::wstring lowered(std::wstring text)
{
    for (wchar_t& character : text)
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    return text;
}

bool isSame(const std::optional<std::wstring>& one, const std::wstring& other)
{
    return one && !one->empty() && lowered(*one) == lowered(other);
}

bool belongTogether(const Gathered& gathered, const std::wstring& code)
{
    if (!isSame(gathered.codes.system, code))
        return false;
    if (gathered.systemKind != Library::kindGeographic && gathered.systemKind != Library::kindProjected)
        return true;
    if (gathered.namedDatum.empty())
        return !gathered.codes.datum && isSame(gathered.codes.ellipsoid, gathered.ellipsoidOfSystem);
    return isSame(gathered.codes.datum, gathered.namedDatum) &&
           isSame(gathered.codes.ellipsoid, gathered.ellipsoidOfDatum);
}

} // namespace

std::optional<FoundCodes> referenceDefinitions(const Items& chain, const std::wstring& code)
{
    Gathered gathered;
    if (!gatherChain(chain, gathered) || !belongTogether(gathered, code))
        return std::nullopt;
    return gathered.codes;
}

} // namespace Fuzz
