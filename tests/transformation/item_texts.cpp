#include "transformation/item_texts.h"

namespace Tests {

ItemFields ExpectedItem::withVersion(const wchar_t* version) const
{
    return {std::wstring(source), std::wstring(target), std::wstring(name), type, std::wstring(note), version};
}

} // namespace Tests
