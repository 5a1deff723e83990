// What a dictionary holds.
#pragma once

#include "embedded/host/database/object.h"

namespace QeHost {

struct DictionaryState final : ObjectState {
    DictionaryEntries entries;

    void visit(FieldVisitor& visitor) override { visitor.entries(entries); }
};

} // namespace QeHost
