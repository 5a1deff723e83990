// Blocks of serialized definitions as they were written once and must be read for ever: golden/NAME.FORM.hex, pairs of
// hexadecimal digits with a remark behind a semicolon.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "support/chain.h"
#include "support/library_definitions.h"

namespace Tests {

struct GoldenBlock {
    std::string name; // of the file, without its form
    std::wstring code;
    QeDb::QeDbDwgVersion version = QeDb::kGeoDataTextDwg;

    bool isText() const { return version >= QeDb::kGeoDataTextDwg; }
    /// The file's contents. Throws when there is no file.
    Bytes bytes() const;
};
std::ostream& operator<<(std::ostream& out, const GoldenBlock& block);

/// Six systems of different kinds in both forms.
const std::vector<GoldenBlock>& goldenBlocks();

/// The same systems, made from the catalog and from a user's text.
SystemHolder sourceOf(const GoldenBlock& block);

/// Writes the file. Only an intended change of the format is a reason to do so.
void writeGoldenBlock(const GoldenBlock& block, const Bytes& bytes);

} // namespace Tests
