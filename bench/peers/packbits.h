// libtiff's PackBits, over memory: the strips of an image, whose rows are packed one by one.
#pragma once

#include <tiffio.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Bench {

using Bytes = std::vector<unsigned char>;

/// A file in memory, as libtiff reads and writes it.
struct MemoryFile {
    Bytes bytes;
    std::size_t position = 0;
};

class PackBits {
public:
    /// The rows are all of `rowLength` bytes. A strip is what one call packs or unpacks.
    PackBits(const Bytes& rows, std::size_t rowLength, std::size_t rowsPerStrip);

    /// Packs all rows.
    void pack();
    /// Unpacks what the constructor packed.
    void unpack();

private:
    struct Close {
        void operator()(TIFF* image) const { TIFFClose(image); }
    };
    using Image = std::unique_ptr<TIFF, Close>;

    Image open(MemoryFile& file, const char* mode) const;
    void describe(TIFF* image) const;
    void packInto(TIFF* image) const;

    Bytes rows_;
    std::size_t rowLength_;
    std::size_t stripLength_;
    Bytes unpacked_;
    MemoryFile written_;
    MemoryFile read_;
    Image writer_;
    Image reader_;
};

} // namespace Bench
