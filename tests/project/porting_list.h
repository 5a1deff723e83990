// The list of what the module needs of its platform (docs/porting.md), the headers that declare just that
// (tests/porting/platform), and what the sources use: three accounts of the same names.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "project/declared_names.h"
#include "project/source_tree.h"

namespace Tests {

/// The names in the sources of the module, by the way in which they stand there.
struct Usage {
    Names identifiers;
    Names qualified;  // "A::b" for each b behind an A::
    Names selected;   // b behind ".", "->" or "::"
    Names overridden; // b in "b(…) override"
};
Usage usageIn(const std::vector<SourceFile>& sources);

/// The names that a header declares, those of the spatial-reference library without their namespace.
Names platformNames(std::string_view header);

/// Back-ticked names in the first column of the tables below the page's heading that names the header.
Names listedNames(std::string_view markdown, const std::string& header);

/// Whether the sources use one of the names that a platform declares: a member behind its object or class, or in an
/// override; a name in a namespace behind the namespace; any other by itself. A class is used with its members.
bool isUsed(const std::string& name, const Names& declared, const Usage& usage);

/// One complaint, the name and what is said, for each name of `names` that `others` lacks.
std::vector<std::string> missing(const Names& names, const Names& others, const std::string& what);

/// Those of the declared types, calls and constants, members aside, that the sources use.
Names usedFreeNames(const Names& declared, const Usage& usage);

/// Identifiers that begin as the platform's do and are part of no listed name.
Names strangers(const Names& listed, const Usage& usage);

} // namespace Tests
