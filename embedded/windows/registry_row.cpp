#include "embedded/windows/registry_row.h"

#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/windows/registry_call.h"

namespace Embedded {
namespace {

/// What one column holds.
struct Cell {
    bool isText = false;
    std::string bytes;
};

/// TEXT where UTF-8 can hold it, otherwise a BLOB of UTF-16 little-endian.
Cell cellOfText(std::wstring_view text)
{
    return isWellFormed(text) ? Cell{true, utf8FromWide(text)} : Cell{false, utf16leFromWide(text)};
}

std::wstring textIn(const Cell& cell)
{
    return cell.isText ? wideFromUtf8(cell.bytes) : wideFromUtf16le(cell.bytes);
}

bool isTextType(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

/// Texts are stored as Unicode, so that the file does not depend on the size of a wide character. Bytes at the end that
/// make no whole character are left out. A text that ends with its only NUL is stored without it, as people read it.
Cell cellOfData(const RegistryRow& row)
{
    if (!isTextType(row.type))
        return {false, row.data};
    std::wstring text(row.data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), row.data.data(), text.size() * sizeof(wchar_t));
    if (text.empty() || text.find(L'\0') != text.size() - 1 || !isWellFormed(text))
        return {false, utf16leFromWide(text)};
    text.pop_back();
    return {true, utf8FromWide(text)};
}

std::string dataIn(const Cell& cell, DWORD type)
{
    if (!isTextType(type))
        return cell.bytes;
    std::wstring text = textIn(cell);
    if (cell.isText)
        text += L'\0';
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

/// A signed number, since SQLite has no other.
std::int64_t checksumOf(const RegistryRow& row, const Cell& name, const Cell& folded, const Cell& data)
{
    std::string bytes = std::to_string(row.id) + ' ' + std::to_string(row.owner) + ' ' + std::to_string(row.type);
    for (const Cell* const cell : {&name, &folded, &data})
        bytes += (cell->isText ? " text " : " blob ") + std::to_string(cell->bytes.size()) + ' ' + cell->bytes;
    return static_cast<std::int64_t>(XXH3_64bits(bytes.data(), bytes.size()));
}

void bindCell(SQLite::Statement& statement, int parameter, const Cell& cell)
{
    if (cell.isText)
        statement.bind(parameter, cell.bytes);
    else
        statement.bind(parameter, cell.bytes.data(), static_cast<int>(cell.bytes.size()));
}

Cell cellIn(const SQLite::Column& column)
{
    return {column.isText(), column.getString()};
}

} // namespace

void bindRow(SQLite::Statement& statement, const RegistryRow& row)
{
    const Cell name = cellOfText(row.name);
    const Cell folded = cellOfText(toLowerCase(row.name));
    const Cell data = cellOfData(row);
    statement.bind(1, row.id);
    statement.bind(2, row.owner);
    bindCell(statement, 3, name);
    bindCell(statement, 4, folded);
    statement.bind(5, static_cast<std::int64_t>(row.type));
    bindCell(statement, 6, data);
    statement.bind(7, checksumOf(row, name, folded, data));
}

void bindFolded(SQLite::Statement& statement, int parameter, std::wstring_view name)
{
    bindCell(statement, parameter, cellOfText(toLowerCase(name)));
}

RegistryRow readRow(SQLite::Statement& statement)
{
    RegistryRow row;
    row.id = statement.getColumn(0).getInt64();
    row.owner = statement.getColumn(1).getInt64();
    const Cell name = cellIn(statement.getColumn(2));
    const Cell folded = cellIn(statement.getColumn(3));
    const std::int64_t type = statement.getColumn(4).getInt64();
    row.type = static_cast<DWORD>(type);
    const Cell data = cellIn(statement.getColumn(5));
    if (type != row.type || statement.getColumn(6).getInt64() != checksumOf(row, name, folded, data))
        failRegistryCall(ERROR_REGISTRY_CORRUPT, "is damaged: the checksum of row " + std::to_string(row.id) +
                                                     " does not fit; restore the file from a copy");
    row.name = textIn(name);
    row.data = dataIn(data, row.type);
    return row;
}

} // namespace Embedded
