#include "storage/legacy_projection.h"

#include <new>
#include <string_view>

#include "storage/definition_code.h"
#include "storage/host_holders.h"

namespace Orvel {
namespace {

/// Some older products write "." for "none".
constexpr std::wstring_view kNoCode = L".";

/// Reads the second resbuf of the chain. Null when it is missing or holds no code.
const wchar_t* readCode(const resbuf* chain)
{
    const resbuf* const item = chain != nullptr ? chain->rbnext : nullptr;
    if (item == nullptr || item->restype != QeRb::kXdataString)
        return nullptr;
    const wchar_t* const code = item->resval.rstring;
    return isLegacyProjectionCode(code) ? code : nullptr;
}

Qeapp::ErrorStatus addApplication(QeDbRegAppTable& table)
{
    Qeapp::ErrorStatus result = table.upgradeOpen();
    if (result != Qeapp::eOk)
        return result;
    HostObject<QeDbRegAppTableRecord> record(new (std::nothrow) QeDbRegAppTableRecord);
    if (!record)
        return Qeapp::eOutOfMemory;
    result = record->setName(kLegacyProjectionApplication);
    if (result != Qeapp::eOk)
        return result;
    QeDbObjectId id;
    return table.add(id, record.get());
}

Qeapp::ErrorStatus registerApplication(QeDbDatabase* database)
{
    HostObject<QeDbRegAppTable> table;
    const Qeapp::ErrorStatus result =
        table.openWith([&](QeDbRegAppTable*& object) { return database->getRegAppTable(object, QeDb::kForRead); });
    if (result != Qeapp::eOk)
        return result;
    return table->has(kLegacyProjectionApplication) ? Qeapp::eOk : addApplication(*table.get());
}

/// The application's name alone means that there is no data.
ResbufChain recordChain(const wchar_t* code)
{
    if (isBlank(code))
        return ResbufChain(qeutBuildList(QeRb::kXdataAppName, kLegacyProjectionApplication, QeRb::kListEnd));
    return ResbufChain(
        qeutBuildList(QeRb::kXdataAppName, kLegacyProjectionApplication, QeRb::kXdataString, code, QeRb::kListEnd));
}

} // namespace

bool isLegacyProjectionCode(const wchar_t* code)
{
    return !isBlank(code) && code != kNoCode;
}

std::wstring ReadLegacyProjectionCode(QeDbDatabase* database)
{
    NamedObjects dictionary;
    if (dictionary.openIn(database, QeDb::kForRead) != Qeapp::eOk)
        return {};
    const ResbufChain chain(dictionary->xData(kLegacyProjectionApplication));
    const wchar_t* const code = readCode(chain.get());
    try {
        return code != nullptr ? code : L"";
    } catch (const std::bad_alloc&) { // this function has no way to report a failure
        return {};
    }
}

Qeapp::ErrorStatus WriteLegacyProjectionCode(QeDbDatabase* database, const wchar_t* code)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    if (!isBlank(code) && !isLegacyProjectionCode(code))
        return Qeapp::eInvalidInput; // before anything is changed
    Qeapp::ErrorStatus result = registerApplication(database);
    if (result != Qeapp::eOk)
        return result;
    NamedObjects dictionary;
    result = dictionary.openIn(database, QeDb::kForWrite);
    if (result != Qeapp::eOk)
        return result;
    const ResbufChain chain = recordChain(code);
    return chain ? dictionary->setXData(chain.get()) : Qeapp::eOutOfMemory;
}

} // namespace Orvel
