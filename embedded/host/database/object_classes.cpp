#include "embedded/host/database/object_classes.h"

#include <algorithm>
#include <array>

#include "embedded/host/database/memory.h"
#include "platform/host/dictionary.h"
#include "platform/host/geodata.h"
#include "platform/host/symbol_table.h"
#include "platform/host/xrecord.h"

namespace QeHost {
namespace {

template <class T>
QeDbObject* make()
{
    return makeHostObject<T>();
}

constexpr std::array kClasses{
    ObjectClass{QeDbDictionary::desc, make<QeDbDictionary>, QeDbDictionary::desc},
    ObjectClass{QeDbXrecord::desc, make<QeDbXrecord>, QeDbDictionary::desc},
    ObjectClass{QeDbRegAppTable::desc, make<QeDbRegAppTable>, nullptr},
    ObjectClass{QeDbRegAppTableRecord::desc, make<QeDbRegAppTableRecord>, QeDbRegAppTable::desc},
    ObjectClass{QeDbBlockTable::desc, make<QeDbBlockTable>, nullptr},
    ObjectClass{QeDbBlockTableRecord::desc, make<QeDbBlockTableRecord>, QeDbBlockTable::desc},
    ObjectClass{QeDbGeoData::desc, make<QeDbGeoData>, QeDbBlockTableRecord::desc},
};

} // namespace

const ObjectClass* findClass(std::wstring_view name)
{
    const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                    [name](const auto& each) { return each.desc()->name() == name; });
    return found != kClasses.end() ? found : nullptr;
}

bool canBelongTo(const QeDbObject& object, const QeRxClass* ownersClass)
{
    return std::any_of(kClasses.begin(), kClasses.end(), [&](const auto& each) {
        return each.ownerClass() == ownersClass && object.isKindOf(each.desc());
    });
}

} // namespace QeHost
