#include "storage/xrecord_chain.h"

#include "storage/host_holders.h"

namespace Orvel {

bool ReadXrecordChain(QeDbObjectId id, resbuf*& chain)
{
    HostObject<QeDbXrecord> xrecord;
    ResbufChain copy;
    if (xrecord.open(id, QeDb::kForRead) != Qeapp::eOk ||
        xrecord->rbChain(copy.put(), xrecord->database()) != Qeapp::eOk)
        return false;
    chain = copy.release();
    return true;
}

} // namespace Orvel
