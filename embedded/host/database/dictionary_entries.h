// The entries of a dictionary: the entries that the drawing's file had when it was opened, which are read one by one,
// and the changes since.
#pragma once

#include <map>
#include <string>

#include "platform/host/object.h"

namespace QeHost {

using ObjectRecord = QeDbObjectRecord;

/// An entry stays while its object is erased, and is there again when the object is unerased. Queries of a dictionary
/// leave such entries out. Functions that read the file throw an Error for damage.
class DictionaryEntries {
public:
    using Map = std::map<std::wstring, ObjectRecord*>;

    /// The object under the key, erased or not; or null.
    ObjectRecord* find(const std::wstring& key) const;
    /// The key of the object, or an empty text for an object without an entry.
    std::wstring findKey(const ObjectRecord& object) const;
    /// All entries. Reads the file.
    Map all() const;
    /// The entries that are known without reading the file.
    Map known() const;

    /// Adds the one entry of the map. Allocates nothing.
    void put(Map&& entry);
    void remove(const std::wstring& key);

    /// From now on the entries that are not known are read from the file that the dictionary was loaded from.
    void loadOnDemandFrom(ObjectRecord& dictionary) { dictionary_ = &dictionary; }
    /// Returns whether all entries are known.
    bool isComplete() const { return dictionary_ == nullptr; }
    /// Reads every entry that is still only in the file. A save is about to remove them there.
    void loadAll();
    /// Keeps what the file had under the key before a save changes it: the object, or null for none.
    void keepOriginal(const std::wstring& key, ObjectRecord* object) { originals_.try_emplace(key, object); }

    /// What transactions undo: the object of each changed key, or null for a removed entry.
    Map changes() const { return changes_; }
    void restoreChanges(Map&& changes) noexcept { changes_.swap(changes); }

private:
    ObjectRecord* findOriginal(const std::wstring& key) const;
    std::wstring findStoredKey(const ObjectRecord& object) const;

    Map changes_;   // since the drawing was opened
    Map originals_; // the entries at that time of the keys that a save has changed in the file
    ObjectRecord* dictionary_ = nullptr;
};

} // namespace QeHost
