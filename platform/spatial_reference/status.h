// The library's status enumeration and its root class.
#pragma once

#include "../export.h"

namespace Zentara::Infrastructure::SpatialReference {

/// The result of a library call. The numbers are part of the library's contract.
enum [[nodiscard]] Status : int{statusOk = 0,
                                statusCheckFailed = 10,
                                statusNotFound = 35,       // the catalog has no definition for the code or name
                                statusAmbiguous = 36,      // several definitions have the name
                                statusInexact = 41,        // WKT 1 cannot describe it; the text is WKT 2
                                statusBufferTooSmall = 42, // nothing was written
                                statusUnreadable = 43,     // the bytes or the text are damaged or not a definition
                                statusUnsupported = 44,    // the library does not have the format or the operation
                                statusInvalidArgument = 45,
                                statusCatalogUnavailable = 46,
                                statusFailed = 52,
                                statusNullText = 54,
                                statusEmptyText = 55,
                                statusOutOfMemory = 57};

/// The root of the objects that the library returns. Only Destroy releases them.
class ZSR_API Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    /// Releases an object. Null is allowed.
    static void Destroy(const Object* object);

protected:
    Object();
    virtual ~Object();
};

} // namespace Zentara::Infrastructure::SpatialReference
