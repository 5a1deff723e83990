#include "coordsys/orvel_transformation_config_item.h"

#include <cstdint>
#include <new>

#include "transformation/transformation_config_item_imp.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

void appendElement(std::wstring& text, const wchar_t* tag, std::wstring_view value)
{
    text.append(L"<").append(tag).append(L">").append(value).append(L"</").append(tag).append(L">");
}

/// A field that the text lacks keeps its value.
template <class Text>
void setField(Text& field, const std::optional<std::wstring_view>& value)
{
    if (value)
        field.assign(*value);
}

} // namespace

OrvelTransformationConfigItem::OrvelTransformationConfigItem() = default;
OrvelTransformationConfigItem::~OrvelTransformationConfigItem() = default;
OrvelTransformationConfigItemImp::~OrvelTransformationConfigItemImp() = default;

OrvelTransformationConfigItem* OrvelTransformationConfigItem::CreateInstance()
{
    try {
        return new OrvelTransformationConfigItemImp;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void OrvelTransformationConfigItem::Dispose()
{
    delete this;
}

void OrvelTransformationConfigItemImp::Dispose()
{
    delete this;
}

std::wstring OrvelTransformationConfigItemImp::ToXmlString()
{
    const std::wstring_view sourceCs = sourceCs_.c_str();
    const std::wstring_view targetCs = targetCs_.c_str();
    if (sourceCs.empty() || targetCs.empty() || name_.empty() || type_ == 0)
        return {};
    std::wstring text = L"<Item>";
    appendElement(text, L"Version", version_);
    appendElement(text, L"SourceCs", sourceCs);
    appendElement(text, L"TargetCs", targetCs);
    appendElement(text, L"Name", name_);
    const auto type = static_cast<std::int16_t>(type_); // the number is written from its low 16 bits
    appendElement(text, L"Type", std::to_wstring(type));
    appendElement(text, L"Note", note_);
    text.append(L"</Item>");
    return text;
}

void OrvelTransformationConfigItemImp::FromXmlString(const wchar_t* text)
{
    if (text == nullptr)
        return;
    const std::wstring copy(text); // the text may be one of the fields that it replaces
    setFields(parseItemText(copy));
}

void OrvelTransformationConfigItemImp::setFields(const ItemText& fields)
{
    setField(sourceCs_, fields.sourceCs);
    setField(targetCs_, fields.targetCs);
    setField(name_, fields.name);
    setField(note_, fields.note);
    type_ = fields.type.value_or(type_);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
