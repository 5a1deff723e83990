#include "fuzz/byte_source.h"
#include "fuzz/drawing_round_trip.h"
#include "fuzz/input_text.h"
#include "fuzz/oracle.h"
#include "fuzz/sample_drawing.h"
#include "fuzz/targets.h"

namespace Fuzz {
namespace {

std::size_t nextOffset(ByteSource& source, std::size_t pageSize, std::size_t pages)
{
    const std::size_t page = source.below(pages);
    const std::size_t high = source.byte();
    return page * pageSize + (high << 8 | source.byte()) % pageSize;
}

/// Changes a file that has a whole number of pages, at most 256.
void changeBytes(std::string& file, std::size_t pageSize, ByteSource& source)
{
    const std::size_t pages = file.size() / pageSize;
    switch (source.below(4)) {
    case 0: {
        constexpr std::size_t kLimit = 17;
        const Input bytes = source.bytes(source.below(kLimit));
        const std::size_t offset = nextOffset(source, pageSize, pages);
        file.replace(offset, std::min(bytes.size(), file.size() - offset), asText(bytes));
        file.resize(pages * pageSize);
        break;
    }
    case 1:
        file[nextOffset(source, pageSize, pages)] ^= static_cast<char>(1 << source.below(8));
        break;
    case 2: {
        const std::size_t from = source.below(pages) * pageSize;
        file.replace(source.below(pages) * pageSize, pageSize, std::string(file, from, pageSize));
        break;
    }
    default:
        file.resize((source.below(pages) + 1) * pageSize);
    }
}

std::string changeFile(const std::string& sample, ByteSource& source)
{
    constexpr int kMaximumChanges = 16;
    std::string file = sample;
    const auto high = static_cast<unsigned char>(file[16]);
    const std::size_t pageSize = std::size_t{high} << 8 | static_cast<unsigned char>(file[17]);
    for (int change = 0; change < kMaximumChanges && !source.isEmpty(); ++change)
        changeBytes(file, pageSize, source);
    return file;
}

std::string makeFile(ByteSource& source)
{
    switch (source.below(3)) {
    case 0:
        return std::string(asText(source.rest()));
    case 1:
        return changeFile(sampleDrawing(), source);
    default:
        return changeFile(sampleDrawingOfSmallPages(), source);
    }
}

} // namespace

void drawingFile(Input input)
{
    sampleDrawing();
    sampleDrawingOfSmallPages();
    const LeakCheck guard;
    ByteSource source(input);
    requireReadOrRefused(
        makeFile(source), [](QeDbDatabase&) {}, Soundness::damagedPages);
}

} // namespace Fuzz
