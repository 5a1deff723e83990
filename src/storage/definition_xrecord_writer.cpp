#include <new>

#include "storage/definition_group.h"
#include "storage/definition_xrecord.h"
#include "storage/host_holders.h"

namespace Orvel {
namespace {

resbuf& lastOf(resbuf& chain)
{
    resbuf* item = &chain;
    while (item->rbnext != nullptr)
        item = item->rbnext;
    return *item;
}

Qeapp::ErrorStatus appendGroup(resbuf& chain, const Library::DefinitionBase* definition)
{
    resbuf* const group = DefinitionToResbufGroup(definition);
    if (group == nullptr)
        return Qeapp::eInvalidResbuf;
    lastOf(chain).rbnext = group;
    return Qeapp::eOk;
}

// A datum or an ellipsoid that cannot be fetched stays null, and then there is no group for it.
Qeapp::ErrorStatus appendDatum(resbuf& chain, const Library::CoordinateReferenceSystemDefinition* definition)
{
    LibraryObject<Library::DatumDefinition> datum;
    static_cast<void>(definition->GetDatum(datum.put())); // see above
    return appendGroup(chain, datum.get());
}

Qeapp::ErrorStatus appendEllipsoid(resbuf& chain, const Library::CoordinateReferenceSystemDefinition* definition)
{
    LibraryObject<Library::EllipsoidDefinition> ellipsoid;
    static_cast<void>(Library::CoordinateReferenceSystemUtil::GetEllipsoid(definition, ellipsoid.put())); // see above
    return appendGroup(chain, ellipsoid.get());
}

Qeapp::ErrorStatus appendDatumAndEllipsoid(resbuf& chain,
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

Qeapp::ErrorStatus buildChain(const Library::CoordinateReferenceSystemDefinition* definition, ResbufChain& chain)
{
    chain.reset(qeutNewRb(QeRb::kXdataInteger32));
    if (!chain)
        return Qeapp::eOutOfMemory;
    chain->resval.rlong = kGroupsLayout;
    const Qeapp::ErrorStatus result = appendGroup(*chain.get(), definition);
    if (result != Qeapp::eOk)
        return result;
    int kind = 0;
    if (definition->GetKind(kind) != Library::statusOk)
        return Qeapp::eInvalidInput;
    return kind == Library::kindNotEarthReferenced ? Qeapp::eOk : appendDatumAndEllipsoid(*chain.get(), definition);
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

} // namespace

Qeapp::ErrorStatus WriteCsDefinitionXrecord(const Library::CoordinateReferenceSystemDefinition* definition,
                                            QeDbDatabase* database)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    if (definition == nullptr)
        return Qeapp::eInvalidInput;
    ResbufChain chain;
    const Qeapp::ErrorStatus result = buildChain(definition, chain);
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

} // namespace Orvel
