// Compares what the kit's headers ask of a platform (examples/port/platform) with what the sources of the module use
// and with the declarations of other platforms.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "project/porting_declarations.h"
#include "project/source_tree.h"

namespace Tests {

using Names = std::set<std::string>;

/// The names in the sources of the module, by their context.
struct Usage {
    Names identifiers;
    Names qualified;  // "A::b"
    Names selected;   // b after ".", "->" or "::"
    Names overridden; // b in "b(…) override"
};
Usage collectUsage(const std::vector<SourceFile>& sources);

/// Whether the comment says that the module does not use the name, which is there for others.
bool isForOthers(const Declaration& declaration);

/// The names of the declarations, without constructors, destructors, operators, and forward declarations without a
/// comment.
Names collectNames(const std::vector<Declaration>& declarations);

/// One complaint for each declaration with a comment that the platform lacks, and for each function or field that it
/// has with other types. A platform's function may have more parameters with defaults, be const, and be a member of a
/// base; a result that the comment leaves to the product may be of any type.
std::vector<std::string> compareWithPlatform(const std::vector<Declaration>& asked,
                                             const std::vector<Declaration>& platform);

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
