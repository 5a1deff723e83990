#include "sweep/scenario.h"

namespace Tests {

const std::vector<Scenario>& allScenarios()
{
    static const Scenarios all = [] {
        Scenarios joined;
        for (const auto subject : {readingScenarios, assigningScenarios, clearingScenarios, blockScenarios,
                                   storageVersionScenarios, reactorListScenarios, configurationScenarios,
                                   lookUpScenarios, itemScenarios, frameScenarios, savingScenarios}) {
            for (Scenario& scenario : subject())
                joined.push_back(std::move(scenario));
        }
        return joined;
    }();
    return all;
}

} // namespace Tests
