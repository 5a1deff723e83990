#include "embedded/host/database/save_plan.h"

#include <unordered_map>
#include <unordered_set>

#include "embedded/host/database/dictionary.h"
#include "platform/host/dictionary.h"
#include "platform/host/symbol_table.h"

namespace QeHost {
namespace {

/// Returns whether the object is live, and so is everything that owns it, up to a root.
bool isInDrawing(const DatabaseImp& database, const ObjectRecord& record)
{
    const ObjectRecord* each = &record;
    for (; isLive(each) && !database.isRoot(*each); each = each->object->imp().state->owner) {
        if (each->object == nullptr) // not loaded, so in the file with its owners
            return true;
    }
    return isLive(each);
}

DictionaryEntries* entriesOf(const ObjectRecord& record)
{
    const bool isDictionary = record.object != nullptr && record.object->isKindOf(QeDbDictionary::desc());
    return isDictionary ? &static_cast<DictionaryState&>(*record.object->imp().state).entries : nullptr;
}

class Planner {
public:
    explicit Planner(DatabaseImp& database) : database_(database) {}

    SavePlan plan()
    {
        sort();
        plan_.removedHandles.assign(database_.destroyedHandles.begin(), database_.destroyedHandles.end());
        for (ObjectRecord* const record : toRemove_)
            removeTree(*record);
        for (std::size_t next = 0; next < toWrite_.size(); ++next)
            addWithOwners(*toWrite_[next]);
        return std::move(plan_);
    }

private:
    void sort()
    {
        for (const auto& record : database_.objectRecords) {
            if (!record->isChanged)
                continue;
            if (isInDrawing(database_, *record))
                toWrite_.push_back(record.get());
            else if (record->isInFile)
                toRemove_.push_back(record.get());
        }
        sortGeoData();
    }

    /// A block does not list its GeoData object. The block may be among the objects that leave the drawing.
    void sortGeoData()
    {
        ObjectRecord* const geoData = database_.geoData();
        if (geoData == nullptr || geoData->isChanged)
            return;
        if (geoData->isStored && !toRemove_.empty())
            loadObject(*geoData);
        if (!isInDrawing(database_, *geoData))
            toRemove_.push_back(geoData);
        else if (!geoData->isInFile)
            toWrite_.push_back(geoData);
    }

    void removeTree(ObjectRecord& top)
    {
        if (!top.isInFile || removed_.contains(&top))
            return;
        keepOriginalEntry(top);
        plan_.removedHandles.push_back(top.handle);
        for (std::vector<ObjectRecord*> found{&top}; !found.empty();) {
            ObjectRecord& record = *found.back();
            found.pop_back();
            if (!removed_.insert(&record).second)
                continue;
            plan_.removedObjects.push_back(&record);
            loadBeforeRemoval(record);
            const DictionaryEntries* const entries = entriesOf(record);
            if (entries == nullptr)
                continue;
            for (const auto& [key, entry] : entries->all()) {
                if (entry->isInFile)
                    found.push_back(entry);
            }
        }
    }

    /// Loads what is removed from the file with the object.
    void loadBeforeRemoval(ObjectRecord& record)
    {
        if (record.isStored)
            loadObject(record);
        if (DictionaryEntries* const entries = entriesOf(record))
            entries->loadAll();
        if (database_.store == nullptr)
            return;
        for (const Embedded::Handle user : database_.store->findApplicationUsers(record.handle)) {
            if (database_.destroyedHandles.contains(user)) // destroyed; a new object may have its handle
                continue;
            ObjectRecord& each = database_.storedRecord(user);
            if (each.isStored)
                loadObject(each);
            toWrite_.push_back(&each); // without the extended data of the removed application
        }
    }

    /// Lets the dictionary keep the entry that is removed from the file.
    void keepOriginalEntry(ObjectRecord& record)
    {
        const auto [handle, key] = database_.store->findOwningEntry(record.handle);
        if (handle == 0)
            return;
        if (DictionaryEntries* const entries = entriesOf(database_.storedRecord(handle)))
            entries->keepOriginal(key, &record);
    }

    /// Owners come first.
    void addWithOwners(ObjectRecord& record)
    {
        if (planned_.contains(&record) || !isInDrawing(database_, record))
            return;
        std::vector<ObjectRecord*> path{&record};
        for (ObjectRecord* owner = ownerOf(record); owner != nullptr && !isKept(*owner) && !planned_.contains(owner);
             owner = ownerOf(*owner))
            path.push_back(owner);
        for (auto each = path.rbegin(); each != path.rend(); ++each)
            add(**each);
    }

    static ObjectRecord* ownerOf(const ObjectRecord& record) { return record.object->imp().state->owner; }

    bool isKept(const ObjectRecord& record) const { return record.isInFile && !removed_.contains(&record); }

    void add(ObjectRecord& record)
    {
        planned_.insert(&record);
        database_.storedRecords.insert_or_assign(record.handle, &record);
        if (isKept(record)) {
            plan_.written.push_back({&record, {}, false});
            return;
        }
        const ObjectRecord* const owner = ownerOf(record);
        const bool isRecord = owner != nullptr && owner->object->isKindOf(QeDbSymbolTable::desc());
        plan_.written.push_back({&record, keyOf(record), isRecord});
        addDependents(record);
    }

    /// The key of a new entry, which is therefore in memory.
    std::wstring keyOf(const ObjectRecord& record)
    {
        ObjectRecord* const owner = ownerOf(record);
        DictionaryEntries* const entries = owner != nullptr ? entriesOf(*owner) : nullptr;
        if (entries == nullptr)
            return {};
        const auto [keys, isNew] = keys_.try_emplace(owner);
        if (isNew) {
            for (const auto& [key, entry] : entries->known())
                keys->second.emplace(entry, key);
        }
        const std::wstring& key = keys->second.at(&record);
        entries->keepOriginal(key, nullptr);
        return key;
    }

    /// Adds what a restored object owns, and the objects with extended data of a restored application.
    void addDependents(ObjectRecord& record)
    {
        if (const DictionaryEntries* const entries = entriesOf(record)) {
            for (const auto& [key, entry] : entries->all()) {
                if (isLive(entry))
                    toWrite_.push_back(entry);
            }
        }
        if (!record.object->isKindOf(QeDbRegAppTableRecord::desc()))
            return;
        for (const auto& each : database_.objectRecords) {
            if (each->object != nullptr && each->object->imp().state->extendedData.contains(&record))
                toWrite_.push_back(each.get());
        }
    }

    DatabaseImp& database_;
    SavePlan plan_;
    std::vector<ObjectRecord*> toWrite_;
    std::vector<ObjectRecord*> toRemove_;
    std::unordered_set<const ObjectRecord*> removed_;
    std::unordered_set<const ObjectRecord*> planned_;
    std::unordered_map<const ObjectRecord*, std::unordered_map<const ObjectRecord*, std::wstring>>
        keys_; // by dictionary and entry
};

} // namespace

Embedded::Expected<SavePlan> planSave(DatabaseImp& database)
{
    return Embedded::catchError([&] { return Planner(database).plan(); });
}

void markSaved(DatabaseImp& database, const SavePlan& plan) noexcept
{
    for (const auto& record : database.objectRecords)
        record->isChanged = false;
    for (ObjectRecord* const record : plan.removedObjects)
        record->isInFile = false;
    for (const SavePlan::Written& written : plan.written)
        written.object->isInFile = true;
    database.destroyedHandles.clear();
}

ObjectRecord* geoDataInDrawing(const DatabaseImp& database)
{
    ObjectRecord* const geoData = database.geoData();
    return geoData != nullptr && isInDrawing(database, *geoData) ? geoData : nullptr;
}

} // namespace QeHost
