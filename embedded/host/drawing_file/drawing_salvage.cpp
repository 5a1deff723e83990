#include "embedded/host/drawing_file/drawing_salvage.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "embedded/host/drawing_file/drawing_header.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/object_rows.h"
#include "embedded/host/drawing_file/salvaged_objects.h"
#include "platform/host/dictionary.h"
#include "platform/host/symbol_table.h"

namespace Embedded {
namespace {

constexpr const wchar_t* kSalvagedKey = L"SALVAGED";

/// Writes objects into a drawing that has nothing but its roots and model space.
class SalvageWriter {
public:
    SalvageWriter(DrawingConnection& connection, std::map<Handle, SalvagedObject> objects, Salvage& salvage)
        : connection_(connection), objects_(std::move(objects)), salvage_(salvage)
    {
    }

    void write(std::int64_t version, const DrawingHeader& roots, Handle geoData)
    {
        roots_ = roots;
        placeAll();
        for (auto& [handle, object] : objects_)
            writeDetails(handle, object);
        for (const auto& [handle, object] : objects_)
            list(handle, object);
        for (const auto& [handle, row] : rows_)
            writeObjectRow(connection_, handle, row);
        const auto found = objects_.find(geoData);
        roots_.geoData = found != objects_.end() ? geoData : 0;
        roots_.version = version;
        const Handle highest = rows_.empty() ? 0 : rows_.rbegin()->first;
        roots_.nextHandle = std::max(roots_.nextHandle, highest + 1);
        writeHeader(connection_, roots_);
        salvage_.objects = objects_.size();
    }

private:
    /// Returns whether the object may lie below the owner.
    bool fits(const SalvagedObject& object, Handle owner) const
    {
        const auto found = objects_.find(owner);
        return found != objects_.end() && object.itsClass->canBeOwnedBy(*found->second.itsClass->desc());
    }

    /// Gives each object an owner that leads to a root, or loses it.
    void placeAll()
    {
        for (const Handle root : {roots_.namedObjects, roots_.regAppTable, roots_.blockTable, roots_.modelSpace})
            addRoot(root);
        std::set<Handle> placed = {roots_.namedObjects, roots_.regAppTable, roots_.blockTable};
        for (auto each = objects_.begin(); each != objects_.end();) {
            const Handle handle = each->first;
            const bool isKept = place(handle, placed);
            ++each;
            if (!isKept)
                objects_.erase(handle);
        }
    }

    /// The file has these already, as empty ones; what was saved of them comes in their place.
    void addRoot(Handle root)
    {
        const ObjectRow made = readObjectRow(connection_, root);
        SalvagedObject& object = objects_[root];
        const auto* const itsClass = QeHost::findClass(wideFromUtf8(made.className));
        if (object.itsClass != itsClass) {
            object = {.className = made.className, .itsClass = itsClass, .owner = made.owner, .details = {}, .key = {}};
            RowDigest digest;
            object.details = readDetailRows(connection_, root, digest);
        }
        object.owner = made.owner;
        for (const DetailTable& table : kDetailTables)
            Query(connection_, table.remove, root).run();
    }

    bool place(Handle handle, std::set<Handle>& placed)
    {
        std::vector<Handle> path;
        std::set<Handle> onPath;
        for (Handle each = handle; !placed.contains(each) && objects_.contains(each);) {
            if (!onPath.insert(each).second)
                break; // a cycle ends at the object at which it closes
            path.push_back(each);
            const SalvagedObject& object = objects_.at(each);
            if (!fits(object, object.owner))
                break;
            each = object.owner;
        }
        for (auto each = path.rbegin(); each != path.rend(); ++each)
            if (!placeOne(*each, placed))
                return false;
        return true;
    }

    bool placeOne(Handle handle, std::set<Handle>& placed)
    {
        const auto found = objects_.find(handle);
        if (found == objects_.end())
            return false;
        SalvagedObject& object = found->second;
        const bool isEntry = object.itsClass->ownerClass() == QeDbDictionary::desc();
        const bool hasPlace = placed.contains(object.owner) && fits(object, object.owner);
        if (!hasPlace || (isEntry && object.key.bytes.empty())) {
            if (!isEntry) {
                salvage_.lost.push_back({handle, object.className, "its owner is lost"});
                return false;
            }
            object.owner = salvaged();
            object.key = {formatHandle(handle), false};
            placed.insert(object.owner);
        }
        placed.insert(handle);
        return true;
    }

    /// The dictionary for what has lost its owner.
    Handle salvaged()
    {
        if (salvaged_ != 0)
            return salvaged_;
        salvaged_ = std::max(objects_.rbegin()->first + 1, roots_.nextHandle);
        const std::wstring name = QeDbDictionary::desc()->name();
        objects_[salvaged_] = {.className = utf8FromWide(name),
                               .itsClass = QeHost::findClass(name),
                               .owner = roots_.namedObjects,
                               .details = {},
                               .key = storedFromWide(kSalvagedKey)};
        return salvaged_;
    }

    void writeDetails(Handle handle, const SalvagedObject& object)
    {
        ObjectRow& row = rows_[handle];
        row.className = object.className;
        row.owner = object.owner;
        for (const DetailRow& detail : object.details)
            row.details.add(insertRow(connection_, detail.table->insert, detail.table->name, detail.values));
    }

    void list(Handle handle, const SalvagedObject& object)
    {
        if (roots_.isRoot(handle))
            return;
        const auto owner = objects_.find(object.owner);
        if (!object.key.bytes.empty())
            rows_[object.owner].owned.add(insertRow(connection_, "INSERT OR REPLACE INTO entries VALUES (?, ?, ?, ?)",
                                                    "entries",
                                                    {storedHandle(object.owner), object.key, storedHandle(handle)}));
        else if (owner != objects_.end() && owner->second.itsClass->desc()->isDerivedFrom(QeDbSymbolTable::desc()))
            rows_[object.owner].owned.add(insertRow(connection_, "INSERT OR REPLACE INTO records VALUES (?, ?, ?)",
                                                    "records", {storedHandle(handle), storedHandle(object.owner)}));
    }

    DrawingConnection& connection_;
    std::map<Handle, SalvagedObject> objects_;
    Salvage& salvage_;
    DrawingHeader roots_;
    std::map<Handle, ObjectRow> rows_;
    Handle salvaged_ = 0;
};

Expected<DrawingHeader> readDamagedHeader(DrawingConnection& connection)
{
    DrawingHeader header;
    const Expected<void> result = catchDrawingError(connection, {}, [&] { header = readHeader(connection); });
    if (!result)
        return failure(result.error());
    return header;
}

/// The only GeoData object, where the header does not name it.
Handle findGeoData(const std::map<Handle, SalvagedObject>& objects, Handle named)
{
    if (objects.contains(named))
        return named;
    for (const auto& [handle, object] : objects)
        if (object.itsClass->ownerClass() == QeDbBlockTableRecord::desc())
            return handle;
    return 0;
}

} // namespace

Expected<Salvage> salvageDrawing(const std::filesystem::path& damaged, const std::filesystem::path& file,
                                 const LockWait& wait)
{
    Expected<std::unique_ptr<DrawingConnection>> source = connect(damaged, DrawingAccess::reading, wait);
    if (!source)
        return failure(std::move(source).error());
    Salvage salvage;
    const Expected<DrawingHeader> header = readDamagedHeader(**source);
    std::map<Handle, SalvagedObject> objects = readSalvagedObjects(**source, salvage);
    QeDbDatabase empty;
    if (Expected<void> saved = saveDrawing(empty, file, QeDb::kCurrentDwg, Overwriting::refused, wait); !saved)
        return failure(std::move(saved).error());
    Expected<std::unique_ptr<DrawingConnection>> opened = connect(file, DrawingAccess::changing, wait);
    if (!opened)
        return failure(std::move(opened).error());
    DrawingConnection& target = **opened;
    Expected<void> written = catchDrawingError(target, displayName(file), [&] {
        const Handle geoData = findGeoData(objects, header ? header->geoData : 0);
        Query(target, "DELETE FROM entries").run();
        Query(target, "DELETE FROM records").run();
        SalvageWriter(target, std::move(objects), salvage)
            .write(header ? header->version : std::int64_t{QeDb::kCurrentDwg}, readHeader(target), geoData);
        target.database().exec("COMMIT");
    });
    if (!written)
        return failure(std::move(written).error());
    return salvage;
}

} // namespace Embedded
