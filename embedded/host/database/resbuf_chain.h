// Between resbuf chains, which clients hold, and values, which objects hold.
#pragma once

#include <memory>
#include <optional>

#include "embedded/host/database/resbuf_value.h"
#include "platform/host/resbuf.h"

namespace QeHost {

/// A resbuf chain under construction; releases what was not handed out.
class ChainBuilder {
public:
    /// Appends a resbuf with the value; false without memory or for a value that its group code does not carry.
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

/// The value of one resbuf, a null string being an empty one; nothing for a group code that the host does not store
/// and for a chunk without bytes of its length.
std::optional<Embedded::ResbufValue> valueOf(const resbuf& item);
/// The values of a whole chain.
std::optional<Embedded::ResbufValues> valuesOf(const resbuf* chain);

} // namespace QeHost
