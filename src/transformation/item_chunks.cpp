#include "transformation/item_chunks.h"

namespace Orvel {

std::optional<std::wstring_view> TakeItemChunk(std::wstring_view& remaining)
{
    constexpr std::wstring_view kMarker = L"</Item>";
    const std::size_t marker = remaining.find(kMarker);
    if (marker == std::wstring_view::npos)
        return std::nullopt;
    const std::wstring_view chunk = remaining.substr(0, marker + kMarker.size());
    remaining.remove_prefix(chunk.size());
    return chunk;
}

std::vector<std::wstring_view> SplitIntoItemChunks(std::wstring_view text)
{
    std::vector<std::wstring_view> chunks;
    while (const std::optional<std::wstring_view> chunk = TakeItemChunk(text))
        chunks.push_back(*chunk);
    return chunks;
}

} // namespace Orvel
