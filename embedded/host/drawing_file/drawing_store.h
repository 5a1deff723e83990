// The objects of a drawing file that is open.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "embedded/host/database/object_store.h"
#include "embedded/host/drawing_file/drawing_connection.h"
#include "embedded/host/drawing_file/drawing_header.h"

namespace Embedded {

class DrawingStore final : public QeHost::ObjectStore {
public:
    /// The connection may be in a transaction, which it then keeps until the drawing is saved or closed. `path` is
    /// empty for a database in memory; `file` is how messages name the file.
    DrawingStore(std::unique_ptr<DrawingConnection> connection, std::filesystem::path path, std::string file);

    DrawingHeader header();
    QeHost::StoredObject lookUp(Handle object) override;
    void load(QeHost::ObjectRecord& object, QeHost::ObjectState& state) override;
    Handle findEntry(Handle dictionary, const std::wstring& key) override;
    std::vector<std::pair<std::wstring, Handle>> readEntries(Handle dictionary) override;
    std::pair<Handle, std::wstring> findOwningEntry(Handle object) override;
    std::vector<Handle> findApplicationUsers(Handle application) override;
    [[noreturn]] void throwDamage(Handle object, const std::string& message) override;

    DrawingConnection& connection() { return *connection_; }
    const std::filesystem::path& path() const { return path_; }
    const std::string& file() const { return file_; }
    /// The first failure of a call. The drawing cannot be saved after it, because what could not be read would be lost.
    const Expected<void>& result() const { return result_; }

    /// Copies the whole file into the other database. Fails if another program has changed the file since it was
    /// opened, and throws what SQLiteCpp throws.
    Expected<void> copyTo(DrawingConnection& other);
    /// Takes the write lock, unless the store holds it already. Throws an Error if another program has changed the
    /// file since it was opened.
    void beginSaving();
    /// Commits the transaction and releases the lock.
    void commit();

private:
    /// Runs `read` in a read transaction and returns its result. Throws an Error.
    template <class Read>
    auto inReadTransaction(Read read);
    void requireUnchanged();

    std::unique_ptr<DrawingConnection> connection_;
    std::filesystem::path path_;
    std::string file_;
    std::uint32_t version_ = 0; // the file's change counter when it was opened, or after the last save
    Expected<void> result_;
};

} // namespace Embedded
