#include "embedded/host/drawing_file/salvaged_objects.h"

#include <algorithm>
#include <set>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/object_rows.h"

namespace Embedded {

std::vector<DetailRow> readDetailRows(DrawingConnection& connection, Handle object, RowDigest& digest)
{
    std::vector<DetailRow> details;
    for (const DetailTable& table : kDetailTables) {
        Query query(connection, table.query, object);
        while (query.next())
            details.push_back({&table, query.row(table.name, digest)});
    }
    return details;
}

namespace {

/// Returns the object that a field refers to or the application of extended data; 0 where a row has none. Throws an
/// Error.
Handle readReference(const DetailRow& row)
{
    if (row.table == kFieldsTable)
        return std::holds_alternative<std::monostate>(row.values[3]) ? Handle{0} : requireHandle(row.values[3]);
    return row.table == kExtendedDataTable ? requireHandle(row.values[1]) : Handle{0};
}

/// Reads what can be read, one object after the other.
class SalvageReader {
public:
    SalvageReader(DrawingConnection& connection, Salvage& salvage) : connection_(connection), salvage_(salvage) {}

    std::map<Handle, SalvagedObject> read()
    {
        for (const Handle handle : handles())
            readOne(handle);
        dropReferencesToLost();
        return std::move(objects_);
    }

private:
    template <class Step>
    Expected<void> attempt(Step step)
    {
        return catchDrawingError(connection_, {}, step);
    }

    /// From every table and index that names handles: where one is damaged, another may not be.
    std::set<Handle> handles()
    {
        std::set<Handle> found;
        for (const char* query :
             {"SELECT handle FROM objects NOT INDEXED WHERE handle > ? ORDER BY handle",
              "SELECT handle FROM objects INDEXED BY objects_by_owner WHERE owner IS NOT NULL AND handle > ?",
              "SELECT object FROM entries WHERE object > ? ORDER BY object",
              "SELECT object FROM records WHERE object > ? ORDER BY object",
              "SELECT object FROM resbufs WHERE object > ? ORDER BY object",
              "SELECT object FROM fields WHERE object > ? ORDER BY object"})
            collect(query, found);
        return found;
    }

    /// Behind a damaged page the scan goes on with higher handles, farther away each time.
    void collect(const char* query, std::set<Handle>& found)
    {
        Handle last = 0;
        for (Handle step = 1; step < Handle{1} << 40; step *= 2) {
            const Handle before = last;
            const Expected<void> result = attempt([&] {
                Query rows(connection_, query, last);
                while (rows.next()) {
                    last = static_cast<Handle>(std::max<std::int64_t>(rows.integer(0), 0));
                    found.insert(last);
                }
            });
            if (result)
                return;
            if (last != before)
                step = 1;
            last += step;
        }
    }

    void readOne(Handle handle)
    {
        if (handle == 0)
            return;
        SalvagedObject object;
        const Expected<void> result = attempt([&] {
            const ObjectRow row = readObjectRow(connection_, handle);
            object.className = row.className;
            object.itsClass = QeHost::findClass(wideFromUtf8(row.className));
            if (object.itsClass == nullptr)
                throwDamage("is of an unknown class");
            object.owner = row.owner;
            readDetails(handle, row, object);
        });
        if (!result) {
            salvage_.lost.push_back({handle, object.className, result.error().text()});
            return;
        }
        static_cast<void>(attempt([&] { readKey(handle, object); })); // without one it has lost its place
        objects_.emplace(handle, std::move(object));
    }

    void readDetails(Handle handle, const ObjectRow& row, SalvagedObject& object)
    {
        RowDigest digest;
        object.details = readDetailRows(connection_, handle, digest);
        if (digest != row.details)
            throwDamage("not all of its values are there");
        for (const DetailRow& detail : object.details)
            static_cast<void>(readReference(detail)); // an invalid handle makes the object unreadable
    }

    void readKey(Handle handle, SalvagedObject& object)
    {
        RowDigest digest;
        Query query(connection_, "SELECT * FROM entries WHERE object = ?", handle);
        if (!query.next())
            return;
        const StoredRow row = query.row("entries", digest);
        if (requireHandle(row[0]) == object.owner)
            object.key = storedFromWide(requireKey(row[1]));
    }

    /// Fields that refer to a lost object make their own one lost; extended data of a lost application are dropped.
    void dropReferencesToLost()
    {
        for (bool isDone = false; !isDone;) {
            isDone = true;
            for (auto each = objects_.begin(); each != objects_.end();) {
                SalvagedObject& object = each->second;
                const auto ofLostApplication = [&](const DetailRow& row) {
                    return row.table == kExtendedDataTable && !objects_.contains(readReference(row));
                };
                if (std::erase_if(object.details, ofLostApplication) != 0)
                    salvage_.lost.push_back(
                        {each->first, object.className, "extended data of an application that is lost"});
                const bool isLost = std::ranges::any_of(object.details, [&](const DetailRow& row) {
                    const Handle reference = readReference(row);
                    return reference != 0 && !objects_.contains(reference);
                });
                if (isLost) {
                    salvage_.lost.push_back({each->first, object.className, "refers to an object that is lost"});
                    isDone = false;
                }
                each = isLost ? objects_.erase(each) : std::next(each);
            }
        }
    }

    DrawingConnection& connection_;
    Salvage& salvage_;
    std::map<Handle, SalvagedObject> objects_;
};

} // namespace

std::map<Handle, SalvagedObject> readSalvagedObjects(DrawingConnection& connection, Salvage& salvage)
{
    return SalvageReader(connection, salvage).read();
}

} // namespace Embedded
