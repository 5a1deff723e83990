#include "storage/definition_xrecord.h"

#include "fuzz/byte_source.h"
#include "fuzz/oracle.h"
#include "fuzz/reference_definition_xrecord.h"
#include "fuzz/sample_definitions.h"
#include "fuzz/targets.h"
#include "support/drawing.h"

namespace Fuzz {
namespace {

const SampleDefinition& nextSample(ByteSource& source)
{
    const std::vector<SampleDefinition>& samples = sampleDefinitions();
    return samples[source.below(samples.size())];
}

Bytes nextChunk(ByteSource& source)
{
    const Input bytes = source.bytes(source.byte());
    return {bytes.begin(), bytes.end()};
}

/// The group of a sample. The input chooses the length of its chunks.
void addGroup(Items& chain, ByteSource& source)
{
    const Bytes& packed = nextSample(source).packed;
    const std::size_t longest = source.byte() + std::size_t{1};
    chain.push_back({1002, L"{"});
    for (std::size_t at = 0; at < packed.size(); at += longest)
        chain.push_back({310, Bytes(packed.data() + at, packed.data() + std::min(packed.size(), at + longest))});
    chain.push_back({1002, L"}"});
}

void addPart(Items& chain, ByteSource& source)
{
    switch (source.below(8)) {
    case 0:
        return chain.push_back({1071, static_cast<int>(source.below(4)) - 1});
    case 1:
        return chain.push_back({1002, source.below(2) == 0 ? L"{" : L"}"});
    case 2:
        return chain.push_back({1002, std::wstring(1, static_cast<wchar_t>(source.byte()))});
    case 3:
        return chain.push_back({310, nextChunk(source)});
    case 4:
        return chain.push_back({310, nextSample(source).packed});
    case 5:
        return addGroup(chain, source);
    case 6:
        return chain.push_back({300, L"text"});
    default:
        return chain.push_back({1070, static_cast<int>(source.byte())});
    }
}

Items nextChain(ByteSource& source)
{
    Items chain;
    while (!source.isEmpty())
        addPart(chain, source);
    // The host reads a text up to its NUL.
    for (Item& item : chain) {
        if (auto* const text = std::get_if<std::wstring>(&item.value))
            text->erase(std::min(text->size(), text->find(L'\0')));
    }
    return chain;
}

template <class Definition>
std::optional<std::wstring> readCode(const Orvel::LibraryObject<Definition>& definition)
{
    const wchar_t* code = nullptr;
    if (!definition || definition->GetCode(code) != Orvel::Library::statusOk)
        return std::nullopt;
    return code;
}

std::optional<FoundCodes> readWithModule(QeDbDatabase* database, const std::wstring& code)
{
    Orvel::DefinitionSet definitions;
    const bool isFound = Orvel::ReadCsDefinitionXrecord(database, code.c_str(), definitions);
    FoundCodes codes{readCode(definitions.system), readCode(definitions.datum), readCode(definitions.ellipsoid)};
    require(isFound || codes == FoundCodes(), "nothing is handed out where nothing is found");
    return isFound ? std::optional(codes) : std::nullopt;
}

} // namespace

void definitionXrecord(Input input)
{
    const LeakCheck guard;
    ByteSource source(input);
    const std::wstring code = source.below(16) == 0 ? std::wstring() : nextSample(source).code;
    const Items chain = nextChain(source);
    Tests::Drawing drawing;
    drawing.withXrecord(chain);
    require(drawing.xrecord() == chain, "the host gives back the chain that it was given");
    require(readWithModule(drawing.database(), code) == referenceDefinitions(chain, code),
            "the definitions are those of the second reader");
}

} // namespace Fuzz
