#include "transformation/config_text.h"

#include "storage/ignore_result.h"

namespace Orvel {

wchar_t* sharedEmptyText()
{
    static wchar_t empty[] = L"";
    return empty;
}

HostString newConfigText(std::size_t characters)
{
    unsigned char* buffer = nullptr;
    // The pointer stays null when memory is short.
    ignoreResult([&] { return qeutNewBuffer(buffer, characters * sizeof(wchar_t)); });
    return HostString(reinterpret_cast<wchar_t*>(buffer));
}

} // namespace Orvel
