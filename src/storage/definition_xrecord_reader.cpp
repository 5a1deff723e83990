#include <cstdint>
#include <cwchar>
#include <utility>

#include "storage/definition_group.h"
#include "storage/definition_xrecord.h"
#include "storage/host_holders.h"

namespace Orvel {
namespace {

bool openXrecord(QeDbDatabase* database, HostObject<QeDbXrecord>& xrecord)
{
    NamedObjects dictionary;
    if (dictionary.openIn(database, QeDb::kForRead) != Qeapp::eOk)
        return false;
    QeDbObjectId id;
    return dictionary->getAt(kCsDefinitionXrecordKey, id) == Qeapp::eOk &&
           xrecord.open(id, QeDb::kForRead) == Qeapp::eOk;
}

bool startsWithLayout(const QeDbXrecord& xrecord)
{
    const QeDbXrecordIterator first(&xrecord);
    return !first.done() && first.curResType() == QeRb::kXdataInteger32;
}

/// The xrecord's chain; empty when it cannot be had, whatever the reason.
ResbufChain chainOf(const QeDbXrecord& xrecord, QeDbDatabase* database)
{
    ResbufChain chain;
    try {
        if (xrecord.rbChain(chain.put(), database) != Qeapp::eOk)
            chain.reset();
    } catch (...) { // a stored form that cannot be read is one that is not there
        chain.reset();
    }
    return chain;
}

bool closesGroup(const resbuf& item)
{
    return item.restype == QeRb::kXdataControl && item.resval.rstring != nullptr &&
           std::wcscmp(item.resval.rstring, L"}") == 0;
}

/// False when a group is not closed before the chain ends.
bool readGroups(const resbuf* item, DefinitionSet& definitions)
{
    while (item != nullptr) {
        definitions.take(ResbufGroupToDefinition(item));
        while (item != nullptr && !closesGroup(*item))
            item = item->rbnext;
        if (item == nullptr)
            return false;
        item = item->rbnext;
    }
    return true;
}

void readStandaloneChunks(const resbuf* item, DefinitionSet& definitions)
{
    for (; item != nullptr; item = item->rbnext)
        definitions.take(ResbufChunkToDefinition(item));
}

bool readChain(const resbuf* chain, bool hasLayout, DefinitionSet& definitions)
{
    const std::int32_t layout = hasLayout ? chain->resval.rlong : kStandaloneChunksLayout;
    const resbuf* const first = hasLayout ? chain->rbnext : chain;
    if (layout == kGroupsLayout)
        return readGroups(first, definitions);
    readStandaloneChunks(layout == kStandaloneChunksLayout ? first : nullptr, definitions);
    return layout == kStandaloneChunksLayout;
}

} // namespace

bool ReadCsDefinitionXrecord(QeDbDatabase* database, const wchar_t* code, DefinitionSet& definitions)
{
    definitions = DefinitionSet();
    HostObject<QeDbXrecord> xrecord;
    if (!openXrecord(database, xrecord))
        return false;
    const bool hasLayout = startsWithLayout(*xrecord.get());
    const ResbufChain chain = chainOf(*xrecord.get(), database);
    xrecord.reset();
    DefinitionSet found;
    if (!chain || !readChain(chain.get(), hasLayout, found))
        return false;
    if (!ValidateCsDefinitionSet(code, found.system.get(), found.datum.get(), found.ellipsoid.get()))
        return false;
    LinkDefinitionSet(found);
    definitions = std::move(found);
    return true;
}

} // namespace Orvel
