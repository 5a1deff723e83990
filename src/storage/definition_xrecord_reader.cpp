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
    try {
        ResbufChain chain;
        if (xrecord.rbChain(chain.put(), database) == Qeapp::eOk)
            return chain;
    } catch (...) { // a stored form that cannot be read is one that is not there
    }
    return ResbufChain();
}

/// What the xrecord held when it was open.
struct StoredChain {
    bool hasLayout;
    ResbufChain items;
};

StoredChain fetchChain(QeDbDatabase* database)
{
    HostObject<QeDbXrecord> xrecord;
    if (!openXrecord(database, xrecord))
        return {};
    return {.hasLayout = startsWithLayout(*xrecord.get()), .items = chainOf(*xrecord.get(), database)};
}

bool closesGroup(const resbuf& item)
{
    return item.restype == QeRb::kXdataControl && item.resval.rstring != nullptr &&
           std::wcscmp(item.resval.rstring, L"}") == 0;
}

/// False when a group is not closed before the chain ends. Whatever its own text, the opening brace closes nothing.
bool readGroups(const resbuf* opening, DefinitionSet& definitions)
{
    while (opening != nullptr) {
        definitions.take(ResbufGroupToDefinition(opening));
        const resbuf* closing = opening->rbnext;
        while (closing != nullptr && !closesGroup(*closing))
            closing = closing->rbnext;
        if (closing == nullptr)
            return false;
        opening = closing->rbnext;
    }
    return true;
}

void readStandaloneChunks(const resbuf* item, DefinitionSet& definitions)
{
    for (; item != nullptr; item = item->rbnext)
        definitions.take(ResbufChunkToDefinition(item));
}

/// False when the chain cannot be read to its end. Of a layout that is not known nothing is read.
bool readChain(const StoredChain& chain, DefinitionSet& definitions)
{
    const std::int32_t layout = chain.hasLayout ? chain.items->resval.rlong : kStandaloneChunksLayout;
    const resbuf* const first = chain.hasLayout ? chain.items->rbnext : chain.items.get();
    if (layout == kGroupsLayout)
        return readGroups(first, definitions);
    if (layout == kStandaloneChunksLayout)
        readStandaloneChunks(first, definitions);
    return true;
}

} // namespace

bool ReadCsDefinitionXrecord(QeDbDatabase* database, const wchar_t* code, DefinitionSet& definitions)
{
    definitions = DefinitionSet();
    const StoredChain chain = fetchChain(database);
    DefinitionSet found;
    if (!chain.items || !readChain(chain, found))
        return false;
    if (!ValidateCsDefinitionSet(code, found.system.get(), found.datum.get(), found.ellipsoid.get()))
        return false;
    LinkDefinitionSet(found);
    definitions = std::move(found);
    return true;
}

} // namespace Orvel
