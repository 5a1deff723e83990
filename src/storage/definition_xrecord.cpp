#include "storage/definition_xrecord.h"

#include <cstdint>
#include <cwchar>
#include <new>
#include <utility>

#include "storage/definition_group.h"
#include "storage/host_holders.h"
#include "storage/resbuf_chain_builder.h"

namespace Orvel {
namespace {

// Writing.

Qeapp::ErrorStatus appendGroup(ResbufChainBuilder& chain, const Library::DefinitionBase* definition)
{
    return chain.append(DefinitionToResbufGroup(definition)) ? Qeapp::eOk : Qeapp::eInvalidResbuf;
}

Qeapp::ErrorStatus appendDatum(ResbufChainBuilder& chain,
                               const Library::CoordinateReferenceSystemDefinition* definition)
{
    LibraryObject<Library::DatumDefinition> datum;
    if (definition->GetDatum(datum.put()) != Library::statusOk)
        return Qeapp::eInvalidInput;
    return appendGroup(chain, datum.get());
}

Qeapp::ErrorStatus appendEllipsoid(ResbufChainBuilder& chain,
                                   const Library::CoordinateReferenceSystemDefinition* definition)
{
    LibraryObject<Library::EllipsoidDefinition> ellipsoid;
    if (Library::CoordinateReferenceSystemUtil::GetEllipsoid(definition, ellipsoid.put()) != Library::statusOk)
        return Qeapp::eInvalidInput;
    return appendGroup(chain, ellipsoid.get());
}

Qeapp::ErrorStatus appendDatumAndEllipsoid(ResbufChainBuilder& chain,
                                           const Library::CoordinateReferenceSystemDefinition* definition)
{
    LibraryObject<Library::CoordinateReferenceSystemOperation> operation;
    bool datumBased = false;
    if (Library::CoordinateReferenceSystemOperation::Load(definition, operation.put()) != Library::statusOk ||
        !operation || operation->IsDatumBased(datumBased) != Library::statusOk)
        return Qeapp::eInvalidInput;
    if (datumBased) {
        const Qeapp::ErrorStatus result = appendDatum(chain, definition);
        if (result != Qeapp::eOk)
            return result;
    }
    return appendEllipsoid(chain, definition);
}

ResbufChain layoutResbuf()
{
    ResbufChain layout(qeutNewRb(QeRb::kXdataInteger32));
    if (layout)
        layout->resval.rlong = kGroupsLayout;
    return layout;
}

Qeapp::ErrorStatus buildChain(ResbufChainBuilder& chain, const Library::CoordinateReferenceSystemDefinition* definition)
{
    if (!chain.append(layoutResbuf()))
        return Qeapp::eOutOfMemory;
    const Qeapp::ErrorStatus result = appendGroup(chain, definition);
    if (result != Qeapp::eOk)
        return result;
    int kind = 0;
    if (definition->GetKind(kind) != Library::statusOk)
        return Qeapp::eInvalidInput;
    return kind == Library::kindNotEarthReferenced ? Qeapp::eOk : appendDatumAndEllipsoid(chain, definition);
}

Qeapp::ErrorStatus putXrecord(QeDbDatabase* database, QeDbDictionary& dictionary, const resbuf* chain)
{
    HostObject<QeDbXrecord> xrecord(new (std::nothrow) QeDbXrecord);
    if (!xrecord)
        return Qeapp::eOutOfMemory;
    const Qeapp::ErrorStatus result = xrecord->setFromRbChain(chain, database);
    if (result != Qeapp::eOk)
        return result;
    QeDbObjectId id;
    return dictionary.setAt(kCsDefinitionXrecordKey, xrecord.get(), id);
}

Qeapp::ErrorStatus removeXrecord(QeDbDictionary& dictionary)
{
    QeDbObjectId id;
    const Qeapp::ErrorStatus result = dictionary.remove(kCsDefinitionXrecordKey, id);
    return result == Qeapp::eKeyNotFound ? Qeapp::eOk : result;
}

// Reading.

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

/// Copies the xrecord's chain. Empty when that fails for any reason.
ResbufChain copyChain(const QeDbXrecord& xrecord, QeDbDatabase* database)
{
    try {
        ResbufChain chain;
        if (xrecord.rbChain(chain.put(), database) == Qeapp::eOk)
            return chain;
    } catch (...) { // a stored form that cannot be read counts as missing
    }
    return ResbufChain();
}

/// The content of the xrecord, which is closed again.
struct StoredChain {
    bool hasLayout;
    ResbufChain items;
};

StoredChain fetchChain(QeDbDatabase* database)
{
    HostObject<QeDbXrecord> xrecord;
    if (!openXrecord(database, xrecord))
        return {};
    return {.hasLayout = startsWithLayout(*xrecord.get()), .items = copyChain(*xrecord.get(), database)};
}

bool closesGroup(const resbuf& item)
{
    return item.restype == QeRb::kXdataControl && item.resval.rstring != nullptr &&
           std::wcscmp(item.resval.rstring, L"}") == 0;
}

/// False when a group is not closed before the chain ends. The opening brace closes nothing, whatever its text is.
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

/// False when the chain cannot be read to its end. Reads nothing of an unknown layout.
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

Qeapp::ErrorStatus WriteCsDefinitionXrecord(const Library::CoordinateReferenceSystemDefinition* definition,
                                            QeDbDatabase* database)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    if (definition == nullptr)
        return Qeapp::eInvalidInput;
    ResbufChainBuilder chain;
    const Qeapp::ErrorStatus result = buildChain(chain, definition);
    return result == Qeapp::eOk ? StoreCsXrecordChain(database, chain.get()) : result;
}

Qeapp::ErrorStatus StoreCsXrecordChain(QeDbDatabase* database, const resbuf* chain)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    NamedObjects dictionary;
    const Qeapp::ErrorStatus result = dictionary.openIn(database, QeDb::kForWrite);
    if (result != Qeapp::eOk)
        return result;
    return chain != nullptr ? putXrecord(database, *dictionary.get(), chain) : removeXrecord(*dictionary.get());
}

bool ReadCsDefinitionXrecord(QeDbDatabase* database, const wchar_t* code, DefinitionSet& definitions)
{
    definitions = DefinitionSet();
    const StoredChain chain = fetchChain(database);
    DefinitionSet stored;
    if (!chain.items || !readChain(chain, stored))
        return false;
    if (!ValidateCsDefinitionSet(code, stored.system.get(), stored.datum.get(), stored.ellipsoid.get()))
        return false;
    linkDefinitionSet(stored);
    definitions = std::move(stored);
    return true;
}

} // namespace Orvel
