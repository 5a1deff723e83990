#include "storage/definition_code.h"

#include "storage/library_holder.h"

namespace Orvel {

const wchar_t* definitionCode(const Library::DefinitionBase* definition)
{
    const wchar_t* code = nullptr;
    return definition != nullptr && definition->GetCode(code) == Library::statusOk ? code : nullptr;
}

bool isBlank(const wchar_t* text)
{
    return text == nullptr || *text == L'\0';
}

} // namespace Orvel
