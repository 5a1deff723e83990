// How a resbuf chain is put together.
#pragma once

#include <utility>

#include "storage/host_holders.h"

namespace Orvel {

/// Appends resbufs, single ones or whole chains, to one chain.
class ResbufChainBuilder {
public:
    /// False for an empty part, which stands for one that could not be made; the chain then stays as it was.
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

    /// The first resbuf; null while there is none.
    [[nodiscard]] resbuf* get() const { return chain_.get(); }
    /// Hands the chain out. The builder is of no use afterwards.
    [[nodiscard]] ResbufChain take() { return std::move(chain_); }

private:
    ResbufChain chain_;
    resbuf* last_ = nullptr;
};

} // namespace Orvel
