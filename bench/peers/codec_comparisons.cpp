// The packing beside libtiff's PackBits, which cuts bytes into packets in a similar way.
#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "measurement.h"
#include "peers/comparisons.h"
#include "peers/packbits.h"
#include "storage/library_holder.h"
#include "storage/packed_definition.h"
#include "storage/run_length.h"

namespace Bench {
namespace {

constexpr std::size_t kDefinition = 600; // bytes of a usual one before packing
constexpr std::size_t kDefinitions = 200;
constexpr std::size_t kLong = 16U << 20;
constexpr unsigned kSeed = 1;

Bytes unpacked(const Bytes& packed)
{
    Bytes bytes(Orvel::UnpackedSize(packed.data(), packed.size()));
    requireSuccess(Orvel::UnpackRuns(packed.data(), packed.size(), bytes.data(), bytes.size()) == bytes.size(),
                   "unpacking");
    return bytes;
}

/// A user's own grid, with a text of so many characters in its name.
std::wstring userDefinedGrid(std::size_t number, std::size_t characters)
{
    const std::wstring meridian = std::to_wstring(static_cast<double>(number) * 0.37 - 20);
    const std::wstring northing = std::to_wstring(static_cast<double>(number) * 1234.567);
    std::wstring name = L"Grid " + std::to_wstring(number);
    while (name.size() < characters)
        name += L" of the harbour's extension, as surveyed from the northern mole";
    name.resize(characters);
    return L"PROJCS[\"" + name + L"\",GEOGCS[\"Survey of the harbour\",DATUM[\"Harbour datum\"," +
           L"SPHEROID[\"Fitted ellipsoid\",6378137.25,298.2571]],PRIMEM[\"Greenwich\",0]," +
           L"UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"]," +
           L"PARAMETER[\"latitude_of_origin\",53.5512],PARAMETER[\"central_meridian\"," + meridian +
           L"],PARAMETER[\"scale_factor\",0.99987],PARAMETER[\"false_easting\",500000]," +
           L"PARAMETER[\"false_northing\"," + northing + L"],UNIT[\"metre\",1]]";
}

Bytes unpackedForm(const std::wstring& text)
{
    using Definition = Orvel::Library::CoordinateReferenceSystemDefinition;
    Orvel::LibraryObject<Definition> definition;
    requireSuccess(Definition::CreateFromText(text.c_str(), L"USER:1", definition.put()) == Orvel::Library::statusOk,
                   "a grid");
    Bytes packed;
    requireSuccess(Orvel::EncodeDefinitionBytes(definition.get(), packed), "packing a grid");
    return unpacked(packed);
}

/// Rows of the unpacked forms of users' own grids, which are stored whole.
Bytes definitions()
{
    constexpr std::size_t kShort = 20;
    Bytes rows;
    for (std::size_t number = 0; number < kDefinitions; ++number) {
        const std::size_t shortForm = unpackedForm(userDefinedGrid(number, kShort)).size();
        const Bytes form = unpackedForm(userDefinedGrid(number, kShort + kDefinition - 1 - shortForm));
        rows.insert(rows.end(), form.begin(), form.end());
    }
    requireSuccess(rows.size() == kDefinition * kDefinitions, "definitions of the length");
    return rows;
}

Bytes randomBytes()
{
    std::mt19937 random(kSeed);
    Bytes bytes(kLong);
    std::ranges::generate(bytes, [&] { return static_cast<unsigned char>(random()); });
    return bytes;
}

/// Runs of `shortest` to `longest` equal bytes.
Bytes runs(std::size_t shortest, std::size_t longest)
{
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<std::size_t> length(shortest, longest);
    Bytes bytes;
    bytes.reserve(kLong + longest);
    while (bytes.size() < kLong)
        bytes.insert(bytes.end(), length(random), static_cast<unsigned char>(random()));
    bytes.resize(kLong);
    return bytes;
}

/// Literals of 1 to 100 bytes and runs of 3 to 100 in turns.
Bytes mixed()
{
    std::mt19937 random(kSeed);
    Bytes bytes;
    bytes.reserve(kLong + 200);
    while (bytes.size() < kLong) {
        std::generate_n(std::back_inserter(bytes), 1 + random() % 100,
                        [&] { return static_cast<unsigned char>(random()); });
        bytes.insert(bytes.end(), 3 + random() % 98, static_cast<unsigned char>(random()));
    }
    bytes.resize(kLong);
    return bytes;
}

/// The same rows for both sides, and where their results go.
struct Rows {
    Rows(Bytes bytes, std::size_t length, std::size_t rowsPerCallOfPeer = 1)
        : unpacked(std::move(bytes)), rowLength(length), peer(unpacked, length, rowsPerCallOfPeer)
    {
        for (std::size_t at = 0; at < unpacked.size(); at += rowLength)
            packed.push_back(Orvel::Pack(row(at), rowLength));
    }

    const unsigned char* row(std::size_t at) const { return unpacked.data() + at; }

    Bytes unpacked;
    std::size_t rowLength;
    std::vector<Bytes> packed; // each row
    PackBits peer;
    Bytes output = Bytes(rowLength + rowLength / 64 + 64);
};

Comparison packing(const std::string& work, double goal, const std::shared_ptr<Rows>& rows)
{
    return {.work = "pack " + work,
            .peer = "libtiff PackBits",
            .goal = goal,
            .ours =
                [rows] {
                    for (std::size_t at = 0; at < rows->unpacked.size(); at += rows->rowLength)
                        requireSuccess(Orvel::PackRuns(rows->row(at), rows->rowLength, rows->output.data(),
                                                       rows->output.size()) != 0,
                                       "packing");
                },
            .theirs = [rows] { rows->peer.pack(); }};
}

Comparison allocating(const std::string& work, double goal, const std::shared_ptr<Rows>& rows)
{
    return {.work = "pack into memory of the size, " + work,
            .peer = "libtiff PackBits",
            .goal = goal,
            .ours =
                [rows] {
                    for (std::size_t at = 0; at < rows->unpacked.size(); at += rows->rowLength)
                        requireSuccess(!Orvel::Pack(rows->row(at), rows->rowLength).empty(), "packing");
                },
            .theirs = [rows] { rows->peer.pack(); }};
}

Comparison unpacking(const std::string& work, double goal, const std::shared_ptr<Rows>& rows)
{
    return {.work = "unpack " + work,
            .peer = "libtiff PackBits",
            .goal = goal,
            .ours =
                [rows] {
                    for (const Bytes& packed : rows->packed)
                        requireSuccess(Orvel::UnpackRuns(packed.data(), packed.size(), rows->output.data(),
                                                         rows->output.size()) == rows->rowLength,
                                       "unpacking");
                },
            .theirs = [rows] { rows->peer.unpack(); }};
}

} // namespace

void addCodecComparisons(std::vector<Comparison>& comparisons)
{
    const auto small = std::make_shared<Rows>(definitions(), kDefinition);
    const auto atOnce = std::make_shared<Rows>(small->unpacked, kDefinition, kDefinitions);
    const auto noise = std::make_shared<Rows>(randomBytes(), kLong);
    const auto longRuns = std::make_shared<Rows>(runs(50, 1000), kLong);
    const auto mixture = std::make_shared<Rows>(mixed(), kLong);
    comparisons.push_back(packing("definitions of 600 bytes", 2.5, small));
    comparisons.push_back(allocating("definitions of 600 bytes", 1.5, small));
    comparisons.push_back(packing("16 MB of random bytes", 12, noise));
    comparisons.push_back(packing("16 MB of long runs", 2.5, longRuns));
    comparisons.push_back(packing("16 MB of literals and runs", 3, mixture));
    comparisons.push_back(packing("definitions of 600 bytes, 200 a call of the peer", 2.5, atOnce));
    comparisons.push_back(unpacking("definitions of 600 bytes", 1.4, small));
    comparisons.push_back(unpacking("definitions of 600 bytes, 200 a call of the peer", 1, atOnce));
    comparisons.push_back(unpacking("16 MB of literals and runs", 1.25, mixture));
}

} // namespace Bench
