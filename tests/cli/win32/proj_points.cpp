#include "cli/proj_points.h"

#include <proj.h>

#include <memory>
#include <sstream>
#include <stdexcept>

namespace Tests {
namespace {

using Context = std::unique_ptr<PJ_CONTEXT, decltype(&proj_context_destroy)>;
using Operation = std::unique_ptr<PJ, decltype(&proj_destroy)>;

/// Uses the catalog beside the program.
Context contextWithCatalog()
{
    Context context(proj_context_create(), proj_context_destroy);
    const std::filesystem::path catalog = std::filesystem::path(ORVELCS_PROGRAM).parent_path() / "proj.db";
    if (!context || proj_context_set_database_path(context.get(), catalog.string().c_str(), nullptr, nullptr) == 0)
        throw std::runtime_error("no catalog");
    return context;
}

} // namespace

// PROJ for this system has no program for coordinate operations, but the library does the same.
std::string transformByProj(const std::string& code, bool isInverse, const std::string& points,
                            const std::filesystem::path& /*folder*/)
{
    const Context context = contextWithCatalog();
    const std::size_t colon = code.find(':');
    const Operation operation(proj_create_from_database(context.get(), code.substr(0, colon).c_str(),
                                                        code.substr(colon + 1).c_str(),
                                                        PJ_CATEGORY_COORDINATE_OPERATION, 0, nullptr),
                              proj_destroy);
    if (!operation)
        throw std::runtime_error(code + " is no operation");
    std::istringstream numbers(points);
    std::ostringstream text;
    text.precision(17);
    for (double x = 0, y = 0, z = 0; numbers >> x >> y >> z;) {
        const PJ_COORD point = proj_trans(operation.get(), isInverse ? PJ_INV : PJ_FWD, proj_coord(x, y, z, 0));
        text << point.xyz.x << ' ' << point.xyz.y << ' ' << point.xyz.z << '\n';
    }
    return text.str();
}

} // namespace Tests
