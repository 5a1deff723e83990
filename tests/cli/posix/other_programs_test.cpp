// What --format prints, read by the programs of PROJ and GDAL.
#include "cli/command_line_test.h"
#include "cli/posix/installed_program.h"
#include "cli/system_equivalence.h"

namespace Tests {
namespace {

constexpr const char* kOwnSystem =
    "+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=5 +y_0=7 +datum=WGS84 +units=m +no_defs +type=crs";

class OtherPrograms : public CommandLineTest {
protected:
    /// A drawing with a system of the catalog, or with the user's own.
    std::string givenDrawingOf(const std::string& system) const
    {
        if (system == kOwnSystem) {
            given("works.txt", system);
            givenDrawing("works.qedb");
            EXPECT_EQ(run({"assign", "@works.txt", "--code", "WORKS:1", "works.qedb"}).status, 0);
            return "works.qedb";
        }
        const std::string drawing = system.substr(system.find(':') + 1) + ".qedb";
        givenDrawingWith(drawing, system);
        return drawing;
    }
    std::string show(const std::string& drawing, const std::string& format) const
    {
        const ProgramResult shown = run({"show", drawing, "--format", format});
        EXPECT_EQ(shown.status, 0) << shown.errors;
        return shown.output;
    }
    /// The output of another program, which must succeed.
    std::string runOther(const std::filesystem::path& program, const Arguments& arguments) const
    {
        ProgramRun other;
        other.program = program;
        other.arguments = arguments;
        const ProgramResult result = run(other);
        EXPECT_EQ(result.status, 0) << program << ": " << result.errors;
        return result.output;
    }
};

/// The definition that ogrinfo prints of a layer.
std::string systemOfLayer(const std::string& information)
{
    const std::string heading = "Layer SRS WKT:\n";
    const std::size_t begin = information.find(heading);
    if (begin == std::string::npos)
        return "";
    const std::size_t end = information.find("\nData axis", begin);
    return information.substr(begin + heading.size(), end - begin - heading.size());
}

TEST_F(OtherPrograms, Projinfo_ReadsEachFormatAsTheSameSystem)
{
    for (const std::string code : {"EPSG:26915", "EPSG:4326"}) {
        const std::string drawing = givenDrawingOf(code);
        for (const std::string format : {"wkt2", "wkt1", "esri", "projjson", "proj"}) {
            SCOPED_TRACE(code + " " + format);
            const std::string read =
                runOther(findProjProgram("projinfo"), {"-q", "-o", "PROJJSON", show(drawing, format)});
            const bool hasOrder = format != "esri" && format != "proj";
            EXPECT_TRUE(isSameSystem(code, read, hasOrder ? AxisOrder::counts : AxisOrder::ignored)) << read;
        }
    }
}

TEST_F(OtherPrograms, Gdalsrsinfo_ReadsEachFormatWithAnOrderOfAxesAsTheSameSystem)
{
    for (const std::string system : {"EPSG:31467", "EPSG:7415", kOwnSystem}) {
        const std::string drawing = givenDrawingOf(system);
        for (const std::string format : {"wkt2", "wkt1", "projjson"}) {
            SCOPED_TRACE(system + " " + format);
            const std::string read =
                runOther(findProgram("gdalsrsinfo", "gdal-bin"), {"-o", "wkt2", show(drawing, format)});
            EXPECT_TRUE(isSameSystem(system, read)) << read;
        }
    }
}

TEST_F(OtherPrograms, Ogr2ogr_GivesAFileTheSystemOfADrawing)
{
    given("plan.geojson", R"({"type": "FeatureCollection", "features": [{"type": "Feature", "properties": {},
        "geometry": {"type": "Point", "coordinates": [500000, 5500000]}}]})");
    for (const std::string system : {"EPSG:25832", "EPSG:4979", kOwnSystem}) {
        SCOPED_TRACE(system);
        const std::string definition = show(givenDrawingOf(system), "wkt2");
        runOther(findProgram("ogr2ogr", "gdal-bin"), {"-overwrite", "-a_srs", definition, "plan.gpkg", "plan.geojson"});
        const std::string information = runOther(findProgram("ogrinfo", "gdal-bin"), {"-so", "-al", "plan.gpkg"});
        EXPECT_THAT(information, testing::HasSubstr("Feature Count: 1\n"));
        EXPECT_TRUE(isSameSystem(system, systemOfLayer(information))) << information;
    }
}

} // namespace
} // namespace Tests
