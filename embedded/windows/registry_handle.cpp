#include "embedded/windows/registry_handle.h"

#include <map>
#include <memory>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/windows/registry_call.h"

namespace {

RegistryKeyHandle currentUser;

} // namespace

const HKEY HKEY_CURRENT_USER = &currentUser;

namespace Embedded {
namespace {

std::map<HKEY, std::unique_ptr<RegistryKeyHandle>>& openHandles()
{
    static std::map<HKEY, std::unique_ptr<RegistryKeyHandle>> handles;
    return handles;
}

} // namespace

HKEY openHandle(std::wstring path, REGSAM access)
{
    auto handle = std::make_unique<RegistryKeyHandle>(RegistryKeyHandle{std::move(path), access});
    const HKEY key = handle.get();
    openHandles().emplace(key, std::move(handle));
    ResourceCounters::add(ResourceKind::registryKey);
    return key;
}

void requireHandle(HKEY key, REGSAM access)
{
    if (key != HKEY_CURRENT_USER && !openHandles().contains(key))
        failRegistryCall(ERROR_INVALID_HANDLE); // `key` may point anywhere
    if ((key->access & access) != access)
        failRegistryCall(ERROR_ACCESS_DENIED);
}

bool closeHandle(HKEY key)
{
    if (key == HKEY_CURRENT_USER)
        return true;
    if (openHandles().erase(key) == 0)
        return false;
    ResourceCounters::remove(ResourceKind::registryKey);
    return true;
}

} // namespace Embedded
