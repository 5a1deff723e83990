// The library's status enumeration and its root class.
#pragma once

#include "../export.h"

namespace Zentara::Infrastructure::SpatialReference {

/// What a library call came to. The numbers are part of the library's contract.
enum [[nodiscard]] Status : int{statusOk = 0,
                                statusCheckFailed = 10,
                                statusNotFound = 35,       // the catalog has no definition for the code or name
                                statusAmbiguous = 36,      // a name that fits several definitions
                                statusInexact = 41,        // WKT 1 cannot say it; WKT 2 was given instead
                                statusBufferTooSmall = 42, // nothing was written
                                statusUnreadable = 43,     // bytes or text that are not a definition, or are damaged
                                statusUnsupported = 44,    // a format or an operation that the library does not have
                                statusInvalidArgument = 45,
                                statusCatalogUnavailable = 46,
                                statusFailed = 52,
                                statusNullText = 54,
                                statusEmptyText = 55,
                                statusOutOfMemory = 57};

/// The root of what the library hands out; released only through Destroy.
class ZSR_API Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    /// Releases an object; null is allowed.
    static void Destroy(const Object* object);

protected:
    Object();
    virtual ~Object();
};

} // namespace Zentara::Infrastructure::SpatialReference
