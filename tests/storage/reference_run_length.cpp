#include "storage/reference_run_length.h"

namespace Tests {
namespace {

void appendLiteral(Bytes& output, const Bytes& input, std::size_t from, std::size_t count)
{
    output.push_back(static_cast<unsigned char>(count == 128 ? 0x00 : count));
    for (std::size_t index = 0; index < count; ++index)
        output.push_back(input[from + index]);
}

void appendRun(Bytes& output, unsigned char byte, std::size_t count)
{
    output.push_back(static_cast<unsigned char>(count == 128 ? 0x80 : 0x80 + count));
    output.push_back(byte);
}

std::size_t literalLength(const Bytes& input, std::size_t from)
{
    const std::size_t rest = input.size() - from;
    std::size_t count = 1;
    while (count < 128) {
        if (from + count == input.size())
            return rest;
        const std::size_t run = referenceRunLength(input, from + count);
        if (run > 2)
            return count;
        count += run;
    }
    return count > 128 ? 128 : count;
}

} // namespace

std::size_t referenceRunLength(const Bytes& input, std::size_t position)
{
    std::size_t count = 1;
    while (count < 128 && position + count < input.size() && input[position + count] == input[position])
        ++count;
    return count;
}

Bytes referencePacked(const Bytes& input)
{
    Bytes output;
    std::size_t position = 0;
    while (position < input.size()) {
        const std::size_t rest = input.size() - position;
        const std::size_t run = referenceRunLength(input, position);
        if (rest >= 3 && run >= 3) {
            appendRun(output, input[position], run);
            position += run;
            continue;
        }
        const std::size_t count = rest < 3 ? rest : literalLength(input, position);
        appendLiteral(output, input, position, count);
        position += count;
    }
    return output;
}

std::optional<Bytes> referenceUnpacked(const Bytes& input)
{
    Bytes output;
    std::size_t position = 0;
    while (position < input.size()) {
        const unsigned header = input[position++];
        const std::size_t count = header % 128 == 0 ? 128 : header % 128;
        const std::size_t needed = header >= 128 ? 1 : count;
        if (position + needed > input.size())
            return std::nullopt;
        for (std::size_t index = 0; index < count; ++index)
            output.push_back(input[header >= 128 ? position : position + index]);
        position += needed;
    }
    if (output.empty())
        return std::nullopt;
    return output;
}

} // namespace Tests
