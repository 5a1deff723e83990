#include "embedded/host/database/extended_data.h"

#include <algorithm>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/resbuf_chain.h"
#include "embedded/host/database/symbol_table.h"

namespace QeHost {
namespace {

constexpr short kLowestCode = 1000;
constexpr short kLongestChunkInBytes = 127;

using Applications = std::vector<std::pair<ObjectRecord*, Embedded::ResbufValues>>;

bool fitsExtendedData(const resbuf& item)
{
    if (item.restype < kLowestCode)
        return false;
    return qeutValueKind(item.restype) != QeRb::ValueKind::binary || item.resval.rbinary.clen <= kLongestChunkInBytes;
}

/// Begins the data of the application that the item names.
Qeapp::ErrorStatus beginApplication(const DatabaseImp& database, const Embedded::ResbufValue& item, Applications& found)
{
    ObjectRecord* record = findRecord(*database.regAppTable, std::get<std::wstring>(item.value));
    if (record == nullptr)
        return Qeapp::eRegappNotRegistered;
    found.emplace_back(record, Embedded::ResbufValues{});
    return Qeapp::eOk;
}

Qeapp::ErrorStatus take(const DatabaseImp& database, const resbuf& item, Applications& found)
{
    std::optional<Embedded::ResbufValue> value = valueOf(item);
    if (!value || !fitsExtendedData(item))
        return Qeapp::eInvalidResbuf;
    if (value->code == QeRb::kXdataAppName)
        return beginApplication(database, *value, found);
    if (found.empty())
        return Qeapp::eInvalidResbuf;
    found.back().second.push_back(std::move(*value));
    return Qeapp::eOk;
}

Qeapp::ErrorStatus split(const DatabaseImp& database, const resbuf* chain, Applications& found)
{
    if (chain == nullptr)
        return Qeapp::eInvalidResbuf;
    for (; chain != nullptr; chain = chain->rbnext) {
        if (const Qeapp::ErrorStatus status = take(database, *chain, found); status != Qeapp::eOk)
            return status;
    }
    return Qeapp::eOk;
}

void replace(std::map<ObjectRecord*, Embedded::ResbufValues>& data, Applications&& applications)
{
    for (auto& [record, chain] : applications) {
        if (chain.empty())
            data.erase(record);
        else
            data.insert_or_assign(record, std::move(chain));
    }
}

} // namespace

std::vector<std::pair<std::wstring, Embedded::ResbufValues>> extendedDataByName(const QeDbObject& object)
{
    std::vector<std::pair<std::wstring, Embedded::ResbufValues>> data;
    for (const auto& [record, chain] : object.imp().state->extendedData) {
        if (isLive(record))
            data.emplace_back(recordName(*record), chain);
    }
    std::sort(data.begin(), data.end(), [](const auto& left, const auto& right) {
        return Embedded::toLowerAscii(left.first) < Embedded::toLowerAscii(right.first);
    });
    return data;
}

} // namespace QeHost

resbuf* QeDbObject::xData(const wchar_t* appName) const
{
    if (QeHost::isFaultInjected("QeDbObject::xData") || !imp_->canRead())
        return nullptr;
    QeHost::ChainBuilder chain;
    for (const auto& [name, values] : QeHost::extendedDataByName(*this)) {
        if (appName != nullptr && !Embedded::equalsIgnoringAsciiCase(appName, name))
            continue;
        if (!chain.append(Embedded::ResbufValue{QeRb::kXdataAppName, name}) || !chain.append(values))
            return nullptr;
    }
    return chain.release();
}

Qeapp::ErrorStatus QeDbObject::setXData(const resbuf* chain)
{
    if (const auto injected = QeHost::injectedFault("QeDbObject::setXData"))
        return *injected;
    if (imp_->record == nullptr)
        return Qeapp::eNotInDatabase;
    if (!imp_->canWrite())
        return Qeapp::eNotOpenForWrite;
    QeHost::Applications applications;
    const Qeapp::ErrorStatus status = QeHost::split(*imp_->record->database, chain, applications);
    if (status != Qeapp::eOk)
        return status;
    auto& data = QeHost::writableStateOf<QeHost::ObjectState>(*this).extendedData;
    auto replaced = data; // so that, without memory, the object's data stays as it was
    QeHost::replace(replaced, std::move(applications));
    data.swap(replaced);
    return Qeapp::eOk;
}
