#include "embedded/host/drawing_image.h"

#include <algorithm>
#include <unordered_set>

#include "embedded/host/database_imp.h"
#include "embedded/host/extended_data.h"
#include "embedded/host/symbol_name.h"
#include "embedded/host/symbol_table_search.h"
#include "platform/host/geodata.h"
#include "platform/host/xrecord.h"

namespace QeHost {
namespace {

using Embedded::Handle;

Handle handleOf(const Stub* stub)
{
    return stub != nullptr ? stub->handle : 0;
}

/// Finds what the drawing's roots own, directly or not. What was removed from its dictionary is not among it: nothing
/// refers to it any more, and no one could find it in a file.
class Reachable {
public:
    explicit Reachable(const DatabaseImp& database)
    {
        add(database.namedObjects);
        add(database.regAppTable);
        add(database.blockTable);
        for (std::size_t next = 0; next < found_.size(); ++next)
            addOwned(*found_[next]->object);
        if (const Stub* geoData = database.geoData(); geoData != nullptr && known_.contains(ownerOf(*geoData)))
            add(geoData);
        std::sort(found_.begin(), found_.end(),
                  [](const Stub* left, const Stub* right) { return left->handle < right->handle; });
    }

    const std::vector<const Stub*>& inHandleOrder() const { return found_; }

private:
    static const Stub* ownerOf(const Stub& stub) { return stub.object->imp().state->owner; }

    void add(const Stub* stub)
    {
        if (isLive(stub) && known_.insert(stub).second)
            found_.push_back(stub);
    }

    void addOwned(const QeDbObject& object)
    {
        if (object.isKindOf(QeDbDictionary::desc())) {
            for (const auto& [key, stub] : stateOf<DictionaryState>(object).entries)
                add(stub);
        } else if (object.isKindOf(QeDbSymbolTable::desc())) {
            for (const Stub* record : stateOf<SymbolTableState>(object).records)
                add(record);
        }
    }

    std::vector<const Stub*> found_;
    std::unordered_set<const Stub*> known_;
};

Embedded::DictionaryImage dictionaryImage(const QeDbObject& dictionary)
{
    Embedded::DictionaryImage image;
    for (const auto& [key, stub] : stateOf<DictionaryState>(dictionary).entries) {
        if (isLive(stub))
            image.entries.emplace_back(key, stub->handle);
    }
    return image;
}

std::vector<Handle> recordHandles(const QeDbObject& table)
{
    std::vector<std::pair<std::wstring, Handle>> records;
    for (const Stub* record : stateOf<SymbolTableState>(table).records) {
        if (isLive(record))
            records.emplace_back(foldedName(nameOf(*record)), record->handle);
    }
    std::sort(records.begin(), records.end());
    std::vector<Handle> handles;
    for (const auto& [name, handle] : records)
        handles.push_back(handle);
    return handles;
}

decltype(Embedded::ObjectImage::contents) contentsOf(const QeDbObject& object)
{
    if (object.isKindOf(QeDbDictionary::desc()))
        return dictionaryImage(object);
    if (object.isKindOf(QeDbXrecord::desc()))
        return Embedded::XrecordImage{stateOf<XrecordState>(object).chain};
    if (object.isKindOf(QeDbRegAppTable::desc()))
        return Embedded::RegAppTableImage{recordHandles(object)};
    if (object.isKindOf(QeDbBlockTable::desc()))
        return Embedded::BlockTableImage{recordHandles(object)};
    if (object.isKindOf(QeDbRegAppTableRecord::desc()))
        return Embedded::RegAppRecordImage{stateOf<SymbolRecordState>(object).name};
    if (object.isKindOf(QeDbBlockTableRecord::desc()))
        return Embedded::BlockRecordImage{stateOf<SymbolRecordState>(object).name};
    const auto& geoData = stateOf<GeoDataState>(object);
    return Embedded::GeoDataImage{geoData.coordinateSystem, geoData.block.handle()};
}

Embedded::ObjectImage objectImage(const Stub& stub)
{
    const QeDbObject& object = *stub.object;
    return {stub.handle, handleOf(object.imp().state->owner), extendedDataOf(object), contentsOf(object)};
}

} // namespace
} // namespace QeHost

Embedded::DrawingImage Embedded::imageOf(const QeDbDatabase& database)
{
    const QeHost::DatabaseImp& imp = database.imp();
    DrawingImage image{.drawingVersion = imp.version,
                       .nextHandle = imp.nextHandle,
                       .namedObjects = QeHost::handleOf(imp.namedObjects),
                       .regAppTable = QeHost::handleOf(imp.regAppTable),
                       .blockTable = QeHost::handleOf(imp.blockTable),
                       .objects = {}};
    QeHost::Reachable reachable(imp);
    for (const QeHost::Stub* stub : reachable.inHandleOrder())
        image.objects.push_back(QeHost::objectImage(*stub));
    return image;
}
