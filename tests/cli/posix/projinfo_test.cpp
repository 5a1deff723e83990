// What --format prints, read by PROJ's own program.
#include <proj.h>

#include "cli/command_line_test.h"
#include "cli/posix/proj_program.h"

namespace Tests {
namespace {

using ProjinfoReads = CommandLineTest;

bool isSameSystem(PJ_CONTEXT* context, const std::string& left, const std::string& right)
{
    PJ* const first = proj_create(context, left.c_str());
    PJ* const second = proj_create(context, right.c_str());
    const bool isSame =
        first != nullptr && second != nullptr &&
        proj_is_equivalent_to_with_ctx(context, first, second, PJ_COMP_EQUIVALENT_EXCEPT_AXIS_ORDER_GEOGCRS) != 0;
    proj_destroy(first);
    proj_destroy(second);
    return isSame;
}

TEST_F(ProjinfoReads, EachFormatOfADrawing_AsTheSameSystem)
{
    PJ_CONTEXT* const context = proj_context_create();
    for (const std::string code : {"EPSG:26915", "EPSG:4326"}) {
        const std::string drawing = code.substr(5) + ".qedb";
        givenDrawingWith(drawing, code);
        for (const std::string format : {"wkt2", "wkt1", "esri", "projjson", "proj"}) {
            SCOPED_TRACE(code + " " + format);
            const std::string definition = run({"show", drawing, "--format", format}).output;
            ProgramRun projinfo;
            projinfo.program = findProjProgram("projinfo");
            projinfo.arguments = {"-q", "-o", "PROJJSON", definition};
            const ProgramResult read = run(projinfo);
            EXPECT_EQ(read.status, 0) << read.errors;
            EXPECT_TRUE(isSameSystem(context, code, read.output)) << read.output;
        }
    }
    proj_context_destroy(context);
}

} // namespace
} // namespace Tests
