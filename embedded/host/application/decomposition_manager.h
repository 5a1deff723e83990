// The registered decomposition reactors. Made at first use and never destroyed.
#pragma once

#include <vector>

#include "platform/host/decomposition.h"

namespace QeHost {

class DecompositionManager final : public QeDbDecompositionManager {
public:
    Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor) override;
    Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor) override;

    /// Calls `visit` for each reactor until it returns false. `visit` may add and remove reactors.
    template <class Visit>
    void forEach(Visit visit)
    {
        const std::vector<QeDbDecompositionReactor*> reactors = reactors_;
        for (QeDbDecompositionReactor* reactor : reactors) {
            if (isRegistered(reactor) && !visit(*reactor))
                return;
        }
    }

private:
    bool isRegistered(const QeDbDecompositionReactor* reactor) const;

    std::vector<QeDbDecompositionReactor*> reactors_;
};

DecompositionManager& decompositionManager();

} // namespace QeHost
