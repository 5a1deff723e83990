#include "transformation/config_text.h"

namespace Orvel {

wchar_t* sharedEmptyText()
{
    static wchar_t empty[] = L"";
    return empty;
}

HostString newConfigText(std::size_t characters)
{
    unsigned char* buffer = nullptr;
    static_cast<void>(
        qeutNewBuffer(buffer, characters * sizeof(wchar_t))); // the pointer stays null when memory is short
    return HostString(reinterpret_cast<wchar_t*>(buffer));
}

} // namespace Orvel
