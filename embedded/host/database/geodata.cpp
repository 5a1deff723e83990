#include "platform/host/geodata.h"

#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"

namespace QeHost {
namespace {

struct GeoDataState final : ObjectState {
    std::wstring coordinateSystem;
    QeDbObjectId block;

    void visit(FieldVisitor& visitor) override
    {
        visitor.text("coordinate system", coordinateSystem);
        visitor.reference("block", block);
    }
};

/// Throws an Error.
Qeapp::ErrorStatus checkBlock(ObjectRecord* block)
{
    if (block == nullptr)
        return Qeapp::eNullObjectId;
    if (!isLive(block))
        return Qeapp::eObjectErased;
    return loadObject(*block).isKindOf(QeDbBlockTableRecord::desc()) ? Qeapp::eOk : Qeapp::eNotThatKindOfClass;
}

} // namespace
} // namespace QeHost

QeRxClass* QeDbGeoData::desc()
{
    static QeRxClass descriptor(L"QeDbGeoData", QeDbObject::desc());
    return &descriptor;
}

QeRxClass* QeDbGeoData::isA() const
{
    return desc();
}

QeDbGeoData::QeDbGeoData() : QeDbObject(new QeHost::GeoDataState)
{
}

const wchar_t* QeDbGeoData::coordinateSystem() const
{
    return QeHost::stateOf<QeHost::GeoDataState>(*this).coordinateSystem.c_str();
}

Qeapp::ErrorStatus QeDbGeoData::setCoordinateSystem(const wchar_t* text)
{
    if (const auto injected = QeHost::injectedFault("QeDbGeoData::setCoordinateSystem"))
        return *injected;
    if (!imp().canWrite())
        return Qeapp::eNotOpenForWrite;
    if (text == nullptr)
        return Qeapp::eInvalidInput;
    QeHost::writableStateOf<QeHost::GeoDataState>(*this).coordinateSystem = text;
    return Qeapp::eOk;
}

QeDbObjectId QeDbGeoData::blockTableRecordId() const
{
    return QeHost::stateOf<QeHost::GeoDataState>(*this).block;
}

Qeapp::ErrorStatus QeDbGeoData::setBlockTableRecordId(QeDbObjectId id)
{
    if (const auto injected = QeHost::injectedFault("QeDbGeoData::setBlockTableRecordId"))
        return *injected;
    if (imp().record != nullptr)
        return Qeapp::eAlreadyInDatabase;
    return QeHost::catchStatus([&] {
        const Qeapp::ErrorStatus status = QeHost::checkBlock(id.record());
        if (status == Qeapp::eOk)
            QeHost::writableStateOf<QeHost::GeoDataState>(*this).block = id;
        return status;
    });
}

Qeapp::ErrorStatus QeDbGeoData::postToDb(QeDbObjectId& id)
{
    id.setNull();
    if (const auto injected = QeHost::injectedFault("QeDbGeoData::postToDb"))
        return *injected;
    if (imp().record != nullptr)
        return Qeapp::eAlreadyInDatabase;
    QeHost::ObjectRecord* block = QeHost::stateOf<QeHost::GeoDataState>(*this).block.record();
    const Qeapp::ErrorStatus status = QeHost::catchStatus([&] { return QeHost::checkBlock(block); });
    if (status != Qeapp::eOk)
        return status;
    QeHost::DatabaseImp& database = *block->database;
    if (database.geoData() != nullptr)
        return Qeapp::eDuplicateKey;
    QeHost::reserveOneMore(database.geoDataObjects);
    QeHost::ObjectRecord& record = database.adopt(*this, block);
    database.geoDataObjects.push_back(&record);
    id = QeDbObjectId(&record);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id)
{
    id.setNull();
    if (const auto injected = QeHost::injectedFault("qedbGetGeoDataObjId", Qeapp::eInvalidInput))
        return *injected;
    if (database == nullptr)
        return Qeapp::eInvalidInput;
    id = QeDbObjectId(database->imp().geoData());
    return id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk;
}
