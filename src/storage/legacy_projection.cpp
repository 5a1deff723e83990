#include "storage/legacy_projection.h"

#include <new>
#include <string_view>

#include "storage/definition_code.h"
#include "storage/host_holders.h"

namespace Orvel {
namespace {

/// Some older products wrote "." for "none".
constexpr std::wstring_view kNoCode = L".";

/// Null when the record, which stands second in its chain, is absent or says that there is no code.
const wchar_t* codeIn(const resbuf* chain)
{
    const resbuf* const item = chain != nullptr ? chain->rbnext : nullptr;
    if (item == nullptr || item->restype != QeRb::kXdataString)
        return nullptr;
    const wchar_t* const code = item->resval.rstring;
    return isLegacyProjectionCode(code) ? code : nullptr;
}

Qeapp::ErrorStatus addApplication(QeDbRegAppTable& table)
{
    const Qeapp::ErrorStatus upgraded = table.upgradeOpen();
    if (upgraded != Qeapp::eOk)
        return upgraded;
    HostObject<QeDbRegAppTableRecord> record(new (std::nothrow) QeDbRegAppTableRecord);
    if (!record)
        return Qeapp::eOutOfMemory;
    const Qeapp::ErrorStatus named = record->setName(kLegacyProjectionApplication);
    if (named != Qeapp::eOk)
        return named;
    QeDbObjectId id;
    return table.add(id, record.get());
}

Qeapp::ErrorStatus registerApplication(QeDbDatabase* database)
{
    HostObject<QeDbRegAppTable> table;
    const Qeapp::ErrorStatus opened =
        table.openWith([&](QeDbRegAppTable*& object) { return database->getRegAppTable(object, QeDb::kForRead); });
    if (opened != Qeapp::eOk)
        return opened;
    return table->has(kLegacyProjectionApplication) ? Qeapp::eOk : addApplication(*table.get());
}

/// The application's name alone stands for "no data".
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
    const wchar_t* const code = codeIn(chain.get());
    try {
        return code != nullptr ? code : L"";
    } catch (const std::bad_alloc&) { // reading has no failures to report
        return {};
    }
}

Qeapp::ErrorStatus WriteLegacyProjectionCode(QeDbDatabase* database, const wchar_t* code)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    if (!isBlank(code) && !isLegacyProjectionCode(code))
        return Qeapp::eInvalidInput; // before anything is changed
    const Qeapp::ErrorStatus registered = registerApplication(database);
    if (registered != Qeapp::eOk)
        return registered;
    NamedObjects dictionary;
    const Qeapp::ErrorStatus opened = dictionary.openIn(database, QeDb::kForWrite);
    if (opened != Qeapp::eOk)
        return opened;
    const ResbufChain chain = recordChain(code);
    return chain ? dictionary->setXData(chain.get()) : Qeapp::eOutOfMemory;
}

} // namespace Orvel
