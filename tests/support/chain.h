// Resbuf chains as a test writes and compares them.
#pragma once

#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "platform/host.h"
#include "storage/host_holders.h"

namespace Tests {

using Bytes = std::vector<unsigned char>;

/// One resbuf: its group code and its value.
struct Item {
    int code = 0;
    std::variant<std::wstring, Bytes, double, int> value;
    friend bool operator==(const Item&, const Item&) = default;
};
using Items = std::vector<Item>;

std::ostream& operator<<(std::ostream& out, const Item& item);

/// A new chain of the items; null for none.
Orvel::ResbufChain makeChain(const Items& items);
Items readChain(const resbuf* chain);

} // namespace Tests
