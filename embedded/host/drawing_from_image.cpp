#include <unordered_map>

#include "embedded/host/database_imp.h"
#include "embedded/host/drawing_image.h"
#include "embedded/host/heap.h"
#include "embedded/host/symbol_table_search.h"
#include "platform/host/geodata.h"
#include "platform/host/xrecord.h"

namespace QeHost {
namespace {

QeDbObject* newObject(const Embedded::DictionaryImage& /*image*/)
{
    return makeHostObject<QeDbDictionary>();
}

QeDbObject* newObject(const Embedded::XrecordImage& /*image*/)
{
    return makeHostObject<QeDbXrecord>();
}

QeDbObject* newObject(const Embedded::RegAppTableImage& /*image*/)
{
    return makeHostObject<QeDbRegAppTable>();
}

QeDbObject* newObject(const Embedded::RegAppRecordImage& /*image*/)
{
    return makeHostObject<QeDbRegAppTableRecord>();
}

QeDbObject* newObject(const Embedded::BlockTableImage& /*image*/)
{
    return makeHostObject<QeDbBlockTable>();
}

QeDbObject* newObject(const Embedded::BlockRecordImage& /*image*/)
{
    return makeHostObject<QeDbBlockTableRecord>();
}

QeDbObject* newObject(const Embedded::GeoDataImage& /*image*/)
{
    return makeHostObject<QeDbGeoData>();
}

/// Fills a drawing in two rounds: first every object, so that then every handle can be resolved.
class Restorer {
public:
    Restorer(DatabaseImp& database, const Embedded::DrawingImage& image) : database_(database), image_(image) {}

    void run()
    {
        database_.clear();
        for (const Embedded::ObjectImage& object : image_.objects)
            create(object);
        database_.namedObjects = at(image_.namedObjects);
        database_.regAppTable = at(image_.regAppTable);
        database_.blockTable = at(image_.blockTable);
        for (const Embedded::ObjectImage& object : image_.objects)
            fill(object);
        // Only now have all the applications their names.
        for (const Embedded::ObjectImage& object : image_.objects)
            fillExtendedData(object);
        database_.modelSpace = findRecord(*database_.blockTable, kQeDbModelSpaceName);
        database_.nextHandle = image_.nextHandle;
    }

private:
    Stub* at(Embedded::Handle handle) const { return handle != 0 ? stubs_.at(handle) : nullptr; }

    void create(const Embedded::ObjectImage& image)
    {
        QeDbObject* object = std::visit([](const auto& contents) { return newObject(contents); }, image.contents);
        stubs_.emplace(image.handle, &database_.place(*object, nullptr, image.handle));
    }

    void fill(const Embedded::ObjectImage& image)
    {
        Stub& stub = *at(image.handle);
        stub.object->imp().state->owner = at(image.owner);
        std::visit([&](const auto& contents) { fillContents(stub, contents); }, image.contents);
    }

    void fillContents(const Stub& stub, const Embedded::DictionaryImage& image)
    {
        auto& entries = writableStateOf<DictionaryState>(*stub.object).entries;
        for (const auto& [key, handle] : image.entries)
            entries.emplace(key, at(handle));
    }

    void fillContents(const Stub& stub, const Embedded::XrecordImage& image)
    {
        writableStateOf<XrecordState>(*stub.object).chain = image.chain;
    }

    void fillContents(const Stub& stub, const Embedded::RegAppTableImage& image) { fillRecords(stub, image.records); }

    void fillContents(const Stub& stub, const Embedded::BlockTableImage& image) { fillRecords(stub, image.records); }

    void fillRecords(const Stub& stub, const std::vector<Embedded::Handle>& handles)
    {
        auto& records = writableStateOf<SymbolTableState>(*stub.object).records;
        for (const Embedded::Handle handle : handles)
            records.push_back(at(handle));
    }

    void fillContents(const Stub& stub, const Embedded::RegAppRecordImage& image)
    {
        writableStateOf<SymbolRecordState>(*stub.object).name = image.name;
    }

    void fillContents(const Stub& stub, const Embedded::BlockRecordImage& image)
    {
        writableStateOf<SymbolRecordState>(*stub.object).name = image.name;
    }

    void fillContents(Stub& stub, const Embedded::GeoDataImage& image)
    {
        auto& state = writableStateOf<GeoDataState>(*stub.object);
        state.coordinateSystem = image.coordinateSystem;
        state.block = QeDbObjectId(at(image.block));
        database_.geoDataObjects.push_back(&stub);
    }

    void fillExtendedData(const Embedded::ObjectImage& image)
    {
        auto& data = at(image.handle)->object->imp().state->extendedData;
        for (const auto& [application, chain] : image.extendedData)
            data.emplace(findRecord(*database_.regAppTable, application), chain);
    }

    DatabaseImp& database_;
    const Embedded::DrawingImage& image_;
    std::unordered_map<Embedded::Handle, Stub*> stubs_;
};

} // namespace
} // namespace QeHost

std::unique_ptr<QeDbDatabase> Embedded::databaseFrom(const DrawingImage& image)
{
    const auto version = static_cast<QeDb::QeDbDwgVersion>(image.drawingVersion);
    auto database = std::make_unique<QeDbDatabase>(version);
    QeHost::Restorer(database->imp(), image).run();
    return database;
}
