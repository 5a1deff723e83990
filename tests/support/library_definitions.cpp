#include "support/library_definitions.h"

#include <stdexcept>

#include "embedded/base/text.h"
#include "platform/spatial_reference.h"

namespace Tests {
namespace {

/// Throws when a test cannot be set up.
template <class Definition>
Orvel::LibraryObject<Definition> loadFromCatalog(const wchar_t* code)
{
    Orvel::LibraryObject<Definition> definition;
    requireOk(Definition::Load(code, definition.put()));
    return definition;
}

const wchar_t* kindPrefix(const Library::DefinitionBase* definition)
{
    if (dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definition) != nullptr)
        return L"system ";
    if (dynamic_cast<const Library::DatumDefinition*>(definition) != nullptr)
        return L"datum ";
    return dynamic_cast<const Library::EllipsoidDefinition*>(definition) != nullptr ? L"ellipsoid " : L"other ";
}

} // namespace

void requireOk(Library::Status status)
{
    if (status != Library::statusOk)
        throw std::runtime_error("setting up a definition: library status " + std::to_string(static_cast<int>(status)));
}

SystemHolder catalogSystem(const wchar_t* code)
{
    return loadFromCatalog<Library::CoordinateReferenceSystemDefinition>(code);
}

DatumHolder catalogDatum(const wchar_t* code)
{
    return loadFromCatalog<Library::DatumDefinition>(code);
}

EllipsoidHolder catalogEllipsoid(const wchar_t* code)
{
    return loadFromCatalog<Library::EllipsoidDefinition>(code);
}

DatumHolder getDatum(const SystemHolder& system)
{
    DatumHolder datum;
    requireOk(system->GetDatum(datum.put()));
    return datum;
}

EllipsoidHolder getEllipsoid(const SystemHolder& system)
{
    EllipsoidHolder ellipsoid;
    requireOk(Library::CoordinateReferenceSystemUtil::GetEllipsoid(system.get(), ellipsoid.put()));
    return ellipsoid;
}

SystemHolder userSystem(const wchar_t* code)
{
    SystemHolder definition;
    requireOk(Library::CoordinateReferenceSystemDefinition::CreateFromText(L"+proj=longlat +a=6378000 +rf=298 +no_defs",
                                                                           code, definition.put()));
    return definition;
}

std::wstring serializedText(const Library::DefinitionBase* definition, bool includeDependents)
{
    std::vector<unsigned char> bytes(65536);
    requireOk(Library::DefinitionStream::Serialize_s(definition, bytes.data(), bytes.size(), Library::formatText, -1,
                                                     includeDependents));
    const std::wstring text = Embedded::wideFromUtf16le({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return text.substr(0, text.find(L'\0'));
}

std::wstring exportWkt(const SystemHolder& system)
{
    std::vector<wchar_t> wkt(4096);
    const Library::Status status =
        Library::FormatConverter::DefinitionToWkt_s(system.get(), Library::wktFlavorDefault, wkt.data(), wkt.size());
    if (status != Library::statusInexact)
        requireOk(status);
    return wkt.data();
}

std::wstring joinTexts(const Texts& texts)
{
    std::wstring joined;
    for (const std::wstring& text : texts) {
        const std::size_t begin = text.find(L'[');
        const std::size_t end = text.rfind(L']');
        if (begin == std::wstring::npos || end == std::wstring::npos)
            throw std::runtime_error("a text without a list of definitions");
        joined += joined.empty() ? text.substr(0, begin + 1) : L",";
        joined += text.substr(begin + 1, end - begin - 1);
    }
    return joined + texts.back().substr(texts.back().rfind(L']'));
}

std::wstring describe(const Library::DefinitionBase* definition)
{
    if (definition == nullptr)
        return L"none";
    const wchar_t* code = nullptr;
    requireOk(definition->GetCode(code));
    return std::wstring(kindPrefix(definition)) + code;
}

Texts describe(const ArrayHolder& definitions)
{
    Texts texts;
    for (int index = 0; definitions && index < definitions->GetCount(); ++index)
        texts.push_back(describe(definitions->GetItem(index)));
    return texts;
}

Texts describe(const Orvel::DefinitionSet& set)
{
    return {describe(set.system.get()), describe(set.datum.get()), describe(set.ellipsoid.get())};
}

} // namespace Tests
