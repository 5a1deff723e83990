// Conversion between resbuf chains, which clients use, and values, which objects hold.
#pragma once

#include <memory>
#include <optional>

#include "embedded/host/database/resbuf_value.h"
#include "platform/host/resbuf.h"

namespace QeHost {

/// Builds a resbuf chain. Releases the chain unless `release` was called.
class ChainBuilder {
public:
    /// Appends a resbuf with the value. False when memory is short or the group code cannot have the value.
    bool append(const Embedded::ResbufValue& value);
    bool append(const Embedded::ResbufValues& values);
    resbuf* release();

private:
    struct Release {
        void operator()(resbuf* chain) const { qeutRelRb(chain); }
    };
    std::unique_ptr<resbuf, Release> first_;
    resbuf* last_ = nullptr;
};

/// The value of one resbuf. A null string counts as an empty one. Nothing for a group code that the host does not store
/// and for a chunk whose length does not fit its bytes.
std::optional<Embedded::ResbufValue> valueOf(const resbuf& item);
/// The values of a whole chain.
std::optional<Embedded::ResbufValues> valuesOf(const resbuf* chain);

} // namespace QeHost
