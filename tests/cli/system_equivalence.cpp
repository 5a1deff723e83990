#include "cli/system_equivalence.h"

#include <memory>

#include <proj.h>

namespace Tests {
namespace {

struct DestroyProjObject {
    void operator()(PJ* object) const { proj_destroy(object); }
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using ProjSystem = std::unique_ptr<PJ, DestroyProjObject>;

ProjSystem readSystem(PJ_CONTEXT* context, const std::string& text, AxisOrder order)
{
    ProjSystem system(proj_create(context, text.c_str()));
    if (system && order == AxisOrder::ignored)
        system.reset(proj_normalize_for_visualization(context, system.get()));
    return system;
}

} // namespace

bool isSameSystem(const std::string& left, const std::string& right, AxisOrder order)
{
    const std::unique_ptr<PJ_CONTEXT, DestroyProjObject> context(proj_context_create());
    proj_log_func(context.get(), nullptr, [](void*, int, const char*) {});
    const ProjSystem first = readSystem(context.get(), left, order);
    const ProjSystem second = readSystem(context.get(), right, order);
    const PJ_COMPARISON_CRITERION criterion = // the second one ignores the axes of a projected system's base, too
        order == AxisOrder::counts ? PJ_COMP_EQUIVALENT : PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS;
    return first && second && proj_is_equivalent_to_with_ctx(context.get(), first.get(), second.get(), criterion) != 0;
}

} // namespace Tests
