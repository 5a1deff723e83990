// Chooses the transformation between two coordinate systems for the working drawing, and finds it again.
#include "client.h"
#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

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

// The name of the transformation, empty without a choice.
std::wstring chosenTransformation(const wchar_t* source, const wchar_t* target)
{
    Cs::TransformationInfo* const info = Cs::GetCsConfiguredTransformationInfo(source, target);
    std::wstring name = info != nullptr ? info->GetName() : L"";
    Cs::TransformationInfo::Destroy(info);
    return name;
}
