// What is replaced, in a folder of a test's own: the kinds of replacements that the tests interrupt.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

namespace Tests {

struct SaveScenario {
    const char* name; // a constant, as the others are, for the tests are listed before all else
    /// Puts into an empty folder what is there before the save.
    void (*prepare)(const std::filesystem::path& folder);
    /// The save. Whether it reported success.
    bool (*save)(const std::filesystem::path& folder);
    /// What a program finds that reads it, as a text: empty where there is nothing, and with "refused" in front where
    /// that is not what it has to be.
    std::string (*content)(const std::filesystem::path& folder);

    friend std::ostream& operator<<(std::ostream& stream, const SaveScenario& scenario)
    {
        return stream << scenario.name;
    }
};

/// A file where there was none, one that replaces an older one, and one that does so where a link leads.
extern const SaveScenario kNewFile;
extern const SaveScenario kReplacedFile;
extern const SaveScenario kLinkedFile;

} // namespace Tests
