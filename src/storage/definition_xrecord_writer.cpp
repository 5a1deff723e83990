#include <new>

#include "storage/definition_group.h"
#include "storage/definition_xrecord.h"
#include "storage/resbuf_chain_builder.h"

namespace Orvel {
namespace {

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

} // namespace Orvel
