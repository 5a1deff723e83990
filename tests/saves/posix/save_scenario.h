// The replacements of whole files that the tests interrupt.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

namespace Tests {

struct SaveScenario {
    const char* name; // the scenarios are constants, since tests are registered before main
    /// Fills an empty folder as it is before the save.
    void (*prepare)(const std::filesystem::path& folder);
    /// Saves. Returns whether the save reported success.
    bool (*save)(const std::filesystem::path& folder);
    /// Reads the file. Returns an empty text if it is missing, and "refused: …" if it is not as it has to be.
    std::string (*content)(const std::filesystem::path& folder);

    friend std::ostream& operator<<(std::ostream& stream, const SaveScenario& scenario)
    {
        return stream << scenario.name;
    }
};

/// A new file, one that replaces an older one, and one that replaces the target of a link.
extern const SaveScenario kNewFile;
extern const SaveScenario kReplacedFile;
extern const SaveScenario kLinkedFile;

} // namespace Tests
