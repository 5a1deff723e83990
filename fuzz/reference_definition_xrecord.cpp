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
struct Collected {
    FoundCodes codes;
    int systemKind = 0;
    std::wstring namedDatum;          // by the system
    std::wstring ellipsoidOfSystem{}; // named by it
    std::wstring ellipsoidOfDatum{};
};

std::wstring getText(const auto& query)
{
    const wchar_t* text = nullptr;
    Tests::requireOk(query(text));
    return text;
}

/// The codes in a definition.
struct DefinitionCodes {
    enum class Kind { system, datum, ellipsoid };
    Kind kind;
    std::wstring code;
    std::wstring datum{};
    std::wstring ellipsoid{};
    int systemKind = 0;
};

DefinitionCodes readCodes(const Library::CoordinateReferenceSystemDefinition& system)
{
    DefinitionCodes codes{DefinitionCodes::Kind::system,
                          getText([&](const wchar_t*& text) { return system.GetCode(text); })};
    codes.datum = getText([&](const wchar_t*& text) { return system.GetDatumCode(text); });
    codes.ellipsoid = getText([&](const wchar_t*& text) { return system.GetEllipsoidCode(text); });
    Tests::requireOk(system.GetKind(codes.systemKind));
    return codes;
}

DefinitionCodes readCodes(const Library::DatumDefinition& datum)
{
    DefinitionCodes codes{DefinitionCodes::Kind::datum,
                          getText([&](const wchar_t*& text) { return datum.GetCode(text); })};
    codes.ellipsoid = getText([&](const wchar_t*& text) { return datum.GetEllipsoidCode(text); });
    return codes;
}

std::optional<DefinitionCodes> decodeCodes(const Bytes& packed)
{
    const DefinitionHolder held = Orvel::DecodeDefinitionBytes(packed.data(), packed.size());
    const Library::DefinitionBase* const definition = held.get();
    if (const auto* const system = dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definition))
        return readCodes(*system);
    if (const auto* const datum = dynamic_cast<const Library::DatumDefinition*>(definition))
        return readCodes(*datum);
    if (const auto* const ellipsoid = dynamic_cast<const Library::EllipsoidDefinition*>(definition))
        return DefinitionCodes{DefinitionCodes::Kind::ellipsoid,
                               getText([&](const wchar_t*& text) { return ellipsoid->GetCode(text); })};
    return std::nullopt;
}

/// Caches samples: most readable definitions are samples, and reading one takes longer than everything else.
std::optional<DefinitionCodes> getCachedCodes(const Bytes& packed)
{
    static Embedded::MemoCache<Bytes, std::optional<DefinitionCodes>> cached;
    return cached.getOrCompute(
        packed, [&packed] { return decodeCodes(packed); },
        [](const std::optional<DefinitionCodes>& codes) { return codes.has_value(); });
}

void collect(const Bytes& packed, Collected& collected)
{
    const std::optional<DefinitionCodes> codes = packed.empty() ? std::nullopt : getCachedCodes(packed);
    if (!codes)
        return;
    switch (codes->kind) {
    case DefinitionCodes::Kind::system:
        collected.codes.system = codes->code;
        collected.systemKind = codes->systemKind;
        collected.namedDatum = codes->datum;
        collected.ellipsoidOfSystem = codes->ellipsoid;
        break;
    case DefinitionCodes::Kind::datum:
        collected.codes.datum = codes->code;
        collected.ellipsoidOfDatum = codes->ellipsoid;
        break;
    case DefinitionCodes::Kind::ellipsoid:
        collected.codes.ellipsoid = codes->code;
        break;
    }
}

/// The bytes of the chunks from `at` on. An empty chunk makes them invalid.
Bytes joinChunks(const Items& chain, std::size_t at)
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
bool collectGroups(const Items& chain, std::size_t at, Collected& collected)
{
    const Item end{kControl, L"}"};
    while (at < chain.size()) {
        if (chain[at].code == kControl)
            collect(joinChunks(chain, at + 1), collected);
        while (at < chain.size() && chain[at] != end)
            ++at;
        if (at++ == chain.size())
            return false;
    }
    return true;
}

bool collectChain(const Items& chain, Collected& collected)
{
    const bool hasLayout = !chain.empty() && chain.front().code == kLayout;
    const int layout = hasLayout ? std::get<int>(chain.front().value) : 0;
    if (layout == 1)
        return collectGroups(chain, 1, collected);
    for (const Item& item : chain) {
        if (item.code == kChunk)
            collect(std::get<Bytes>(item.value), collected);
    }
    return layout == 0 && !chain.empty();
}

std::wstring toLowerCase(std::wstring text)
{
    for (wchar_t& character : text)
        character = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
    return text;
}

bool isSameCode(const std::optional<std::wstring>& one, const std::wstring& other)
{
    return one && !one->empty() && toLowerCase(*one) == toLowerCase(other);
}

bool isConsistent(const Collected& collected, const std::wstring& code)
{
    if (!isSameCode(collected.codes.system, code))
        return false;
    if (collected.systemKind != Library::kindGeographic && collected.systemKind != Library::kindProjected)
        return true;
    if (collected.namedDatum.empty())
        return !collected.codes.datum && isSameCode(collected.codes.ellipsoid, collected.ellipsoidOfSystem);
    return isSameCode(collected.codes.datum, collected.namedDatum) &&
           isSameCode(collected.codes.ellipsoid, collected.ellipsoidOfDatum);
}

} // namespace

std::optional<FoundCodes> referenceDefinitions(const Items& chain, const std::wstring& code)
{
    Collected collected;
    if (!collectChain(chain, collected) || !isConsistent(collected, code))
        return std::nullopt;
    return collected.codes;
}

} // namespace Fuzz
