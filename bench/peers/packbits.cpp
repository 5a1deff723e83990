#include "peers/packbits.h"
#include "measurement.h"

#include <algorithm>
#include <cstring>

#include "peers/comparison.h"

namespace Bench {
namespace {

MemoryFile& fileOf(thandle_t handle)
{
    return *static_cast<MemoryFile*>(handle);
}

tmsize_t readFile(thandle_t handle, void* buffer, tmsize_t size)
{
    MemoryFile& file = fileOf(handle);
    const std::size_t count =
        std::min(static_cast<std::size_t>(size), file.bytes.size() - std::min(file.position, file.bytes.size()));
    std::memcpy(buffer, file.bytes.data() + file.position, count);
    file.position += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t writeFile(thandle_t handle, void* buffer, tmsize_t size)
{
    MemoryFile& file = fileOf(handle);
    const auto count = static_cast<std::size_t>(size);
    if (file.bytes.size() < file.position + count)
        file.bytes.resize(file.position + count);
    std::memcpy(file.bytes.data() + file.position, buffer, count);
    file.position += count;
    return size;
}

toff_t seekFile(thandle_t handle, toff_t offset, int whence)
{
    MemoryFile& file = fileOf(handle);
    const std::size_t origin = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.position : file.bytes.size();
    file.position = origin + offset;
    return file.position;
}

int closeFile(thandle_t /*handle*/)
{
    return 0;
}

toff_t sizeOfFile(thandle_t handle)
{
    return fileOf(handle).bytes.size();
}

/// The bytes stay where they are while a file is read.
int mapFile(thandle_t handle, void** base, toff_t* size)
{
    MemoryFile& file = fileOf(handle);
    *base = file.bytes.data();
    *size = file.bytes.size();
    return 1;
}

void unmapFile(thandle_t /*handle*/, void* /*base*/, toff_t /*size*/)
{
}

} // namespace

PackBits::PackBits(const Bytes& rows, std::size_t rowLength, std::size_t rowsPerStrip)
    : rows_(rows),
      rowLength_(rowLength),
      stripLength_(rowLength * rowsPerStrip),
      unpacked_(rows.size()),
      writer_(open(written_, "w"))
{
    {
        const Image image = open(read_, "w");
        describe(image.get());
        packInto(image.get());
    }
    read_.position = 0;
    reader_ = open(read_, "r");
    describe(writer_.get());
    unpack();
    requireSuccess(unpacked_ == rows_, "libtiff does not unpack what it packed");
}

void PackBits::pack()
{
    packInto(writer_.get());
}

void PackBits::packInto(TIFF* image) const
{
    std::uint32_t strip = 0;
    for (std::size_t at = 0; at < rows_.size(); at += stripLength_)
        requireSuccess(TIFFWriteEncodedStrip(image, strip++,
                                             const_cast<unsigned char*>(rows_.data() + at), // it only reads them
                                             static_cast<tmsize_t>(stripLength_)) > 0,
                       "libtiff packs nothing");
}

void PackBits::unpack()
{
    std::uint32_t strip = 0;
    for (std::size_t at = 0; at < rows_.size(); at += stripLength_)
        requireSuccess(TIFFReadEncodedStrip(reader_.get(), strip++, unpacked_.data() + at,
                                            static_cast<tmsize_t>(stripLength_)) > 0,
                       "libtiff unpacks nothing");
}

PackBits::Image PackBits::open(MemoryFile& file, const char* mode) const
{
    Image image(TIFFClientOpen("memory", mode, &file, readFile, writeFile, seekFile, closeFile, sizeOfFile, mapFile,
                               unmapFile));
    requireSuccess(image != nullptr, "libtiff opens no file in memory");
    return image;
}

void PackBits::describe(TIFF* image) const
{
    const auto height = static_cast<std::uint32_t>(rows_.size() / rowLength_);
    TIFFSetField(image, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(rowLength_));
    TIFFSetField(image, TIFFTAG_IMAGELENGTH, height);
    TIFFSetField(image, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(stripLength_ / rowLength_));
    TIFFSetField(image, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(image, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(image, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(image, TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
}

} // namespace Bench
