#include "orvelcs/cli/file_list.h"

#include <algorithm>

#include "orvelcs/cli/input.h"

namespace Orvelcs {

std::vector<std::string> splitFileList(std::string_view list, NameEnd end)
{
    const bool isText = end == NameEnd::line;
    if (isText && list.starts_with(kByteOrderMark))
        list.remove_prefix(kByteOrderMark.size());
    std::vector<std::string> names;
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(isText ? '\n' : '\0'), list.size());
        std::string_view name = list.substr(0, length);
        list.remove_prefix(std::min(length + 1, list.size()));
        if (isText && name.ends_with('\r'))
            name.remove_suffix(1);
        if (!name.empty())
            names.emplace_back(name);
    }
    return names;
}

} // namespace Orvelcs
