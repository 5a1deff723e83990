#include "embedded/host/drawing_file/row_checksum.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Embedded {

void RowChecksum::add(char kind, const void* bytes, std::size_t length)
{
    sum_ = XXH3_64bits_withSeed(bytes, length, sum_ + static_cast<unsigned char>(kind));
}

RowChecksum& RowChecksum::add(std::int64_t number)
{
    add('i', &number, sizeof number);
    return *this;
}

RowChecksum& RowChecksum::add(double number)
{
    add('r', &number, sizeof number);
    return *this;
}

RowChecksum& RowChecksum::add(std::string_view bytes, bool isBlob)
{
    add(isBlob ? 'b' : 't', bytes.data(), bytes.size());
    return *this;
}

RowChecksum& RowChecksum::addNull()
{
    add('n', "", 0);
    return *this;
}

} // namespace Embedded
