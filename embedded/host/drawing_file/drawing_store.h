// The objects of a drawing that is open in a file.
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
    /// What stopped a call before. Nothing is saved after that: what could not be read would be lost.
    const Expected<void>& result() const { return result_; }

    /// Makes the other database equal to this one. Fails for a file that was changed by others since it was opened, and
    /// throws what SQLiteCpp throws.
    Expected<void> copyTo(DrawingConnection& other);
    /// Takes the lock for writing, unless it is held already. Throws an Error for a file that was changed by
    /// others since it was opened.
    void beginSaving();
    /// Ends what beginSaving began, and keeps what was written. The file is not locked any more.
    void commit();

private:
    /// Answers what `read` reads from the file, all at one moment. Throws an Error.
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
