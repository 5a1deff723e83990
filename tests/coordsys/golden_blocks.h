// Serialized definitions that every release must read. The files golden/NAME.FORM.hex hold pairs of hexadecimal digits.
// A semicolon begins a remark.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "support/chain.h"
#include "support/library_definitions.h"

namespace Tests {

struct GoldenBlock {
    std::string name; // of the file, without form and extension
    std::wstring code;
    QeDb::QeDbDwgVersion version = QeDb::kGeoDataTextDwg;

    bool isText() const { return version >= QeDb::kGeoDataTextDwg; }
    /// The file's contents. Throws when there is no file.
    Bytes bytes() const;
};
std::ostream& operator<<(std::ostream& out, const GoldenBlock& block);

/// Six systems of different kinds in both forms.
const std::vector<GoldenBlock>& goldenBlocks();

/// Makes the system of the block, from the catalog or from the text of a user-defined system.
SystemHolder makeSourceSystem(const GoldenBlock& block);

/// Writes the file, after an intended change of the format.
void writeGoldenBlock(const GoldenBlock& block, const Bytes& bytes);

} // namespace Tests
