#include "embedded/host/drawing_file/object_rows.h"

#include <algorithm>
#include <map>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/host_error.h"
#include "embedded/host/database/symbol_table.h"
#include "embedded/host/drawing_file/stored_value.h"
#include "platform/host/resbuf.h"
#include "platform/host/symbol_table.h"

namespace Embedded {
namespace {

using QeHost::DictionaryEntries;
using QeHost::ExtendedData;
using QeHost::ObjectRecord;

constexpr std::int64_t kLowestExtendedCode = 1000;
constexpr std::size_t kLongestExtendedChunk = 127;

std::int64_t requireInteger(const StoredValue& value)
{
    const auto* integer = std::get_if<std::int64_t>(&value);
    if (integer == nullptr)
        throwDamage("expected an INTEGER");
    return *integer;
}

const std::string& requireText(const StoredValue& value)
{
    const auto* text = std::get_if<StoredText>(&value);
    if (text == nullptr || text->isBlob)
        throwDamage("expected a TEXT");
    return text->bytes;
}

ResbufValue requireResbuf(const StoredValue& code, const StoredValue& value, const std::string& place)
{
    Expected<ResbufValue> resbuf = resbufFromStored(requireInteger(code), value);
    if (!resbuf)
        throwDamage(resbuf.error().message, place);
    return std::move(*resbuf);
}

void requirePosition(const StoredValue& position, std::size_t expected, const std::string& place)
{
    if (requireInteger(position) != static_cast<std::int64_t>(expected))
        throwDamage("a value is missing at position " + std::to_string(expected), place);
}

/// Fills the fields that a class lists from the rows of one object.
class FieldReader final : public QeHost::FieldVisitor {
public:
    FieldReader(DrawingConnection& connection, ObjectRecord& objectRecord, const ObjectRow& own)
        : connection_(connection), objectRecord_(objectRecord), row_(own)
    {
        Query query(connection_, "SELECT * FROM fields WHERE object = ?", objectRecord_.handle);
        while (query.next()) {
            StoredRow row = next(query, "fields");
            std::string name = requireText(row[1]);
            fields_.emplace(std::move(name), std::move(row));
        }
    }

    void text(std::string_view field, std::wstring& text) override
    {
        const StoredRow row = take(field);
        Expected<std::wstring> wide = wideFromStored(row[2]);
        if (!wide)
            throwDamage(std::string(field) + " " + wide.error().message, place());
        text = std::move(*wide);
    }

    void reference(std::string_view field, QeDbObjectId& object) override
    {
        const StoredRow row = take(field);
        if (!std::holds_alternative<std::int64_t>(row[3]))
            throwDamage(std::string(field) + " does not name an object", place());
        object = QeDbObjectId(&objectRecord_.database->storedRecord(requireHandle(row[3])));
    }

    void values(ResbufValues& values) override
    {
        Query query(connection_, "SELECT * FROM resbufs WHERE object = ? ORDER BY position", objectRecord_.handle);
        while (query.next()) {
            const StoredRow row = next(query, "resbufs");
            requirePosition(row[1], values.size(), place());
            values.push_back(requireResbuf(row[2], row[3], place()));
        }
    }

    void entries(DictionaryEntries& entries) override { entries.loadOnDemandFrom(objectRecord_); }

    void records(std::vector<ObjectRecord*>& records) override
    {
        Query query(connection_, "SELECT * FROM records WHERE symbol_table = ? ORDER BY object", objectRecord_.handle);
        while (query.next())
            records.push_back(&objectRecord_.database->storedRecord(requireHandle(next(query, "records")[0])));
        ownRecords_ = &records;
    }

    void extendedData(ExtendedData& data) override
    {
        Query query(connection_, "SELECT * FROM extended_data WHERE object = ? ORDER BY application, position",
                    objectRecord_.handle);
        while (query.next()) {
            const StoredRow row = next(query, "extended_data");
            ResbufValues& values = data[&application(requireHandle(row[1]))];
            requirePosition(row[2], values.size(), place());
            values.push_back(requireResbuf(row[3], row[4], place()));
            requireExtended(values.back());
        }
    }

    /// That nothing is missing, and nothing is left over.
    void finish() const
    {
        if (!fields_.empty())
            throwDamage("has a field that its class does not know, " + truncateForMessage(fields_.begin()->first),
                        place());
        if (details_ != row_.details)
            throwDamage("not all of its values are there", place());
        if (ownRecords_ != nullptr && records_ != row_.owned)
            throwDamage("not all of its records are there", place());
    }

private:
    std::string place() const { return objectPlace(objectRecord_.handle); }

    /// No more rows than the object says: a damaged tree may give some again and again.
    StoredRow next(const Query& query, std::string_view table)
    {
        const bool isRecord = table == "records";
        RowDigest& digest = isRecord ? records_ : details_;
        StoredRow row = query.row(table, digest);
        if (digest.rows > (isRecord ? row_.owned : row_.details).rows)
            throwDamage("has more rows than were written", place());
        return row;
    }

    StoredRow take(std::string_view field)
    {
        const auto found = fields_.find(field);
        if (found == fields_.end())
            throwDamage("its " + std::string(field) + " is missing", place());
        return std::move(fields_.extract(found).mapped());
    }

    ObjectRecord& application(Handle handle) const
    {
        const auto known = objectRecord_.database->storedRecords.find(handle);
        if (known == objectRecord_.database->storedRecords.end() || !isApplication(*known->second))
            throwDamage("extended data of " + formatHandle(handle) + ", which is not a registered application",
                        place());
        return *known->second;
    }

    /// The table of registered applications is loaded before all other objects. While it is, its records may not be
    /// there yet, although it, or one of them, has extended data of them.
    bool isApplication(const ObjectRecord& record) const
    {
        if (record.object != nullptr)
            return record.object->isKindOf(QeDbRegAppTableRecord::desc());
        const ObjectRecord& table = *objectRecord_.database->regAppTable;
        const std::vector<ObjectRecord*>* const records =
            table.object != nullptr ? &QeHost::stateOf<QeHost::SymbolTableState>(*table.object).records : ownRecords_;
        return records != nullptr && std::find(records->begin(), records->end(), &record) != records->end();
    }

    void requireExtended(const ResbufValue& value) const
    {
        const auto* chunk = std::get_if<std::vector<unsigned char>>(&value.value);
        const bool fits = value.code >= kLowestExtendedCode && value.code != QeRb::kXdataAppName &&
                          (chunk == nullptr || chunk->size() <= kLongestExtendedChunk);
        if (!fits)
            throwDamage("its extended data hold a value that they cannot hold, of the group code " +
                            std::to_string(value.code),
                        place());
    }

    DrawingConnection& connection_;
    ObjectRecord& objectRecord_;
    const ObjectRow& row_;
    std::map<std::string, StoredRow, std::less<>> fields_;
    RowDigest details_;
    RowDigest records_;
    const std::vector<ObjectRecord*>* ownRecords_ = nullptr; // of a table
};

/// Writes the fields that a class lists, but for what the object owns: rows of that are written with what is owned.
class FieldWriter final : public QeHost::FieldVisitor {
public:
    FieldWriter(DrawingConnection& connection, Handle object) : connection_(connection), object_(storedHandle(object))
    {
    }

    void text(std::string_view field, std::wstring& text) override
    {
        insertField(field, storedFromWide(text), StoredValue());
    }

    void reference(std::string_view field, QeDbObjectId& object) override
    {
        if (!object.isNull())
            insertField(field, StoredValue(), storedHandle(object.handle()));
    }

    void values(ResbufValues& values) override
    {
        std::int64_t position = 0;
        for (const ResbufValue& value : values)
            digest_.add(insertRow(connection_, "INSERT INTO resbufs VALUES (?, ?, ?, ?, ?)", "resbufs",
                                  {object_, position++, std::int64_t{value.code}, storedFromResbuf(value)}));
    }

    void entries(DictionaryEntries& /*entries*/) override {}
    void records(std::vector<ObjectRecord*>& /*records*/) override {}

    void extendedData(ExtendedData& data) override
    {
        for (const auto& [application, values] : data) {
            if (!QeHost::isLive(application))
                continue;
            std::int64_t position = 0;
            for (const ResbufValue& value : values)
                digest_.add(insertRow(connection_, "INSERT INTO extended_data VALUES (?, ?, ?, ?, ?, ?)",
                                      "extended_data",
                                      {object_, storedHandle(application->handle), position++, std::int64_t{value.code},
                                       storedFromResbuf(value)}));
        }
    }

    const RowDigest& digest() const { return digest_; }

private:
    void insertField(std::string_view field, StoredValue value, StoredValue target)
    {
        digest_.add(insertRow(connection_, "INSERT INTO fields VALUES (?, ?, ?, ?, ?)", "fields",
                              {object_, StoredText{std::string(field), false}, std::move(value), std::move(target)}));
    }

    DrawingConnection& connection_;
    std::int64_t object_;
    RowDigest digest_;
};

StoredRow valuesOf(Handle object, const ObjectRow& row)
{
    const StoredValue owner = row.owner != 0 ? StoredValue(storedHandle(row.owner)) : StoredValue();
    return {
        storedHandle(object), StoredText{row.className, false}, owner, row.owned.rows, row.owned.sum, row.details.rows,
        row.details.sum};
}

} // namespace

Handle requireHandle(const StoredValue& value)
{
    const std::int64_t number = requireInteger(value);
    if (number <= 0)
        throwDamage("expected a handle above 0");
    return static_cast<Handle>(number);
}

std::wstring requireKey(const StoredValue& value)
{
    Expected<std::wstring> key = wideFromStored(value);
    if (!key || key->empty())
        throwDamage("a key is not a text", "entries");
    return std::move(*key);
}

std::int64_t insertRow(DrawingConnection& connection, const char* insert, std::string_view table, const StoredRow& row)
{
    const std::int64_t checksum = checksumOf(table, row);
    Query(connection, insert, row, checksum).run();
    return checksum;
}

ObjectRow toObjectRow(const StoredRow& row)
{
    return {requireText(row[1]),
            std::holds_alternative<std::monostate>(row[2]) ? 0 : requireHandle(row[2]),
            {requireInteger(row[3]), requireInteger(row[4])},
            {requireInteger(row[5]), requireInteger(row[6])}};
}

ObjectRow readObjectRow(DrawingConnection& connection, Handle object)
{
    Query query(connection, "SELECT * FROM objects WHERE handle = ?", object);
    if (!query.next())
        throwDamage("is not there", objectPlace(object));
    RowDigest read;
    return toObjectRow(query.row("objects", read));
}

void writeObjectRow(DrawingConnection& connection, Handle object, const ObjectRow& row)
{
    insertRow(connection,
              "INSERT INTO objects VALUES (?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (handle) DO UPDATE SET "
              "class = excluded.class, owner = excluded.owner, owned = excluded.owned, "
              "owned_digest = excluded.owned_digest, details = excluded.details, "
              "details_digest = excluded.details_digest, checksum = excluded.checksum",
              "objects", valuesOf(object, row));
}

void readFields(DrawingConnection& connection, ObjectRecord& objectRecord, QeHost::ObjectState& state)
{
    const ObjectRow row = readObjectRow(connection, objectRecord.handle);
    FieldReader reader(connection, objectRecord, row);
    state.visitAll(reader);
    reader.finish();
}

RowDigest writeFields(DrawingConnection& connection, Handle object, QeHost::ObjectState& state)
{
    FieldWriter writer(connection, object);
    state.visitAll(writer);
    return writer.digest();
}

} // namespace Embedded
