// Compares three lists of names: what the module needs of its platform (docs/porting.md), what the minimal headers
// declare (tests/porting/platform), and what the sources use.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "project/declared_names.h"
#include "project/source_tree.h"

namespace Tests {

/// The names in the sources of the module, by their context.
struct Usage {
    Names identifiers;
    Names qualified;  // "A::b"
    Names selected;   // b after ".", "->" or "::"
    Names overridden; // b in "b(…) override"
};
Usage collectUsage(const std::vector<SourceFile>& sources);

/// The names that a header declares. Names of the spatial-reference library have no namespace.
Names parsePlatformNames(std::string_view header);

/// The names in back-ticks in the first column of the tables below the heading of the header.
Names parseListedNames(std::string_view markdown, const std::string& header);

/// Whether the sources use a declared name: a member after its object or class, or in an override; a name in a
/// namespace after the namespace; any other name by itself. A class is used when a member is used.
bool isUsed(const std::string& name, const Names& declared, const Usage& usage);

/// One complaint for each name that `others` lacks, made of the name and the given text.
std::vector<std::string> complainAboutMissing(const Names& names, const Names& others, const std::string& what);

/// The declared types, calls and constants that the sources use, without members.
Names findUsedFreeNames(const Names& declared, const Usage& usage);

/// The identifiers with a prefix of the platform that are part of no listed name.
Names findUnlistedNames(const Names& listed, const Usage& usage);

} // namespace Tests
