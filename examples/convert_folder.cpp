// Converts all drawings of a folder to an older drawing version. The module is loaded, so that each save stores the
// coordinate system in the forms that readers of that version know. A drawing that fails stays as it was.
// Run it: build/release/bin/example_convert_folder build/release/bin/OrvelCoordsysCore.so FOLDER 29
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <vector>

#include "embedded/host/application/application.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> findDrawings(const fs::path& folder)
{
    std::vector<fs::path> drawings;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".qedb")
            drawings.push_back(entry.path());
    std::ranges::sort(drawings);
    return drawings;
}

Embedded::Expected<void> convert(const fs::path& file, QeDb::QeDbDwgVersion version)
{
    const auto drawing = Embedded::loadDrawing(file, Embedded::DrawingAccess::changing);
    if (!drawing)
        return Embedded::failure(drawing.error());
    return Embedded::saveDrawing(**drawing, file, version);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: example_convert_folder MODULE FOLDER VERSION\n";
        return 2;
    }
    const auto module = Embedded::loadModule(argv[1]);
    if (!module) {
        std::cerr << module.error().text() << '\n';
        return 1;
    }
    int status = 0;
    for (const fs::path& file : findDrawings(argv[2])) {
        if (const auto result = convert(file, static_cast<QeDb::QeDbDwgVersion>(std::atoi(argv[3]))); result) {
            std::cout << file.filename().string() << ": version " << argv[3] << '\n';
        } else {
            std::cerr << result.error().text() << '\n';
            status = 1;
        }
    }
    return Embedded::unloadModule(*module) == Qeapp::eOk ? status : 1;
}
