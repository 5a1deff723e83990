// What objects hold. A class lists its fields once, in `visit`; loading, saving, undoing and checking go through them
// with visitors of their own.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/host/database/dictionary_entries.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/resbuf_value.h"
#include "platform/host/object.h"

namespace QeHost {

using ObjectRecord = QeDbObjectRecord;
using ObjectState = QeDbObjectState;

/// By the application's record: the data belongs to the application when it is renamed, and is hidden when it is
/// erased.
using ExtendedData = std::map<ObjectRecord*, Embedded::ResbufValues>;

/// Has one function for each kind of field. `field` is the name of the field in a drawing file. An object has at most
/// one field of each kind without a name.
class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;
    virtual void text(std::string_view field, std::wstring& text) = 0;
    /// A reference to an object that this one does not own.
    virtual void reference(std::string_view field, QeDbObjectId& object) = 0;
    virtual void values(Embedded::ResbufValues& values) = 0;
    /// The objects that this one owns, by key.
    virtual void entries(DictionaryEntries& entries) = 0;
    /// The objects that this one owns and that have names of their own.
    virtual void records(std::vector<ObjectRecord*>& records) = 0;
    virtual void extendedData(ExtendedData& data) = 0;
};

} // namespace QeHost

struct QeDbObjectState {
    QeDbObjectRecord* owner = nullptr;
    bool erased = false;
    QeHost::ExtendedData extendedData;

    QeDbObjectState() = default;
    QeDbObjectState(const QeDbObjectState&) = delete;
    QeDbObjectState& operator=(const QeDbObjectState&) = delete;
    virtual ~QeDbObjectState() = default;

    /// The fields of the class.
    virtual void visit(QeHost::FieldVisitor& visitor) = 0;
    /// The fields of the class and those that every object has.
    void visitAll(QeHost::FieldVisitor& visitor)
    {
        visit(visitor);
        visitor.extendedData(extendedData);
    }
};
