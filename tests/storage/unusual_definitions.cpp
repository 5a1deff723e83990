#include "storage/unusual_definitions.h"

namespace Tests {
namespace {

class OtherDefinition final : public Library::DefinitionBase {
public:
    OtherDefinition() : DefinitionBase(nullptr) {}
};

} // namespace

SystemHolder UserSystem::makeSystem() const
{
    const std::wstring identifier = ellipsoidIdentifier.empty() ? L"" : L"," + ellipsoidIdentifier;
    const std::wstring text = L"GEOGCRS[\"" + name + L"\",DATUM[\"" + datum + L"\",ELLIPSOID[\"" + ellipsoid + L"\"," +
                              std::to_wstring(semiMajorAxis) + L",298,LENGTHUNIT[\"metre\",1]" + identifier +
                              L"]],CS[ellipsoidal,2],AXIS[\"latitude\",north],AXIS[\"longitude\",east],"
                              L"ANGLEUNIT[\"degree\",0.0174532925199433]]";
    SystemHolder definition;
    requireOk(
        Library::CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), code.c_str(), definition.put()));
    return definition;
}

DatumHolder UserSystem::makeDatum() const
{
    return getDatum(makeSystem());
}

EllipsoidHolder UserSystem::makeEllipsoid() const
{
    return getEllipsoid(makeSystem());
}

std::wstring varied(std::size_t characters)
{
    std::wstring text;
    for (std::size_t index = 0; index < characters; ++index)
        text += static_cast<wchar_t>(L'a' + (index * 7 + index / 26) % 26);
    return text;
}

Orvel::LibraryObject<Library::DefinitionBase> otherDefinition()
{
    return Orvel::LibraryObject<Library::DefinitionBase>(new OtherDefinition);
}

} // namespace Tests
