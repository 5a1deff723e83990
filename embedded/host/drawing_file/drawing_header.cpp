#include "embedded/host/drawing_file/drawing_header.h"

#include <map>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/save_plan.h"
#include "embedded/host/drawing_file/object_rows.h"

namespace Embedded {
namespace {

constexpr const char* kVersion = "drawing version";

/// The handles of a header by the names of their rows; `visit` gets whether there must be one.
template <class Header, class Visit>
void forEachHandle(Header& header, Visit visit)
{
    visit("next handle", header.nextHandle, true);
    visit("named objects", header.namedObjects, true);
    visit("registered applications", header.regAppTable, true);
    visit("blocks", header.blockTable, true);
    visit("model space", header.modelSpace, true);
    visit("geo data", header.geoData, false);
}

[[noreturn]] void refuseHeader(const std::string& message)
{
    throwDamage(message, "header");
}

std::map<std::string, std::int64_t> rowsOfHeader(DrawingConnection& connection)
{
    std::map<std::string, std::int64_t> values;
    RowDigest digest;
    Query query(connection, "SELECT * FROM header");
    while (query.next()) {
        const StoredRow row = query.row("header", digest);
        const auto* field = std::get_if<StoredText>(&row[0]);
        const auto* value = std::get_if<std::int64_t>(&row[1]);
        if (field == nullptr || value == nullptr)
            refuseHeader("a row is not a field with a number");
        values.emplace(field->bytes, *value);
    }
    return values;
}

} // namespace

DrawingHeader makeHeader(const QeHost::DatabaseImp& database, QeDb::QeDbDwgVersion version)
{
    const QeHost::ObjectRecord* const geoData = QeHost::geoDataInDrawing(database);
    return {.version = version,
            .nextHandle = database.nextHandle,
            .namedObjects = database.namedObjects->handle,
            .regAppTable = database.regAppTable->handle,
            .blockTable = database.blockTable->handle,
            .modelSpace = database.modelSpace->handle,
            .geoData = geoData != nullptr ? geoData->handle : 0};
}

void writeHeader(DrawingConnection& connection, const DrawingHeader& header)
{
    if (!std::in_range<std::int64_t>(header.nextHandle))
        throwError(Qeapp::eInvalidInput, "has no more handles for new objects");
    Query(connection, "DELETE FROM header").run();
    const auto insert = [&](const char* field, std::int64_t value) {
        insertRow(connection, "INSERT INTO header VALUES (?, ?, ?)", "header", {StoredText{field, false}, value});
    };
    insert(kVersion, header.version);
    forEachHandle(header, [&](const char* field, const Handle& handle, bool /*mustBe*/) {
        if (handle != 0)
            insert(field, static_cast<std::int64_t>(handle));
    });
}

DrawingHeader readHeader(DrawingConnection& connection)
{
    std::map<std::string, std::int64_t> values = rowsOfHeader(connection);
    const auto take = [&](const std::string& field, bool mustBe) {
        const auto found = values.extract(field);
        if (found.empty() && mustBe)
            refuseHeader(field + " is missing");
        return found.empty() ? 0 : found.mapped();
    };
    DrawingHeader header;
    header.version = take(kVersion, true);
    if (header.version < QeDb::kOldestDwg || header.version > QeDb::kCurrentDwg)
        refuseHeader("there is no drawing version " + std::to_string(header.version));
    forEachHandle(header, [&](const char* field, Handle& handle, bool mustBe) {
        const std::int64_t value = take(field, mustBe);
        if (value < (mustBe ? 1 : 0))
            refuseHeader(std::string(field) + " is not a handle");
        handle = static_cast<Handle>(value);
    });
    if (!values.empty())
        refuseHeader("unknown field " + truncateForMessage(values.begin()->first));
    // A new object would take the place of an old one.
    if (Query last(connection, "SELECT handle FROM objects ORDER BY handle DESC LIMIT 1");
        last.next() && static_cast<Handle>(last.integer(0)) >= header.nextHandle)
        refuseHeader("the next handle is not above that of every object");
    return header;
}

} // namespace Embedded
