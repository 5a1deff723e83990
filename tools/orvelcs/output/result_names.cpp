#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

struct Name {
    int number;
    const char* text;
};

template <std::size_t Count>
ResultCode findName(const Name (&names)[Count], int number, const char* otherwise)
{
    for (const Name& name : names)
        if (name.number == number)
            return {number, name.text};
    return {number, otherwise};
}

} // namespace

ResultCode resultCode(Qeapp::ErrorStatus result)
{
    static constexpr Name kNames[] = {{Qeapp::eOk, "eOk"},
                                      {Qeapp::eNotImplemented, "eNotImplemented"},
                                      {Qeapp::eNotApplicable, "eNotApplicable"},
                                      {Qeapp::eInvalidInput, "eInvalidInput"},
                                      {Qeapp::eAmbiguousInput, "eAmbiguousInput"},
                                      {Qeapp::eAmbiguousOutput, "eAmbiguousOutput"},
                                      {Qeapp::eOutOfMemory, "eOutOfMemory"},
                                      {Qeapp::eInvalidResbuf, "eInvalidResbuf"},
                                      {Qeapp::eNoTransaction, "eNoTransaction"},
                                      {Qeapp::eNoObject, "eNoObject"},
                                      {Qeapp::eNullObjectId, "eNullObjectId"},
                                      {Qeapp::eObjectErased, "eObjectErased"},
                                      {Qeapp::eKeyNotFound, "eKeyNotFound"},
                                      {Qeapp::eDuplicateKey, "eDuplicateKey"},
                                      {Qeapp::eInvalidKey, "eInvalidKey"},
                                      {Qeapp::eUnknownObjectId, "eUnknownObjectId"},
                                      {Qeapp::eNotThatKindOfClass, "eNotThatKindOfClass"},
                                      {Qeapp::eOpenForRead, "eOpenForRead"},
                                      {Qeapp::eOpenForWrite, "eOpenForWrite"},
                                      {Qeapp::eNotOpenForRead, "eNotOpenForRead"},
                                      {Qeapp::eNotOpenForWrite, "eNotOpenForWrite"},
                                      {Qeapp::eNotInDatabase, "eNotInDatabase"},
                                      {Qeapp::eAlreadyInDatabase, "eAlreadyInDatabase"},
                                      {Qeapp::eWrongDatabase, "eWrongDatabase"},
                                      {Qeapp::eInvalidDrawingVersion, "eInvalidDrawingVersion"},
                                      {Qeapp::eRegappNotRegistered, "eRegappNotRegistered"},
                                      {Qeapp::eFileNotFound, "eFileNotFound"},
                                      {Qeapp::eFileDamaged, "eFileDamaged"},
                                      {Qeapp::eFileTooNew, "eFileTooNew"},
                                      {Qeapp::eFileTooLarge, "eFileTooLarge"},
                                      {Qeapp::eFileWriteFailed, "eFileWriteFailed"},
                                      {Qeapp::eFileLocked, "eFileLocked"},
                                      {Qeapp::eFileChanged, "eFileChanged"},
                                      {Qeapp::eFileExists, "eFileExists"},
                                      {Qeapp::eLockConflict, "eLockConflict"},
                                      {Qeapp::eNotLocked, "eNotLocked"},
                                      {Qeapp::eModuleNotFound, "eModuleNotFound"},
                                      {Qeapp::eModuleRefused, "eModuleRefused"},
                                      {Qeapp::eNoDatabase, "eNoDatabase"},
                                      {Qeapp::eVetoed, "eVetoed"}};
    return findName(kNames, result, "result");
}

ResultCode resultCode(Zentara::Infrastructure::SpatialReference::Status status)
{
    namespace Library = Zentara::Infrastructure::SpatialReference;
    static constexpr Name kNames[] = {{Library::statusOk, "statusOk"},
                                      {Library::statusCheckFailed, "statusCheckFailed"},
                                      {Library::statusNotFound, "statusNotFound"},
                                      {Library::statusAmbiguous, "statusAmbiguous"},
                                      {Library::statusInexact, "statusInexact"},
                                      {Library::statusBufferTooSmall, "statusBufferTooSmall"},
                                      {Library::statusUnreadable, "statusUnreadable"},
                                      {Library::statusUnsupported, "statusUnsupported"},
                                      {Library::statusInvalidArgument, "statusInvalidArgument"},
                                      {Library::statusCatalogUnavailable, "statusCatalogUnavailable"},
                                      {Library::statusFailed, "statusFailed"},
                                      {Library::statusNullText, "statusNullText"},
                                      {Library::statusEmptyText, "statusEmptyText"},
                                      {Library::statusOutOfMemory, "statusOutOfMemory"}};
    return findName(kNames, status, "status");
}

std::string resultName(Qeapp::ErrorStatus result)
{
    return resultCode(result).text();
}

std::string statusName(Zentara::Infrastructure::SpatialReference::Status status)
{
    return resultCode(status).text();
}

} // namespace Orvelcs
