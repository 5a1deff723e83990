// The tables of PROJ's database, read through SQLite. One query tells what PROJ would tell in thousands of calls, and
// why something cannot be read.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/error.h"

struct sqlite3;
struct sqlite3_stmt;

namespace Embedded {

/// One row of a query's result, while it is read.
class CatalogRow {
public:
    explicit CatalogRow(sqlite3_stmt* statement) : statement_(statement) {}

    /// The value as UTF-8; empty for NULL.
    std::string_view text(int column) const;
    bool isTrue(int column) const;
    double number(int column) const;

private:
    sqlite3_stmt* statement_;
};

/// Returns the Error of a database that memory is too short to read.
Error notEnoughMemory(std::string path);

/// A database file that is open for reading. Every Error has statusCatalogUnavailable or statusOutOfMemory, and the
/// path of the file as its place.
class CatalogConnection {
public:
    explicit CatalogConnection(std::string path);

    const std::string& path() const { return path_; }
    bool isOpen() const;

    /// Adds databases of the user's own to it: every table and view has the rows of all of them. One that cannot be
    /// opened is left out here; PROJ then refuses the whole catalog.
    void addDatabases(const std::vector<std::string>& paths);

    /// Calls `read` with each row. The values are those of ?1, ?2 and so on.
    Expected<void> forEachRow(const std::string& sql, const std::vector<std::string>& values,
                              const std::function<void(const CatalogRow&)>& read) const;
    /// The first column of each row.
    Expected<std::vector<std::string>> query(const std::string& sql, const std::vector<std::string>& values = {}) const;

private:
    struct Release {
        void operator()(sqlite3* database) const;
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Release>;

    Expected<Statement> prepare(const std::string& sql, const std::vector<std::string>& values) const;
    bool canSelect(const std::string& table, const std::string& columns) const;
    void uniteTables(const std::string& name, std::size_t databases) const;
    tl::unexpected<Error> error(int result) const;

    std::string path_;
    std::unique_ptr<sqlite3, Release> database_;
    int openResult_;
};

/// The database that PROJ has open, with those of the user's own that PROJ adds to it (PROJ_AUX_DB). It stays open here
/// too, since every code that only a drawing has leads to a query. Call after checkCatalogIsOpen.
const CatalogConnection& openedCatalog();

} // namespace Embedded
