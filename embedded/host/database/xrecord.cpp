#include "platform/host/xrecord.h"

#include <utility>

#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/resbuf_chain.h"

namespace QeHost {
namespace {

struct XrecordState final : ObjectState {
    Embedded::ResbufValues values;

    void visit(FieldVisitor& visitor) override { visitor.values(values); }
};

/// Returns whether the caller names another drawing than the one that the record is in.
bool isForeign(const QeDbObject& record, const QeDbDatabase* database)
{
    return database != nullptr && record.database() != nullptr && record.database() != database;
}

} // namespace
} // namespace QeHost

QeRxClass* QeDbXrecord::desc()
{
    static QeRxClass descriptor(L"QeDbXrecord", QeDbObject::desc());
    return &descriptor;
}

QeRxClass* QeDbXrecord::isA() const
{
    return desc();
}

QeDbXrecord::QeDbXrecord() : QeDbObject(new QeHost::XrecordState)
{
}

Qeapp::ErrorStatus QeDbXrecord::setFromRbChain(const resbuf* chain, QeDbDatabase* database)
{
    if (const auto injected = QeHost::injectedFault("QeDbXrecord::setFromRbChain"))
        return *injected;
    if (!imp().canWrite())
        return Qeapp::eNotOpenForWrite;
    if (QeHost::isForeign(*this, database))
        return Qeapp::eWrongDatabase;
    std::optional<Embedded::ResbufValues> values = QeHost::valuesOf(chain);
    if (!values)
        return Qeapp::eInvalidResbuf;
    QeHost::writableStateOf<QeHost::XrecordState>(*this).values = std::move(*values);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbXrecord::rbChain(resbuf*& chain, QeDbDatabase* database) const
{
    chain = nullptr;
    if (const auto injected = QeHost::injectedFault("QeDbXrecord::rbChain"))
        return *injected;
    if (!imp().canRead())
        return Qeapp::eNotOpenForRead;
    if (QeHost::isForeign(*this, database))
        return Qeapp::eWrongDatabase;
    QeHost::ChainBuilder copy;
    if (!copy.append(QeHost::stateOf<QeHost::XrecordState>(*this).values))
        return Qeapp::eOutOfMemory;
    chain = copy.release();
    return Qeapp::eOk;
}

QeDbXrecordIterator::QeDbXrecordIterator(const QeDbXrecord* record) : record_(record)
{
}

bool QeDbXrecordIterator::done() const
{
    return record_ == nullptr || position_ >= QeHost::stateOf<QeHost::XrecordState>(*record_).values.size();
}

bool QeDbXrecordIterator::next()
{
    if (done())
        return false;
    ++position_;
    return !done();
}

short QeDbXrecordIterator::curResType() const
{
    if (done())
        return -1;
    return static_cast<short>(QeHost::stateOf<QeHost::XrecordState>(*record_).values[position_].code);
}
