#include "embedded/host/database/save_plan.h"

#include <unordered_map>
#include <unordered_set>

#include "embedded/host/database/dictionary.h"
#include "platform/host/dictionary.h"
#include "platform/host/symbol_table.h"

namespace QeHost {
namespace {

/// Whether the object is live, and so is everything that owns it, up to a root.
bool isInDrawing(const DatabaseImp& database, const ObjectRecord& record)
{
    const ObjectRecord* each = &record;
    for (; isLive(each) && !database.isRoot(*each); each = each->object->imp().state->owner) {
        if (each->object == nullptr) // stored: with its owners it was read from the file
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
        plan_.removed.assign(database_.leftBehind.begin(), database_.leftBehind.end());
        for (ObjectRecord* const record : leaving_)
            leave(*record);
        for (std::size_t next = 0; next < arriving_.size(); ++next)
            addWithOwners(*arriving_[next]);
        return std::move(plan_);
    }

private:
    void sort()
    {
        for (const auto& record : database_.objectRecords) {
            if (!record->isChanged)
                continue;
            if (isInDrawing(database_, *record))
                arriving_.push_back(record.get());
            else if (record->isInFile)
                leaving_.push_back(record.get());
        }
        sortGeoData();
    }

    /// Which its block does not list: where something leaves the drawing, its block may.
    void sortGeoData()
    {
        ObjectRecord* const geoData = database_.geoData();
        if (geoData == nullptr || geoData->isChanged)
            return;
        if (geoData->isStored && !leaving_.empty())
            loaded(*geoData);
        if (!isInDrawing(database_, *geoData))
            leaving_.push_back(geoData);
        else if (!geoData->isInFile)
            arriving_.push_back(geoData);
    }

    void leave(ObjectRecord& top)
    {
        if (!top.isInFile || left_.contains(&top))
            return;
        keepEntry(top);
        plan_.removed.push_back(top.handle);
        for (std::vector<ObjectRecord*> found{&top}; !found.empty();) {
            ObjectRecord& record = *found.back();
            found.pop_back();
            if (!left_.insert(&record).second)
                continue;
            plan_.left.push_back(&record);
            bringIn(record);
            const DictionaryEntries* const entries = entriesOf(record);
            if (entries == nullptr)
                continue;
            for (const auto& [key, entry] : entries->all()) {
                if (entry->isInFile)
                    found.push_back(entry);
            }
        }
    }

    /// Loads what the file is about to lose with the object.
    void bringIn(ObjectRecord& record)
    {
        if (record.isStored)
            loaded(record);
        if (DictionaryEntries* const entries = entriesOf(record))
            entries->complete();
        if (database_.store == nullptr)
            return;
        for (const Embedded::Handle user : database_.store->usersOf(record.handle)) {
            if (database_.leftBehind.contains(user)) // it was destroyed; there may be a new object of that handle
                continue;
            ObjectRecord& each = database_.storedRecord(user);
            if (each.isStored)
                loaded(each);
            arriving_.push_back(&each); // without the extended data of an application that leaves
        }
    }

    /// So that the dictionary knows what it had when the file has it no more.
    void keepEntry(ObjectRecord& record)
    {
        const auto [handle, key] = database_.store->entryOf(record.handle);
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

    bool isKept(const ObjectRecord& record) const { return record.isInFile && !left_.contains(&record); }

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
        bringBack(record);
    }

    /// Of an entry that the file does not have yet, and that is in memory therefore.
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

    /// What an object that comes back owns, and whose extended data an application brings back.
    void bringBack(ObjectRecord& record)
    {
        if (const DictionaryEntries* const entries = entriesOf(record)) {
            for (const auto& [key, entry] : entries->all()) {
                if (isLive(entry))
                    arriving_.push_back(entry);
            }
        }
        if (!record.object->isKindOf(QeDbRegAppTableRecord::desc()))
            return;
        for (const auto& each : database_.objectRecords) {
            if (each->object != nullptr && each->object->imp().state->extendedData.contains(&record))
                arriving_.push_back(each.get());
        }
    }

    DatabaseImp& database_;
    SavePlan plan_;
    std::vector<ObjectRecord*> arriving_;
    std::vector<ObjectRecord*> leaving_;
    std::unordered_set<const ObjectRecord*> left_;
    std::unordered_set<const ObjectRecord*> planned_;
    std::unordered_map<const ObjectRecord*, std::unordered_map<const ObjectRecord*, std::wstring>>
        keys_; // by dictionary and entry
};

} // namespace

Embedded::Expected<SavePlan> planSave(DatabaseImp& database)
{
    return Embedded::catchError([&] { return Planner(database).plan(); });
}

void noteSaved(DatabaseImp& database, const SavePlan& plan) noexcept
{
    for (const auto& record : database.objectRecords)
        record->isChanged = false;
    for (ObjectRecord* const record : plan.left)
        record->isInFile = false;
    for (const SavePlan::Written& written : plan.written)
        written.object->isInFile = true;
    database.leftBehind.clear();
}

ObjectRecord* savedGeoData(const DatabaseImp& database)
{
    ObjectRecord* const geoData = database.geoData();
    return geoData != nullptr && isInDrawing(database, *geoData) ? geoData : nullptr;
}

} // namespace QeHost
