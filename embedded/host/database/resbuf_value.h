// Resbufs as plain values: what objects hold, and what a drawing file keeps.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace Embedded {

/// One resbuf: a group code with the value that the code calls for.
struct ResbufValue {
    int code = 0;
    std::variant<std::wstring, std::vector<unsigned char>, double, std::int32_t> value;
    friend bool operator==(const ResbufValue&, const ResbufValue&) = default;
};
using ResbufValues = std::vector<ResbufValue>;

} // namespace Embedded
