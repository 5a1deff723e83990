#include "fuzz/row_changes.h"

#include <array>
#include <limits>
#include <string>
#include <string_view>

#include "fuzz/input_text.h"

namespace Fuzz {
namespace {

using Embedded::StoredText;
using Embedded::StoredValue;

constexpr std::array kIntegers{
    std::numeric_limits<std::int64_t>::min(),
    std::numeric_limits<std::int64_t>::max(),
    std::int64_t{0},
    std::int64_t{-2147483649},
    std::int64_t{2147483648},
    std::int64_t{-32769},
    std::int64_t{32768},
    std::int64_t{-2147483648},
};
constexpr std::array kGroupCodes{299, 300, 309, 310, 319, 320, 1000, 1001, 1002, 1004, 1005, 1040, 1070, 1071, 5000};
constexpr std::array kReals{0.0, -0.0, 1.5, 1e300, std::numeric_limits<double>::infinity(), 4.0};
constexpr std::array<std::string_view, 22> kWords{"QeDbDictionary",
                                                  "QeDbXrecord",
                                                  "QeDbRegAppTable",
                                                  "QeDbRegAppTableRecord",
                                                  "QeDbBlockTable",
                                                  "QeDbBlockTableRecord",
                                                  "QeDbGeoData",
                                                  "QeDbObject",
                                                  "name",
                                                  "coordinate system",
                                                  "block",
                                                  "drawing version",
                                                  "next handle",
                                                  "named objects",
                                                  "registered applications",
                                                  "blocks",
                                                  "model space",
                                                  "geo data",
                                                  "*Model_Space",
                                                  "KTN_PROJECTION",
                                                  "{",
                                                  ""};
constexpr std::array<std::size_t, 5> kLengths{127, 128, 8, 32767, 32768};
constexpr std::array<std::string_view, 3> kByteOrderMarks{
    std::string_view("\xFF\xFE", 2), std::string_view("\xFF\xFE\0\0", 4), std::string_view("\xFE\xFF", 2)};

std::string someBytes(ByteSource& source)
{
    constexpr std::size_t kLimit = 17;
    const std::size_t count = source.below(kLimit);
    return std::string(asText(source.bytes(count)));
}

StoredValue nextNumber(ByteSource& source)
{
    switch (source.below(5)) {
    case 0:
        return std::int64_t{source.byte()};
    case 1:
        return std::int64_t{source.byte()} - 256;
    case 2:
        return kIntegers.at(source.below(kIntegers.size()));
    case 3:
        return std::int64_t{kGroupCodes.at(source.below(kGroupCodes.size()))};
    default:
        return kReals.at(source.below(kReals.size()));
    }
}

std::string nextBytes(ByteSource& source)
{
    switch (source.below(4)) {
    case 0:
        return std::string(kWords.at(source.below(kWords.size())));
    case 1:
        return std::string(kByteOrderMarks.at(source.below(kByteOrderMarks.size()))) + someBytes(source);
    case 2: {
        const std::size_t length = kLengths.at(source.below(kLengths.size()));
        return std::string(length, static_cast<char>(source.byte()));
    }
    default:
        return someBytes(source);
    }
}

StoredValue nextValue(ByteSource& source)
{
    switch (source.below(8)) {
    case 0:
        return {};
    case 1:
    case 2:
        return StoredText{nextBytes(source), false};
    case 3:
        return StoredText{nextBytes(source), true};
    default:
        return nextNumber(source);
    }
}

RowMoment chooseMoment(std::string_view column)
{
    if (column == "checksum")
        return RowMoment::afterAll;
    return column.starts_with("owned") || column.starts_with("details") ? RowMoment::beforeObjects
                                                                        : RowMoment::beforeAll;
}

} // namespace

const std::vector<DrawingTable>& drawingTables()
{
    static const std::vector<DrawingTable> tables{
        {"header", "field", {"field", "value", "checksum"}},
        {"objects",
         "handle",
         {"handle", "class", "owner", "owned", "owned_digest", "details", "details_digest", "checksum"}},
        {"entries", "dictionary, key", {"dictionary", "key", "object", "checksum"}},
        {"records", "object", {"object", "symbol_table", "checksum"}},
        {"fields", "rowid", {"object", "field", "value", "target", "checksum"}},
        {"resbufs", "rowid", {"object", "position", "code", "value", "checksum"}},
        {"extended_data", "rowid", {"object", "application", "position", "code", "value", "checksum"}},
    };
    return tables;
}

RowChange nextRowChange(ByteSource& source)
{
    constexpr std::uint8_t kIsLate = 0x80;
    constexpr std::array kActions{RowAction::set, RowAction::set, RowAction::copy, RowAction::remove};
    const std::uint8_t first = source.byte();
    RowChange change;
    change.action = kActions.at(first % kActions.size());
    change.table = source.below(drawingTables().size());
    change.row = source.byte();
    if (change.action != RowAction::remove) {
        const auto& columns = drawingTables()[change.table].columns;
        change.column = source.below(columns.size());
        change.value = nextValue(source);
        change.moment = chooseMoment(columns[change.column]);
    }
    if ((first & kIsLate) != 0)
        change.moment = RowMoment::afterAll;
    return change;
}

} // namespace Fuzz
