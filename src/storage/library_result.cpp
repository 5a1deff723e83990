#include "storage/library_result.h"

namespace Orvel {

Qeapp::ErrorStatus LibraryResult(Library::Status status)
{
    return status == Library::statusOk ? Qeapp::eOk : Qeapp::eInvalidInput;
}

} // namespace Orvel
