// The entries of a dictionary: what the drawing's file had when it was opened, asked for entry by entry, and what was
// changed since.
#pragma once

#include <map>
#include <string>

namespace QeHost {

using ObjectRecord = QeDbObjectRecord;

/// An entry whose object is erased stays, so that it is back when the object is unerased; no query of a dictionary
/// shows it. What asks the file throws an Error.
class DictionaryEntries {
public:
    using Map = std::map<std::wstring, ObjectRecord*>;

    /// The object under the key, erased or not; or null.
    ObjectRecord* find(const std::wstring& key) const;
    /// The key that the object is under; empty when it is under none.
    std::wstring findKey(const ObjectRecord& object) const;
    /// All of them.
    Map all() const;
    /// Those that need not be asked for.
    Map known() const;

    /// One entry, made before: this needs no memory.
    void put(Map&& entry);
    void remove(const std::wstring& key);

    /// The other entries lie in the file that the dictionary was loaded from.
    void loadOnDemandFrom(ObjectRecord& dictionary) { dictionary_ = &dictionary; }
    /// Whether nothing is left to ask the file for.
    bool isComplete() const { return dictionary_ == nullptr; }
    /// Takes in every entry that still lies in the file, which is about to lose them.
    void loadAll();
    /// A save is about to change what the file has under the key: before, there was this object, or none for null.
    void keepOriginal(const std::wstring& key, ObjectRecord* object) { originals_.try_emplace(key, object); }

    /// What transactions undo: null for a key whose entry was taken out.
    Map changes() const { return changes_; }
    void restoreChanges(Map&& changes) noexcept { changes_.swap(changes); }

private:
    ObjectRecord* findOriginal(const std::wstring& key) const;
    std::wstring findStoredKey(const ObjectRecord& object) const;

    Map changes_;   // since the drawing was opened
    Map originals_; // as they were then, of the keys that are no longer so in the file
    ObjectRecord* dictionary_ = nullptr;
};

} // namespace QeHost
