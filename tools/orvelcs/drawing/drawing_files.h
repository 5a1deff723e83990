// The drawings that a command is to take: those on the command line and those of a list.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/cli/command.h"

namespace Orvelcs {

struct DrawingFiles {
    std::vector<std::string> names;
    std::string list;
    CLI::Option* listOption = nullptr; // none where the command has no --files-from
    bool nulEndsNames = false;

    bool hasList() const { return listOption != nullptr && listOption->count() > 0; }
    /// Returns whether the result is an array, however many there are.
    bool isBatch() const { return hasList() || names.size() != 1; }
};

/// Adds --files-from and -0. The option or argument with the names is the command's own.
void addFileListOptions(CLI::App& command, DrawingFiles& files);

/// Adds the names of the list to those of the command line. Throws Failure where the list cannot be read, for "-" in
/// it, and for wrong usage: neither names nor a list, or a name that is empty.
void readFileList(DrawingFiles& files);

/// Throws Failure for an empty name, for "-" among several drawings, and for "-" with --json when the drawing is
/// printed.
void checkFileNames(const std::vector<std::string>& files, bool drawingIsPrinted, const Output& output);

} // namespace Orvelcs
