// The saves of drawings that the tests interrupt.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include "saves/posix/simulated_disk.h"

namespace Tests {

struct DrawingScenario {
    const char* name; // the scenarios are constants, since tests are registered before main
    /// The contents of the folder before the save.
    const FolderContents& (*initialContents)();
    /// Opens, changes, saves and closes the drawing. Returns whether the save reported success.
    bool (*save)(const std::filesystem::path& folder);
    bool canRepeat;       // whether the save can be made again after a success
    bool shortensItsFile; // whether the save shortens the file after its commit

    friend std::ostream& operator<<(std::ostream& stream, const DrawingScenario& scenario)
    {
        return stream << scenario.name;
    }
};

/// A new drawing; a drawing of many pages that is changed everywhere; one that gets much smaller; one that is copied to
/// a new file, and over another drawing.
extern const DrawingScenario kNewDrawing;
extern const DrawingScenario kChangedDrawing;
extern const DrawingScenario kShrunkDrawing;
extern const DrawingScenario kCopiedDrawing;
extern const DrawingScenario kOverwrittenDrawing;

/// Opens the drawings in the folder and returns their contents as text: "nothing" for a missing or empty file, and
/// "refused" for a damaged one.
std::string readDrawingsIn(const std::filesystem::path& folder);

} // namespace Tests
