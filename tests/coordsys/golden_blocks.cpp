#include "golden_blocks.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "storage/byte_patterns.h"

namespace Tests {
namespace {

constexpr auto kPackedVersion = static_cast<QeDb::QeDbDwgVersion>(29);
constexpr auto kTextVersion = static_cast<QeDb::QeDbDwgVersion>(30);
constexpr std::size_t kBytesPerGoldenLine = 32;

constexpr const wchar_t* kUserCode = L"MINE:GRID";
constexpr const wchar_t* kUserText =
    LR"(PROJCRS["Værøy – grid",BASEGEOGCRS["Værøy",DATUM["Værøy 1931",)"
    LR"(ELLIPSOID["Bessel, shifted",6377492.018,299.1528128,LENGTHUNIT["metre",1]]]],)"
    LR"(CONVERSION["Grid",METHOD["Transverse Mercator",ID["EPSG",9807]],)"
    LR"(PARAMETER["Latitude of natural origin",67.5,ANGLEUNIT["degree",0.0174532925199433],ID["EPSG",8801]],)"
    LR"(PARAMETER["Longitude of natural origin",12.7,ANGLEUNIT["degree",0.0174532925199433],ID["EPSG",8802]],)"
    LR"(PARAMETER["Scale factor at natural origin",1.00001,SCALEUNIT["unity",1],ID["EPSG",8805]],)"
    LR"(PARAMETER["False easting",20000,LENGTHUNIT["metre",1],ID["EPSG",8806]],)"
    LR"(PARAMETER["False northing",-5000,LENGTHUNIT["metre",1],ID["EPSG",8807]]],)"
    LR"(CS[Cartesian,2],AXIS["easting",east],AXIS["northing",north],LENGTHUNIT["metre",1]])";

std::filesystem::path goldenFile(const GoldenBlock& block)
{
    const char* const form = block.isText() ? ".text.hex" : ".packed.hex";
    return std::filesystem::path(ORVEL_SOURCE_DIR) / "tests" / "coordsys" / "golden" / (block.name + form);
}

char printable(unsigned char byte)
{
    return byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
}

std::string formatLine(const Bytes& bytes)
{
    std::string line = toHex(bytes) + std::string((kBytesPerGoldenLine - bytes.size()) * 2, ' ') + " ; ";
    std::ranges::transform(bytes, std::back_inserter(line), printable);
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const GoldenBlock& block)
{
    return out << block.name << (block.isText() ? " as text" : " packed");
}

const std::vector<GoldenBlock>& goldenBlocks()
{
    static const std::vector<GoldenBlock> blocks = [] {
        const std::array<std::pair<const char*, const wchar_t*>, 6> systems{{{"projected", L"EPSG:25832"},
                                                                             {"geographic", L"EPSG:4326"},
                                                                             {"geographic_3d", L"EPSG:4979"},
                                                                             {"compound", L"EPSG:7415"},
                                                                             {"local", L"LOCAL:METRE"},
                                                                             {"user_defined", kUserCode}}};
        std::vector<GoldenBlock> all;
        for (const auto& [name, code] : systems) {
            for (const QeDb::QeDbDwgVersion version : {kPackedVersion, kTextVersion})
                all.push_back({name, code, version});
        }
        return all;
    }();
    return blocks;
}

Bytes GoldenBlock::bytes() const
{
    std::ifstream file(goldenFile(*this));
    if (!file)
        throw std::runtime_error(goldenFile(*this).string() + " cannot be read");
    Bytes bytes;
    for (std::string line; std::getline(file, line);) {
        const Bytes more = parseHex(line.substr(0, line.find(';')));
        bytes.insert(bytes.end(), more.begin(), more.end());
    }
    return bytes;
}

SystemHolder makeSourceSystem(const GoldenBlock& block)
{
    if (block.code != kUserCode)
        return catalogSystem(block.code.c_str());
    SystemHolder definition;
    if (Library::CoordinateReferenceSystemDefinition::CreateFromText(kUserText, kUserCode, definition.put()) !=
        Library::statusOk)
        throw std::runtime_error("the user's text cannot be read");
    return definition;
}

void writeGoldenBlock(const GoldenBlock& block, const Bytes& bytes)
{
    std::ofstream file(goldenFile(block), std::ios::binary);
    for (std::size_t at = 0; at < bytes.size(); at += kBytesPerGoldenLine) {
        const std::size_t count = std::min(kBytesPerGoldenLine, bytes.size() - at);
        file << formatLine(Bytes(bytes.data() + at, bytes.data() + at + count)) << '\n';
    }
    if (!file.flush())
        throw std::runtime_error(goldenFile(block).string() + " cannot be written");
}

} // namespace Tests
