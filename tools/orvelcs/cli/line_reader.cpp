#include "orvelcs/cli/line_reader.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "orvelcs/cli/failure.h"

namespace Orvelcs {

bool LineReader::next()
{
    constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";
    line_.clear();
    isTooLong_ = false;
    errno = 0;
    int character = std::getc(stdin);
    const bool isEnd = character == EOF;
    for (; character != EOF && character != '\n'; character = std::getc(stdin)) {
        isTooLong_ = isTooLong_ || line_.size() == kLongestLineInBytes;
        if (!isTooLong_)
            line_.push_back(static_cast<char>(character));
    }
    if (std::ferror(stdin) != 0)
        throw Failure("standard input", "cannot be read: " + std::generic_category().message(errno));
    if (isEnd)
        return false;
    if (++number_ == 1 && line_.starts_with(kByteOrderMark))
        line_.erase(0, 3);
    return true;
}

} // namespace Orvelcs
