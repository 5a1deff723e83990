// A user-defined coordinate reference system from a text file.
#pragma once

#include <string>

#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"

namespace Orvelcs {

using DefinedSystem = LibraryObject<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition>;

/// The file's text is not a definition; with the library's status, 0 when the library was not asked.
class DefinitionFailure : public Failure {
public:
    DefinitionFailure(const std::string& file, const std::string& message,
                      Zentara::Infrastructure::SpatialReference::Status status)
        : Failure(file, message), libraryStatus_(status)
    {
    }
    Zentara::Infrastructure::SpatialReference::Status libraryStatus() const { return libraryStatus_; }

private:
    Zentara::Infrastructure::SpatialReference::Status libraryStatus_;
};

/// Reads WKT, PROJJSON or a PROJ string from a UTF-8 file ("-": standard input), with or without a byte-order mark.
/// Throws Failure.
DefinedSystem systemFromTextFile(const std::string& file, const std::wstring& code);

} // namespace Orvelcs
