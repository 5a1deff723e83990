#include "embedded/host/database/dictionary_entries.h"

#include <algorithm>
#include <utility>

#include "embedded/host/database/database.h"

namespace QeHost {
namespace {

const std::wstring* keyIn(const DictionaryEntries::Map& entries, const ObjectRecord& object)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const auto& entry) { return entry.second == &object; });
    return found != entries.end() ? &found->first : nullptr;
}

} // namespace

ObjectRecord* DictionaryEntries::findOriginal(const std::wstring& key) const
{
    if (const auto found = originals_.find(key); found != originals_.end())
        return found->second;
    if (isComplete())
        return nullptr;
    const Embedded::Handle handle = dictionary_->database->store->findEntry(dictionary_->handle, key);
    return handle != 0 ? &dictionary_->database->storedEntry(handle, *dictionary_) : nullptr;
}

ObjectRecord* DictionaryEntries::find(const std::wstring& key) const
{
    const auto found = changes_.find(key);
    return found != changes_.end() ? found->second : findOriginal(key);
}

std::wstring DictionaryEntries::findStoredKey(const ObjectRecord& object) const
{
    auto [dictionary, key] = dictionary_->database->store->findOwningEntry(object.handle);
    return dictionary == dictionary_->handle ? std::move(key) : std::wstring();
}

// An object is in one entry at most, all its life.
std::wstring DictionaryEntries::findKey(const ObjectRecord& object) const
{
    if (const std::wstring* key = keyIn(changes_, object))
        return *key;
    std::wstring key;
    if (const std::wstring* original = keyIn(originals_, object))
        key = *original;
    else if (!isComplete() && object.isInFile)
        key = findStoredKey(object);
    return changes_.contains(key) ? std::wstring() : key; // empty if it was removed or replaced since
}

void DictionaryEntries::put(Map&& entry)
{
    const auto added = changes_.insert(entry.extract(entry.begin()));
    if (!added.inserted)
        added.position->second = added.node.mapped();
}

void DictionaryEntries::remove(const std::wstring& key)
{
    if (isComplete() && !originals_.contains(key))
        changes_.erase(key);
    else
        changes_.insert_or_assign(key, nullptr);
}

DictionaryEntries::Map DictionaryEntries::known() const
{
    Map entries = changes_;
    entries.insert(originals_.begin(), originals_.end());
    return entries;
}

DictionaryEntries::Map DictionaryEntries::all() const
{
    Map entries = known();
    if (!isComplete()) {
        for (auto& [key, handle] : dictionary_->database->store->readEntries(dictionary_->handle)) {
            if (!entries.contains(key))
                entries.emplace(std::move(key), &dictionary_->database->storedEntry(handle, *dictionary_));
        }
    }
    std::erase_if(entries, [](const auto& entry) { return entry.second == nullptr; });
    return entries;
}

void DictionaryEntries::loadAll()
{
    if (isComplete())
        return;
    for (auto& [key, handle] : dictionary_->database->store->readEntries(dictionary_->handle)) {
        if (originals_.contains(key))
            continue;
        // An entry that was removed since has no owner.
        ObjectRecord& entry = changes_.contains(key) ? dictionary_->database->storedRecord(handle)
                                                     : dictionary_->database->storedEntry(handle, *dictionary_);
        originals_.emplace(std::move(key), &entry);
    }
    dictionary_ = nullptr;
}

} // namespace QeHost
