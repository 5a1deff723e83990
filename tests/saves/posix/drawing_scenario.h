// Saves of drawings, in a folder of a test's own: the kinds that the tests interrupt.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include "saves/posix/simulated_disk.h"

namespace Tests {

struct DrawingScenario {
    const char* name; // a constant, as the others are, for the tests are listed before all else
    /// What lies in the folder before the save.
    const FolderContents& (*held)();
    /// The save, from opening to closing. Whether it reported success.
    bool (*save)(const std::filesystem::path& folder);
    bool canRepeat;       // the save, when it was done
    bool shortensItsFile; // the save, behind its commit

    friend std::ostream& operator<<(std::ostream& stream, const DrawingScenario& scenario)
    {
        return stream << scenario.name;
    }
};

/// A drawing where there was none; a drawing of many pages that is changed all over; one that gets much smaller; one
/// that is copied to where nothing is, and over another.
extern const DrawingScenario kNewDrawing;
extern const DrawingScenario kChangedDrawing;
extern const DrawingScenario kShrunkDrawing;
extern const DrawingScenario kCopiedDrawing;
extern const DrawingScenario kOverwrittenDrawing;

/// What a program finds in the folder's drawings that opens them: all of them as text, with "nothing" for one that is
/// not there or of no bytes, and "refused" for one that is not whole.
std::string drawingsIn(const std::filesystem::path& folder);

} // namespace Tests
