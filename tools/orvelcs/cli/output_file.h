// Files that commands write at the user's request.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "embedded/base/staged_file.h"

namespace Orvelcs {

/// The message for a file that must not be overwritten.
inline constexpr const char* kExists = "exists; --force overwrites it";

enum class OverwritingFiles { refused, allowed };

/// A file that is written piece by piece and gets its name when it is complete. Until then, and if it is never
/// completed, the file of that name stays as it was.
class OutputFile {
public:
    /// Throws Failure when the file cannot be made, and for a file that exists unless overwriting is allowed.
    OutputFile(std::string name, OverwritingFiles overwriting);

    /// Throws Failure as `complete` does.
    void write(std::string_view bytes);
    /// Throws Failure when the file cannot be written, and when another program has made one of its name that must not
    /// be overwritten.
    void complete();

    const std::string& name() const { return name_; }

private:
    void writeBuffer();

    std::string name_;
    bool replaces_;
    Embedded::StagedFile staged_;
    std::string buffer_;
};

/// Writes the bytes into the file, whole or not at all. Throws Failure when that fails, and for a file that exists
/// unless overwriting is allowed.
void writeOutputFile(const std::string& file, std::string_view bytes, OverwritingFiles overwriting);

} // namespace Orvelcs
