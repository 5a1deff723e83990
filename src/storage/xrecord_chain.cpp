#include "storage/xrecord_chain.h"

#include "storage/host_holders.h"

namespace Orvel {

bool ReadXrecordChain(QeDbObjectId id, resbuf*& chain)
{
    HostObject<QeDbXrecord> xrecord;
    ResbufChain copy;
    // GCOVR_EXCL_BR_START: leaving the scope, by return or by exception, which g++ does not mark as such
    if (xrecord.open(id, QeDb::kForRead) != Qeapp::eOk ||
        xrecord->rbChain(copy.put(), xrecord->database()) != Qeapp::eOk)
        return false;
    // GCOVR_EXCL_BR_STOP
    chain = copy.release();
    return true;
}

} // namespace Orvel
