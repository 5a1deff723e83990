// Builds a resbuf chain.
#pragma once

#include <utility>

#include "storage/host_holders.h"

namespace Orvel {

/// Appends resbufs, single ones or whole chains, to one chain.
class ResbufChainBuilder {
public:
    /// False for an empty part, which means that it could not be made. The chain then stays as it was.
    [[nodiscard]] bool append(ResbufChain part)
    {
        if (!part)
            return false;
        resbuf*& end = last_ != nullptr ? last_->rbnext : chain_.put();
        last_ = end = part.release();
        while (last_->rbnext != nullptr)
            last_ = last_->rbnext;
        return true;
    }

    /// The first resbuf. Null while there is none.
    [[nodiscard]] resbuf* get() const { return chain_.get(); }
    /// Returns the chain. The builder must not be used afterwards.
    [[nodiscard]] ResbufChain take() { return std::move(chain_); }

private:
    ResbufChain chain_;
    resbuf* last_ = nullptr;
};

} // namespace Orvel
