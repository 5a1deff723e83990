// The option that names a picture to write.
#pragma once

#include <string>
#include <string_view>

#include <CLI/App.hpp>

#include "orvelcs/cli/output.h"

namespace Orvelcs {

enum class PictureFormat { svg, html };

struct PictureFile {
    std::string name; // empty where no picture is wanted; "-" is standard output, for an SVG
    bool force = false;

    bool isWanted() const { return !name.empty(); }
    bool isStandardOutput() const;
    /// By the ending of the name.
    PictureFormat format() const;
};

/// Adds -o and --force.
CLI::Option* addPictureOptions(CLI::App& command, PictureFile& file);
/// Throws Failure for a name that ends with neither .svg nor .html, and for a picture on standard output beside JSON.
void checkPictureFile(const PictureFile& file, const Output& output);
/// Writes the picture, whole or not at all. Throws Failure as writeOutputFile does.
void writePicture(const PictureFile& file, std::string_view picture, Output& output);

} // namespace Orvelcs
