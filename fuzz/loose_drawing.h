// A drawing's tables without what keeps their rows in order: types, references, unique values. In the file that comes
// of it they are declared as they have to be.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "fuzz/row_changes.h"
#include "support/drawing_files/row_reckoning.h"

namespace Fuzz {

class LooseDrawing {
public:
    /// Indexes are either kept, and then keep their values unique, or left as they were before the changes.
    enum class Indexes { kept, stale };
    explicit LooseDrawing(Indexes indexes);

    /// The file of the sample drawing with the changes, whose checksums fit but for those that a change spoils.
    std::string fileWith(const std::vector<RowChange>& changes);

private:
    void loosen(Indexes indexes);
    void make(const std::vector<RowChange>& changes, RowMoment moment);
    SQLite::Statement& statementOf(const RowChange& change);

    SQLite::Database database_;
    std::map<std::tuple<RowAction, std::size_t, std::size_t>, SQLite::Statement> statements_;
    // Made when the tables are loose.
    std::optional<Tests::RowReckoning> reckoning_;
    std::optional<SQLite::Statement> forgetSchema_;
    std::optional<SQLite::Statement> restoreSchema_;
};

/// The file of the sample drawing with the changes that the rest of the input decides.
std::string drawingWithChanges(ByteSource& source, LooseDrawing::Indexes indexes);

} // namespace Fuzz
