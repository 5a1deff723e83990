// A drawing's tables without types, references and unique values, so that any rows can be written. The resulting file
// declares the tables as the schema does.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "fuzz/row_changes.h"
#include "support/drawing_files/row_checksums.h"

namespace Fuzz {

class UnconstrainedDrawing {
public:
    /// Indexes are either kept up to date, and then keep their values unique, or left as they were before the changes.
    enum class Indexes { kept, stale };
    explicit UnconstrainedDrawing(Indexes indexes);

    /// Applies the changes to the sample drawing and returns the file. Checksums fit unless a change overwrites them.
    std::string makeFile(const std::vector<RowChange>& changes);

private:
    void removeConstraints(Indexes indexes);
    void applyChanges(const std::vector<RowChange>& changes, RowMoment moment);
    SQLite::Statement& getStatement(const RowChange& change);

    SQLite::Database database_;
    std::map<std::tuple<RowAction, std::size_t, std::size_t>, SQLite::Statement> statements_;
    // Made after the constraints are removed.
    std::optional<Tests::RowChecksums> checksums_;
    std::optional<SQLite::Statement> forgetSchema_;
    std::optional<SQLite::Statement> restoreSchema_;
};

/// Returns the file of the sample drawing with the changes that the rest of the input decides.
std::string drawingWithChanges(ByteSource& source, UnconstrainedDrawing::Indexes indexes);

} // namespace Fuzz
