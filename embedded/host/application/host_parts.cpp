#include "embedded/host/application/host_parts.h"

Embedded::HostParts& QeHost::hostParts()
{
    static Embedded::HostParts parts;
    return parts;
}

void Embedded::setHostParts(HostParts parts)
{
    QeHost::hostParts() = parts;
}
