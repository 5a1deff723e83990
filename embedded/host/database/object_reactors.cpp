#include <algorithm>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/object.h"

namespace QeHost {
namespace {

bool isRegistered(const ObjectImp& imp, const QeDbObjectReactor* reactor)
{
    return std::find(imp.reactors.begin(), imp.reactors.end(), reactor) != imp.reactors.end();
}

/// Goes through a copy: a reactor may come or go while it is told.
template <class Notice>
void tellReactors(const QeDbObject& object, Notice notice)
{
    const std::vector<QeDbObjectReactor*> reactors = object.imp().reactors;
    for (QeDbObjectReactor* reactor : reactors) {
        if (isRegistered(object.imp(), reactor))
            notice(*reactor);
    }
}

} // namespace

void notifyModified(const QeDbObject& object)
{
    tellReactors(object, [&](QeDbObjectReactor& reactor) { reactor.modified(&object); });
}

void notifyErased(const QeDbObject& object, bool erasing)
{
    tellReactors(object, [&](QeDbObjectReactor& reactor) { reactor.erased(&object, erasing); });
}

} // namespace QeHost

QeDbObjectReactor::~QeDbObjectReactor() = default;

void QeDbObjectReactor::modified(const QeDbObject* /*object*/)
{
}

void QeDbObjectReactor::erased(const QeDbObject* /*object*/, bool /*erasing*/)
{
}

void QeDbObject::addReactor(QeDbObjectReactor* reactor)
{
    if (reactor == nullptr || QeHost::isRegistered(*imp_, reactor))
        return;
    imp_->reactors.push_back(reactor);
    Embedded::ResourceCounters::add(Embedded::ResourceKind::objectReactor);
}

void QeDbObject::removeReactor(QeDbObjectReactor* reactor)
{
    const auto removed = std::erase(imp_->reactors, reactor);
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::objectReactor, static_cast<long>(removed));
}
