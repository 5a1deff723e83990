#include "fuzz/reference_definition_xrecord.h"

#include <cwctype>

#include "embedded/base/memo_cache.h"
#include "fuzz/definition_round_trip.h"
#include "storage/packed_definition.h"
#include "support/library_definitions.h"

namespace Fuzz {
namespace {

namespace Library = Orvel::Library;

constexpr int kLayout = 1071;
constexpr int kControl = 1002;
constexpr int kChunk = 310;

/// The last definition of each kind, collected while reading.
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

/// The codes in a definition.
struct Facts {
    enum class Kind { system, datum, ellipsoid };
    Kind kind;
    std::wstring code;
    std::wstring datum{};
    std::wstring ellipsoid{};
    int systemKind = 0;
};

Facts factsOf(const Library::CoordinateReferenceSystemDefinition& system)
{
    Facts facts{Facts::Kind::system, asked([&](const wchar_t*& text) { return system.GetCode(text); })};
    facts.datum = asked([&](const wchar_t*& text) { return system.GetDatumCode(text); });
    facts.ellipsoid = asked([&](const wchar_t*& text) { return system.GetEllipsoidCode(text); });
    Tests::requireOk(system.GetKind(facts.systemKind));
    return facts;
}

Facts factsOf(const Library::DatumDefinition& datum)
{
    Facts facts{Facts::Kind::datum, asked([&](const wchar_t*& text) { return datum.GetCode(text); })};
    facts.ellipsoid = asked([&](const wchar_t*& text) { return datum.GetEllipsoidCode(text); });
    return facts;
}

std::optional<Facts> factsIn(const Bytes& packed)
{
    const DefinitionHolder held = Orvel::DecodeDefinitionBytes(packed.data(), packed.size());
    const Library::DefinitionBase* const definition = held.get();
    if (const auto* const system = dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definition))
        return factsOf(*system);
    if (const auto* const datum = dynamic_cast<const Library::DatumDefinition*>(definition))
        return factsOf(*datum);
    if (const auto* const ellipsoid = dynamic_cast<const Library::EllipsoidDefinition*>(definition))
        return Facts{Facts::Kind::ellipsoid, asked([&](const wchar_t*& text) { return ellipsoid->GetCode(text); })};
    return std::nullopt;
}

/// Caches samples: most readable definitions are samples, and reading one takes longer than everything else.
std::optional<Facts> rememberedFactsIn(const Bytes& packed)
{
    static Embedded::MemoCache<Bytes, std::optional<Facts>> remembered;
    return remembered.getOrCompute(
        packed, [&packed] { return factsIn(packed); },
        [](const std::optional<Facts>& facts) { return facts.has_value(); });
}

void gather(const Bytes& packed, Gathered& gathered)
{
    const std::optional<Facts> facts = packed.empty() ? std::nullopt : rememberedFactsIn(packed);
    if (!facts)
        return;
    switch (facts->kind) {
    case Facts::Kind::system:
        gathered.codes.system = facts->code;
        gathered.systemKind = facts->systemKind;
        gathered.namedDatum = facts->datum;
        gathered.ellipsoidOfSystem = facts->ellipsoid;
        break;
    case Facts::Kind::datum:
        gathered.codes.datum = facts->code;
        gathered.ellipsoidOfDatum = facts->ellipsoid;
        break;
    case Facts::Kind::ellipsoid:
        gathered.codes.ellipsoid = facts->code;
        break;
    }
}

/// The bytes of the chunks from `at` on. An empty chunk makes them invalid.
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

/// Returns false if a group has no end.
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
