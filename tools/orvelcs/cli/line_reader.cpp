#include "orvelcs/cli/line_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "orvelcs/cli/input.h"

namespace Orvelcs {

LineReader::LineReader(Source source, std::size_t blockInBytes, std::size_t longestInBytes)
    : source_(std::move(source)), longestInBytes_(longestInBytes), bytes_(longestInBytes + 1 + blockInBytes)
{
}

bool LineReader::readBlock()
{
    if (isAtEnd_)
        return false;
    const std::size_t kept = std::min(end_ - begin_, longestInBytes_ + 1); // enough to tell that it is too long
    std::memmove(bytes_.data(), bytes_.data() + begin_, kept);
    const std::size_t count = source_(bytes_.data() + kept, bytes_.size() - (longestInBytes_ + 1));
    begin_ = 0;
    end_ = kept + count;
    isAtEnd_ = count == 0;
    return end_ > 0;
}

bool LineReader::nextLine()
{
    const std::string_view rest(bytes_.data() + begin_, end_ - begin_);
    const std::size_t length = rest.find('\n');
    if (length != std::string_view::npos) {
        setLine(rest.substr(0, length));
        begin_ += length + 1;
        return true;
    }
    if (!isAtEnd_ || rest.empty())
        return false;
    setLine(rest);
    begin_ = end_;
    return true;
}

void LineReader::setLine(std::string_view whole)
{
    isTooLong_ = whole.size() > longestInBytes_;
    line_ = whole.substr(0, longestInBytes_);
    if (++number_ > 1 || !line_.starts_with(kByteOrderMark))
        return;
    hadByteOrderMark_ = true;
    line_.remove_prefix(kByteOrderMark.size());
}

} // namespace Orvelcs
