#include "coordsys/orvel_transformation_config_item.h"

#include <cstdint>
#include <new>

#include "transformation/item_text.h"
#include "transformation/transformation_config_item_imp.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

void appendElement(std::wstring& text, const wchar_t* tag, const std::wstring& value)
{
    text.append(L"<").append(tag).append(L">").append(value).append(L"</").append(tag).append(L">");
}

/// A field that the text lacks keeps its value.
void setField(std::wstring& field, const std::optional<std::wstring_view>& value)
{
    if (value)
        field = *value;
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
    if (sourceCs_.empty() || targetCs_.empty() || name_.empty() || type_ == 0)
        return {};
    std::wstring text = L"<Item>";
    appendElement(text, L"Version", version_);
    appendElement(text, L"SourceCs", sourceCs_);
    appendElement(text, L"TargetCs", targetCs_);
    appendElement(text, L"Name", name_);
    const auto type = static_cast<std::int16_t>(type_); // the number is written from its low 16 bits
    appendElement(text, L"Type", std::to_wstring(type));
    appendElement(text, L"Note", note_);
    text.append(L"</Item>");
    return text;
}

void OrvelTransformationConfigItemImp::FromXmlString(const wchar_t* text)
{
    // Reads a copy, because the text may be one of the fields that it replaces.
    if (text != nullptr)
        fromXmlText(std::wstring(text));
}

void OrvelTransformationConfigItemImp::fromXmlText(std::wstring_view text)
{
    const ItemText item = parseItemText(text);
    setField(sourceCs_, item.sourceCs);
    setField(targetCs_, item.targetCs);
    setField(name_, item.name);
    setField(note_, item.note);
    type_ = item.type.value_or(type_);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
