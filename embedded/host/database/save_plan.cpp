#include "embedded/host/database/save_plan.h"

#include <unordered_map>
#include <unordered_set>

#include "platform/host/dictionary.h"
#include "platform/host/symbol_table.h"

namespace QeHost {
namespace {

/// Whether the object is live, and so is everything that owns it, up to a root.
bool isInDrawing(const DatabaseImp& database, const Stub& stub)
{
    const Stub* each = &stub;
    for (; isLive(each) && !database.isRoot(*each); each = each->object->imp().state->owner) {
        if (each->object == nullptr) // stored: with its owners it was read from the file
            return true;
    }
    return isLive(each);
}

DictionaryEntries* entriesOf(const Stub& stub)
{
    const bool isDictionary = stub.object != nullptr && stub.object->isKindOf(QeDbDictionary::desc());
    return isDictionary ? &static_cast<DictionaryState&>(*stub.object->imp().state).entries : nullptr;
}

class Planner {
public:
    explicit Planner(DatabaseImp& database) : database_(database) {}

    SavePlan plan()
    {
        sort();
        plan_.removed.assign(database_.leftBehind.begin(), database_.leftBehind.end());
        for (Stub* const stub : leaving_)
            leave(*stub);
        for (std::size_t next = 0; next < arriving_.size(); ++next)
            addWithOwners(*arriving_[next]);
        return std::move(plan_);
    }

private:
    void sort()
    {
        for (const auto& stub : database_.stubs) {
            if (!stub->isChanged)
                continue;
            if (isInDrawing(database_, *stub))
                arriving_.push_back(stub.get());
            else if (stub->isInFile)
                leaving_.push_back(stub.get());
        }
        sortGeoData();
    }

    /// Which its block does not list: where something leaves the drawing, its block may.
    void sortGeoData()
    {
        Stub* const geoData = database_.geoData();
        if (geoData == nullptr || geoData->isChanged)
            return;
        if (geoData->isStored && !leaving_.empty())
            loaded(*geoData);
        if (!isInDrawing(database_, *geoData))
            leaving_.push_back(geoData);
        else if (!geoData->isInFile)
            arriving_.push_back(geoData);
    }

    void leave(Stub& top)
    {
        if (!top.isInFile || left_.contains(&top))
            return;
        keepEntry(top);
        plan_.removed.push_back(top.handle);
        for (std::vector<Stub*> found{&top}; !found.empty();) {
            Stub& stub = *found.back();
            found.pop_back();
            if (!left_.insert(&stub).second)
                continue;
            plan_.left.push_back(&stub);
            bringIn(stub);
            const DictionaryEntries* const entries = entriesOf(stub);
            if (entries == nullptr)
                continue;
            for (const auto& [key, entry] : entries->all()) {
                if (entry->isInFile)
                    found.push_back(entry);
            }
        }
    }

    /// Loads what the file is about to lose with the object.
    void bringIn(Stub& stub)
    {
        if (stub.isStored)
            loaded(stub);
        if (DictionaryEntries* const entries = entriesOf(stub))
            entries->complete();
        if (database_.store == nullptr)
            return;
        for (const Embedded::Handle user : database_.store->usersOf(stub.handle)) {
            if (database_.leftBehind.contains(user)) // it was destroyed; there may be a new object of that handle
                continue;
            Stub& each = database_.storedStub(user);
            if (each.isStored)
                loaded(each);
            arriving_.push_back(&each); // without the extended data of an application that leaves
        }
    }

    /// So that the dictionary knows what it had when the file has it no more.
    void keepEntry(Stub& stub)
    {
        const auto [handle, key] = database_.store->entryOf(stub.handle);
        if (handle == 0)
            return;
        if (DictionaryEntries* const entries = entriesOf(database_.storedStub(handle)))
            entries->keepOriginal(key, &stub);
    }

    /// Owners come first.
    void addWithOwners(Stub& stub)
    {
        if (planned_.contains(&stub) || !isInDrawing(database_, stub))
            return;
        std::vector<Stub*> path{&stub};
        for (Stub* owner = ownerOf(stub); owner != nullptr && !isKept(*owner) && !planned_.contains(owner);
             owner = ownerOf(*owner))
            path.push_back(owner);
        for (auto each = path.rbegin(); each != path.rend(); ++each)
            add(**each);
    }

    static Stub* ownerOf(const Stub& stub) { return stub.object->imp().state->owner; }

    bool isKept(const Stub& stub) const { return stub.isInFile && !left_.contains(&stub); }

    void add(Stub& stub)
    {
        planned_.insert(&stub);
        database_.storedStubs.insert_or_assign(stub.handle, &stub);
        if (isKept(stub)) {
            plan_.written.push_back({&stub, {}, false});
            return;
        }
        const Stub* const owner = ownerOf(stub);
        const bool isRecord = owner != nullptr && owner->object->isKindOf(QeDbSymbolTable::desc());
        plan_.written.push_back({&stub, keyOf(stub), isRecord});
        bringBack(stub);
    }

    /// Of an entry that the file does not have yet, and that is in memory therefore.
    std::wstring keyOf(const Stub& stub)
    {
        Stub* const owner = ownerOf(stub);
        DictionaryEntries* const entries = owner != nullptr ? entriesOf(*owner) : nullptr;
        if (entries == nullptr)
            return {};
        const auto [keys, isNew] = keys_.try_emplace(owner);
        if (isNew) {
            for (const auto& [key, entry] : entries->known())
                keys->second.emplace(entry, key);
        }
        const std::wstring& key = keys->second.at(&stub);
        entries->keepOriginal(key, nullptr);
        return key;
    }

    /// What an object that comes back owns, and whose extended data an application brings back.
    void bringBack(Stub& stub)
    {
        if (const DictionaryEntries* const entries = entriesOf(stub)) {
            for (const auto& [key, entry] : entries->all()) {
                if (isLive(entry))
                    arriving_.push_back(entry);
            }
        }
        if (!stub.object->isKindOf(QeDbRegAppTableRecord::desc()))
            return;
        for (const auto& each : database_.stubs) {
            if (each->object != nullptr && each->object->imp().state->extendedData.contains(&stub))
                arriving_.push_back(each.get());
        }
    }

    DatabaseImp& database_;
    SavePlan plan_;
    std::vector<Stub*> arriving_;
    std::vector<Stub*> leaving_;
    std::unordered_set<const Stub*> left_;
    std::unordered_set<const Stub*> planned_;
    std::unordered_map<const Stub*, std::unordered_map<const Stub*, std::wstring>> keys_; // by dictionary and entry
};

} // namespace

SavePlan planSave(DatabaseImp& database)
{
    return Planner(database).plan();
}

void noteSaved(DatabaseImp& database, const SavePlan& plan) noexcept
{
    for (const auto& stub : database.stubs)
        stub->isChanged = false;
    for (Stub* const stub : plan.left)
        stub->isInFile = false;
    for (const SavePlan::Written& written : plan.written)
        written.object->isInFile = true;
    database.leftBehind.clear();
}

Stub* savedGeoData(const DatabaseImp& database)
{
    Stub* const geoData = database.geoData();
    return geoData != nullptr && isInDrawing(database, *geoData) ? geoData : nullptr;
}

} // namespace QeHost
