// GDAL reads exported files as the same systems.
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <regex>
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/system_equivalence.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"

namespace Tests {
namespace {

unsigned numberFromEnvironment(const char* name, unsigned otherwise)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

/// A slow build takes a share of the systems.
constexpr unsigned kSystems = ORVEL_CATALOG_STRIDE == 1 ? 24 : 4;

/// Draws live systems of the catalog: by turns any one, and one of each kind. The same seed gives the same systems.
std::vector<std::string> drawSystems(unsigned count, unsigned seed)
{
    std::map<int, std::vector<std::string>> byKind;
    std::vector<std::string> all;
    for (const Embedded::CatalogEntry& entry : Embedded::catalogEntries()) {
        if (entry.deprecated)
            continue;
        all.push_back(Embedded::utf8FromWide(entry.code));
        byKind[entry.kind].push_back(all.back());
    }
    std::mt19937 random(seed);
    std::vector<std::string> drawn;
    for (unsigned index = 0; drawn.size() < count; ++index) {
        const auto& kind = std::next(byKind.begin(), static_cast<std::ptrdiff_t>(index / 2 % byKind.size()))->second;
        const std::vector<std::string>& source = index % 2 == 0 ? all : kind;
        drawn.push_back(source[random() % source.size()]);
    }
    return drawn;
}

struct ExportedFile {
    std::string name;
    std::string definition; // that PROJ reads
};

/// ESRI's names of datums have a prefix, which other names have, too.
bool isSameInEsriWkt(const std::string& system, const std::string& read)
{
    static const std::regex kPrefix("\"name\":\"D_");
    return isSameSystem(system, read, AxisOrder::ignored) ||
           isSameSystem(system, std::regex_replace(read, kPrefix, "\"name\":\""), AxisOrder::ignored);
}

class ExportedSystems : public CommandLineTest {
protected:
    void givenDrawings(const std::vector<std::string>& systems) const
    {
        Arguments create = {"new", "--quiet"};
        for (std::size_t index = 0; index < systems.size(); ++index)
            create.push_back(drawingName(index));
        ASSERT_EQ(run(create).status, 0);
        for (std::size_t index = 0; index < systems.size(); ++index)
            ASSERT_EQ(run(assignment(systems[index], drawingName(index))).status, 0) << systems[index];
    }
    /// Exports each drawing in each format.
    void exportAll(const std::vector<std::string>& systems)
    {
        for (std::size_t index = 0; index < systems.size(); ++index)
            for (const std::string ending : {".prj", ".wkt", ".json", ".gpkg"})
                exportOne(systems[index], drawingName(index), std::to_string(index) + ending);
    }
    /// Returns how many files GDAL reads as the system that was exported.
    int countEqual() const
    {
        std::istringstream lines(readWithGdal());
        int equal = 0;
        for (const ExportedFile& file : written_) {
            std::string read;
            std::getline(lines, read);
            const bool isEsri = file.name.ends_with(".prj");
            const bool isSame = isEsri ? isSameInEsriWkt(file.definition, read) : isSameSystem(file.definition, read);
            EXPECT_TRUE(isSame) << file.name << " of " << file.definition << " is read as " << read;
            equal += isSame ? 1 : 0;
        }
        return equal;
    }

    std::vector<ExportedFile> written_;
    std::map<std::string, int> refused_; // by reason

private:
    static std::string drawingName(std::size_t index) { return std::to_string(index) + ".qedb"; }
    static bool isCode(const std::string& system) { return !system.starts_with('+'); }

    Arguments assignment(const std::string& system, const std::string& drawing) const
    {
        if (isCode(system))
            return {"assign", "--quiet", system, drawing};
        given(drawing + ".txt", system);
        return {"assign", "--quiet", "@" + drawing + ".txt", "--code", "WORKS:1", drawing};
    }
    /// What PROJ reads as the system. It does not have the local systems.
    std::string definitionOf(const std::string& system, const std::string& drawing) const
    {
        return system.starts_with("LOCAL:") ? run({"show", drawing, "--format", "projjson"}).output : system;
    }
    void exportOne(const std::string& system, const std::string& drawing, const std::string& file)
    {
        static const std::regex kReason("(\\w[\\w ]*) cannot say ([^(;:]*\\w)");
        const ProgramResult result = run({"export", "--quiet", drawing, "-o", file});
        if (result.status == 0) {
            written_.push_back({file, definitionOf(system, drawing)});
            return;
        }
        std::smatch reason;
        ASSERT_TRUE(std::regex_search(result.errors, reason, kReason)) << system << ": " << result.errors;
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(std::filesystem::exists(path(file)));
        ++refused_[reason[0]];
    }
    /// What GDAL reads from each file, a line for each.
    std::string readWithGdal() const
    {
        ProgramRun python;
        python.program = "/usr/bin/python3"; // for which Debian's package is made
        python.arguments = {ORVEL_SOURCE_DIR "/tests/cli/posix/read_with_gdal.py"};
        for (const ExportedFile& file : written_)
            python.input += file.name + "\n";
        const ProgramResult result = run(python);
        EXPECT_EQ(result.status, 0) << "is python3-gdal installed? " << result.errors;
        return result.output;
    }
};

/// The environment variables ORVEL_EXPORTED_SYSTEMS and ORVEL_EXPORT_SEED choose how many and which.
TEST_F(ExportedSystems, EachFile_IsReadByGdalAsTheSameSystem_OrRefused)
{
    const unsigned seed = numberFromEnvironment("ORVEL_EXPORT_SEED", 1);
    const unsigned count = numberFromEnvironment("ORVEL_EXPORTED_SYSTEMS", kSystems);
    std::vector<std::string> systems = drawSystems(count, seed);
    systems.emplace_back("+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=5 +y_0=7 +ellps=GRS80 +units=m +no_defs +type=crs");
    systems.emplace_back("+proj=utm +zone=32 +ellps=bessel +towgs84=1,2,3,4,5,6,7 +units=m +no_defs +type=crs");
    givenDrawings(systems);
    exportAll(systems);
    const int equal = countEqual();

    std::cout << systems.size() << " systems by seed " << seed << ": " << written_.size() << " files written, " << equal
              << " read back equal\n";
    for (const auto& [reason, times] : refused_)
        std::cout << "refused " << times << " times: " << reason << '\n';
    EXPECT_EQ(static_cast<std::size_t>(equal), written_.size());
    EXPECT_GE(written_.size(), 3 * systems.size()); // all but .prj say nearly everything
}

} // namespace
} // namespace Tests
