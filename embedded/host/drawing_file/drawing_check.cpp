#include "embedded/host/drawing_file/drawing_check.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/object_classes.h"
#include "embedded/host/database/symbol_table.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/drawing_store.h"
#include "embedded/host/drawing_file/object_rows.h"
#include "embedded/host/drawing_file/sealed_pages.h"
#include "platform/host/dictionary.h"
#include "platform/host/geodata.h"
#include "platform/host/symbol_table.h"

namespace Embedded {
namespace {

using QeHost::ObjectRecord;

constexpr std::size_t kMostReported = 100;

class FaultList {
public:
    explicit FaultList(DrawingFaults& faults) : faults_(faults) {}

    void add(std::string place, std::string message)
    {
        if (++faults_.count <= kMostReported)
            faults_.reported.push_back({std::move(place), std::move(message)});
    }

    void add(const Error& error) { add(error.place.empty() ? "database" : error.place, error.message); }

    /// Runs a step. What stops it is a fault, and the next step begins.
    template <class Step>
    void step(const DrawingConnection& connection, Step step)
    {
        if (const Expected<void> result = catchDrawingError(connection, {}, step); !result)
            add(result.error());
    }

private:
    DrawingFaults& faults_;
};

/// What the rows say of one object.
struct CheckedObject {
    const QeHost::ObjectClass* itsClass = nullptr; // null where it is unknown
    Handle owner = 0;
    bool isThere = false; // its own row
    RowDigest expectedOwned;
    RowDigest expectedDetails;
    RowDigest owned;
    RowDigest details;
    Handle listedBy = 0;
    int listings = 0;
};

/// One of the tables whose rows belong to objects.
struct PartTable {
    std::string_view name;
    const char* query;
    std::size_t object; // the column of the object that the row belongs to
    RowDigest CheckedObject::*digest;
    std::size_t listed = 0; // the column of the object that is listed, where there is one
    bool lists = false;
    std::size_t key = 0; // the column of the key, where there is one
};

constexpr std::array kPartTables{
    PartTable{"entries", "SELECT * FROM entries", 0, &CheckedObject::owned, 2, true, 1},
    PartTable{"records", "SELECT * FROM records", 1, &CheckedObject::owned, 0, true},
    PartTable{"fields", "SELECT * FROM fields", 0, &CheckedObject::details},
    PartTable{"resbufs", "SELECT * FROM resbufs", 0, &CheckedObject::details},
    PartTable{"extended_data", "SELECT * FROM extended_data", 0, &CheckedObject::details},
};

class Checker {
public:
    Checker(DrawingConnection& connection, DrawingFaults& faults) : connection_(connection), faults_(faults) {}

    void checkDatabase()
    {
        if (hasSeals(connection_.handle())) {
            for (const std::uint32_t page : brokenSeals(connection_.handle()))
                faults_.add("page " + std::to_string(page), "is not as it was written");
        } else {
            faults_.add("pages", "have no seals, because another program has made the file");
        }
        step([&] {
            Query pages(connection_, "PRAGMA page_count");
            Query size(connection_, "PRAGMA page_size");
            if (pages.next() && size.next() && pages.integer(0) * size.integer(0) != connection_.fileSize())
                faults_.add("database", "is not as long as its header says");
        });
        step([&] {
            Query query(connection_, "PRAGMA integrity_check(100)");
            while (query.next()) {
                std::string line = query.text(0);
                std::replace(line.begin(), line.end(), '\n', ' ');
                if (line != "ok")
                    faults_.add("database", line);
            }
        });
        step([&] {
            Query query(connection_, "PRAGMA foreign_key_check");
            while (query.next())
                faults_.add("table " + query.text(0),
                            "row " + query.text(1) + " refers to an object that is not there");
        });
    }

    void checkRows()
    {
        step([&] { readObjects(); });
        for (const PartTable& table : kPartTables)
            step([&] { readParts(table); });
        step([&] {
            const DrawingHeader read = readHeader(connection_);
            header_ = read; // g++ 12 would write the result of a call that throws into it, as far as that came
        });
        for (const auto& [handle, object] : objects_)
            checkObject(handle, object);
        if (hasHeader())
            checkOwners();
    }

    void checkFields(QeHost::DatabaseImp& database)
    {
        for (const auto& [handle, object] : objects_)
            if (object.isThere)
                step([&, handle = handle, &checked = object] { readObject(database, handle, checked); });
        step([&] { requireRoot(*database.namedObjects, QeDbDictionary::desc()); });
        step([&] {
            requireRoot(*database.regAppTable, QeDbRegAppTable::desc());
            checkNames(*database.regAppTable);
        });
        step([&] {
            requireRoot(*database.blockTable, QeDbBlockTable::desc());
            checkNames(*database.blockTable);
        });
        step([&] {
            if (const QeDbObject& space = QeHost::loadObject(*database.modelSpace);
                !space.isKindOf(QeDbBlockTableRecord::desc()) ||
                QeHost::recordName(*database.modelSpace) != kQeDbModelSpaceName)
                faults_.add(objectPlace(database.modelSpace->handle), "is not the block of model space");
        });
    }

private:
    template <class Step>
    void step(Step step)
    {
        faults_.step(connection_, step);
    }

    void readObjects()
    {
        Query query(connection_, "SELECT * FROM objects");
        while (query.next())
            step([&] {
                RowDigest read;
                const ObjectRow row = toObjectRow(query.row("objects", read));
                CheckedObject& object = objects_[static_cast<Handle>(query.integer(0))];
                object.isThere = true;
                object.itsClass = QeHost::findClass(wideFromUtf8(row.className));
                object.owner = row.owner;
                object.expectedOwned = row.owned;
                object.expectedDetails = row.details;
            });
    }

    void readParts(const PartTable& table)
    {
        Query query(connection_, table.query);
        while (query.next())
            step([&] {
                RowDigest digest;
                const StoredRow row = query.row(table.name, digest);
                const Handle owner = requireHandle(row[table.object]);
                objects_[owner].*table.digest += digest;
                if (table.lists) {
                    CheckedObject& listed = objects_[requireHandle(row[table.listed])];
                    listed.listedBy = owner;
                    ++listed.listings;
                }
                if (table.key != 0)
                    static_cast<void>(requireKey(row[table.key])); // an unreadable key is a fault
            });
    }

    bool hasHeader() const { return header_.nextHandle != 0; }

    void checkObject(Handle handle, const CheckedObject& object)
    {
        const auto add = [&](const char* message) { faults_.add(objectPlace(handle), message); };
        if (!object.isThere)
            return add("is not there");
        if (object.owned != object.expectedOwned)
            add("lists more or fewer objects than were written");
        if (object.details != object.expectedDetails)
            add("has more or fewer values than were written");
        if (!hasHeader())
            return; // and so what the roots are
        if (header_.isRoot(handle) || handle == header_.geoData) {
            if (object.listings != 0)
                add("is listed, but must not be");
        } else if (object.listings != 1) {
            add(object.listings == 0 ? "is not listed by any object" : "is listed more than once");
        } else if (object.listedBy != object.owner) {
            add("is listed by another object than its owner");
        }
    }

    /// Each object's owners lead to a root.
    void checkOwners()
    {
        std::unordered_map<Handle, Handle> lastSeenFrom;
        for (const auto& [handle, object] : objects_) {
            Handle each = handle;
            while (each != 0 && !header_.isRoot(each) && !lastSeenFrom.contains(each)) {
                lastSeenFrom.emplace(each, handle);
                const auto found = objects_.find(each);
                each = found != objects_.end() ? found->second.owner : 0;
                if (each == 0)
                    faults_.add(objectPlace(handle), "its owners do not lead to a root");
            }
            if (const auto seen = lastSeenFrom.find(each); seen != lastSeenFrom.end() && seen->second == handle)
                faults_.add(objectPlace(each), "belongs to itself, through its owners");
        }
    }

    /// Reads the fields as loading does, into an object that nobody keeps.
    void readObject(QeHost::DatabaseImp& database, Handle handle, const CheckedObject& checked)
    {
        if (checked.itsClass == nullptr)
            return faults_.add(objectPlace(handle),
                               "is of an unknown class, " +
                                   truncateForMessage(readObjectRow(connection_, handle).className));
        const std::unique_ptr<QeDbObject> object(checked.itsClass->make());
        ObjectRecord objectRecord{.database = &database, .handle = handle};
        readFields(connection_, objectRecord, *object->imp().state);
        if (handle == header_.geoData && checked.itsClass->desc() != QeDbGeoData::desc())
            faults_.add(objectPlace(handle), "is not a GeoData object, but the header names it as one");
        if (!header_.isRoot(handle))
            checkClassOfOwner(handle, checked);
    }

    /// An owner that is absent or of an unknown class is reported elsewhere.
    void checkClassOfOwner(Handle handle, const CheckedObject& checked)
    {
        const auto owner = objects_.find(checked.owner);
        if (owner == objects_.end() || owner->second.itsClass == nullptr)
            return;
        if (!checked.itsClass->canBeOwnedBy(*owner->second.itsClass->desc()))
            faults_.add(objectPlace(handle), "cannot belong to object " + formatHandle(checked.owner));
    }

    static void requireRoot(ObjectRecord& root, const QeRxClass* itsClass)
    {
        if (!QeHost::loadObject(root).isKindOf(itsClass))
            throwDamage("is a root of another class", objectPlace(root.handle));
    }

    void checkNames(const ObjectRecord& table)
    {
        std::set<std::wstring> names;
        for (const ObjectRecord* const record : QeHost::stateOf<QeHost::SymbolTableState>(*table.object).records) {
            const std::wstring& name = QeHost::recordName(*record);
            if (name.empty())
                faults_.add(objectPlace(record->handle), "has no name");
            else if (!names.insert(toLowerAscii(name)).second)
                faults_.add(objectPlace(record->handle), "has the name of another record");
        }
    }

    DrawingConnection& connection_;
    FaultList faults_;
    DrawingHeader header_;
    std::map<Handle, CheckedObject> objects_;
};

} // namespace

Expected<DrawingFaults> checkDrawing(const std::filesystem::path& file, const LockWait& wait)
{
    Expected<std::unique_ptr<DrawingConnection>> connection = connect(file, DrawingAccess::reading, wait);
    if (!connection)
        return failure(std::move(connection).error());
    DrawingFaults faults;
    Checker checker(**connection, faults);
    checker.checkDatabase();
    checker.checkRows();
    const auto database = attachDrawing(std::move(*connection), file, {}, false);
    if (database)
        checker.checkFields((*database)->imp());
    else if (faults.count == 0) // otherwise it was told what keeps the drawing from being opened
        FaultList(faults).add(database.error());
    return faults;
}

} // namespace Embedded
