// The host's result enumeration.
#pragma once

namespace Qeapp {

/// The result of a host call. Every value except eOk is a failure after which nothing is changed, unless the call's
/// comment says otherwise. The numbers are part of the host's contract. Clients can receive numbers that have no name
/// here.
enum [[nodiscard]] ErrorStatus : int{eOk = 0,
                                     eNotImplemented = 1,
                                     eNotApplicable = 2,
                                     eInvalidInput = 3,
                                     eAmbiguousInput = 4,
                                     eAmbiguousOutput = 5,
                                     eOutOfMemory = 6,
                                     eInvalidResbuf = 7,
                                     eNoTransaction = 8,
                                     eNoObject = 15,
                                     eNullObjectId = 16,
                                     eObjectErased = 17,
                                     eKeyNotFound = 22,
                                     eDuplicateKey = 23,
                                     eInvalidKey = 24,
                                     eUnknownObjectId = 25,
                                     eNotThatKindOfClass = 26,
                                     eOpenForRead = 30,
                                     eOpenForWrite = 31,
                                     eNotOpenForRead = 32,
                                     eNotOpenForWrite = 33,
                                     eNotInDatabase = 34,
                                     eAlreadyInDatabase = 35,
                                     eWrongDatabase = 36,
                                     eInvalidDrawingVersion = 37,
                                     eRegappNotRegistered = 40,
                                     eFileNotFound = 50,
                                     eFileDamaged = 51,
                                     eFileTooNew = 52,
                                     eFileTooLarge = 53,
                                     eFileWriteFailed = 54,
                                     eFileLocked = 55,
                                     eFileChanged = 56,
                                     eFileExists = 57,
                                     eLockConflict = 60,
                                     eNotLocked = 61,
                                     eModuleNotFound = 70,
                                     eModuleRefused = 71,
                                     eNoDatabase = 124,
                                     eVetoed = 325};

} // namespace Qeapp
