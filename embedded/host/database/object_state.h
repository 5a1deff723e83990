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

/// By the application's record, so that the data follows a renamed application and vanishes with an erased one.
using ExtendedData = std::map<ObjectRecord*, Embedded::ResbufValues>;

/// A kind of field a function. `field` is the name under which a drawing file keeps it; an object has one field at most
/// of each kind without a name.
class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;
    virtual void text(std::string_view field, std::wstring& text) = 0;
    /// Another object, which this one does not own.
    virtual void reference(std::string_view field, QeDbObjectId& object) = 0;
    virtual void values(Embedded::ResbufValues& values) = 0;
    /// Objects that this one owns, by key.
    virtual void entries(DictionaryEntries& entries) = 0;
    /// Objects that this one owns, which have names of their own.
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
    /// Those that every object has, too.
    void visitAll(QeHost::FieldVisitor& visitor)
    {
        visit(visitor);
        visitor.extendedData(extendedData);
    }
};
