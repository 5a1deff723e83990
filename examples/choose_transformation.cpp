// Chooses the transformation between two coordinate systems for the working drawing, and finds it again.
// Run it: build/release/bin/example_choose_transformation
#include <iostream>
#include <memory>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"
#include "embedded/host/application/application.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

constexpr auto kDrawing = Cs::CsTransformationConfigTargetType::Drawing;

// Adds one choice to those that the drawing has.
bool chooseTransformation(const wchar_t* source, const wchar_t* target, const wchar_t* name)
{
    const Ptr<Cs::OrvelTransformationConfigItemCollection> choices(
        Cs::OrvelTransformationConfigItemCollection::CreateInstance());
    const Ptr<Cs::OrvelTransformationConfigItem> choice(Cs::OrvelTransformationConfigItem::CreateInstance());
    if (choices.get() == nullptr || choice.get() == nullptr)
        return false;
    wchar_t* text = nullptr;
    if (Cs::GetCsTransformationConfig(text, kDrawing)) {
        choices->FromXmlString(text);
        qeutDelBuffer(text); // only after true
    }
    choice->SetSourceCs(source);
    choice->SetTargetCs(target);
    choice->SetName(name);
    choice->SetType(2); // a geodetic transformation; 1 is a geodetic path
    choices->Add(choice.get());
    return Cs::SetCsTransformationConfig(choices->ToXmlString().c_str(), kDrawing);
}

void printChoice(const wchar_t* source, const wchar_t* target)
{
    Cs::TransformationInfo* const info = Cs::GetCsConfiguredTransformationInfo(source, target);
    std::wcout << source << L" to " << target << L": " << (info != nullptr ? info->GetName() : L"no choice") << L'\n';
    Cs::TransformationInfo::Destroy(info);
}

} // namespace

int main()
{
    // The embedded host's way to a working drawing; in a product the user has opened one.
    QeApDocument* const document = Embedded::openDocument(std::make_unique<QeDbDatabase>());
    const bool isChosen = chooseTransformation(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)") &&
                          chooseTransformation(L"EPSG:4314", L"EPSG:4326", L"DHDN to WGS 84 (2)");
    printChoice(L"EPSG:4230", L"EPSG:4326");
    printChoice(L"EPSG:4314", L"EPSG:4326");
    printChoice(L"EPSG:2263", L"EPSG:4326");
    return Embedded::closeDocument(document) == Qeapp::eOk && isChosen ? 0 : 1;
}
