#include "embedded/host/drawing_file/drawing_writer.h"

#include <map>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/drawing_file/drawing_header.h"
#include "embedded/host/drawing_file/object_rows.h"

namespace Embedded {
namespace {

using QeHost::ObjectRecord;

class DrawingWriter {
public:
    explicit DrawingWriter(DrawingConnection& connection) : connection_(connection) {}

    void remove(Handle top)
    {
        removeFromOwner(top);
        std::vector<Handle> found{top};
        for (std::size_t next = 0; next < found.size(); ++next) {
            Query owned(connection_, "SELECT handle FROM objects WHERE owner = ?", found[next]);
            while (owned.next())
                found.push_back(static_cast<Handle>(owned.integer(0)));
        }
        for (const Handle object : found)
            removeRows(object);
    }

    void write(const QeHost::SavePlan::Written& written)
    {
        const ObjectRecord& record = *written.object;
        QeHost::ObjectState& state = *record.object->imp().state;
        const bool isThere = Query(connection_, "SELECT 1 FROM objects WHERE handle = ?", record.handle).next();
        ObjectRow row;
        if (isThere) {
            row.owned = readObjectRow(connection_, record.handle).owned;
            removeDetails(record.handle);
        }
        row.className = utf8FromWide(record.object->isA()->name());
        row.owner = state.owner != nullptr ? state.owner->handle : 0;
        row.details = writeFields(connection_, record.handle, state);
        writeObjectRow(connection_, record.handle, row);
        if (!isThere)
            addToOwner(record.handle, row.owner, written);
    }

    /// The digests of the owners, once each.
    void finish()
    {
        for (const auto& [owner, change] : changedOwners_) {
            ObjectRow row = readObjectRow(connection_, owner);
            row.owned += change;
            writeObjectRow(connection_, owner, row);
        }
    }

private:
    void run(const char* sql, Handle object) { Query(connection_, sql, object).run(); }

    void removeDetails(Handle object)
    {
        run("DELETE FROM fields WHERE object = ?", object);
        run("DELETE FROM resbufs WHERE object = ?", object);
        run("DELETE FROM extended_data WHERE object = ?", object);
    }

    void removeRows(Handle object)
    {
        removeDetails(object);
        run("DELETE FROM entries WHERE object = ?", object);
        run("DELETE FROM records WHERE object = ?", object);
        run("DELETE FROM objects WHERE handle = ?", object);
        changedOwners_.erase(object);
    }

    void removeFromOwner(Handle object)
    {
        Query listing(connection_,
                      "SELECT dictionary, checksum FROM entries WHERE object = ?1 "
                      "UNION ALL SELECT symbol_table, checksum FROM records WHERE object = ?1",
                      object);
        while (listing.next())
            changedOwners_[static_cast<Handle>(listing.integer(0))].remove(listing.integer(1));
    }

    void addToOwner(Handle object, Handle owner, const QeHost::SavePlan::Written& written)
    {
        if (!written.key.empty())
            changedOwners_[owner].add(
                insertRow(connection_, "INSERT INTO entries VALUES (?, ?, ?, ?)", "entries",
                          {storedHandle(owner), storedFromWide(written.key), storedHandle(object)}));
        if (written.isRecord)
            changedOwners_[owner].add(insertRow(connection_, "INSERT INTO records VALUES (?, ?, ?)", "records",
                                                {storedHandle(object), storedHandle(owner)}));
    }

    DrawingConnection& connection_;
    std::map<Handle, RowDigest> changedOwners_;
};

} // namespace

void writeDrawing(DrawingConnection& connection, const QeHost::DatabaseImp& database, const QeHost::SavePlan& plan,
                  QeDb::QeDbDwgVersion version)
{
    DrawingWriter writer(connection);
    for (const Handle object : plan.removedHandles)
        writer.remove(object);
    for (const QeHost::SavePlan::Written& written : plan.written)
        writer.write(written);
    writer.finish();
    writeHeader(connection, makeHeader(database, version));
}

} // namespace Embedded
