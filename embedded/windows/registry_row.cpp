#include "embedded/windows/registry_row.h"

#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/windows/registry_call.h"

namespace Embedded {
namespace {

/// The content of a column.
struct Cell {
    bool isText = false;
    std::string bytes;
};

/// TEXT if UTF-8 can hold the text, otherwise a BLOB of UTF-16 little-endian.
Cell cellFromText(std::wstring_view text)
{
    return isWellFormed(text) ? Cell{true, utf8FromWide(text)} : Cell{false, utf16leFromWide(text)};
}

std::wstring textFromCell(const Cell& cell)
{
    return cell.isText ? wideFromUtf8(cell.bytes) : wideFromUtf16le(cell.bytes);
}

bool isTextType(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

/// Stores texts as Unicode, so that the file does not depend on the size of a wide character. Drops bytes at the end
/// that are no whole character. Stores a text that ends with its only NUL without it, to be readable in the file.
Cell cellFromData(const RegistryRow& row)
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

std::string dataFromCell(const Cell& cell, DWORD type)
{
    if (!isTextType(type))
        return cell.bytes;
    std::wstring text = textFromCell(cell);
    if (cell.isText)
        text += L'\0';
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

/// The number is signed, since SQLite has no unsigned ones.
std::int64_t rowChecksum(const RegistryRow& row, const Cell& name, const Cell& folded, const Cell& data)
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

Cell readCell(const SQLite::Column& column)
{
    return {column.isText(), column.getString()};
}

} // namespace

void bindRow(SQLite::Statement& statement, const RegistryRow& row)
{
    const Cell name = cellFromText(row.name);
    const Cell folded = cellFromText(toLowerCase(row.name));
    const Cell data = cellFromData(row);
    statement.bind(1, row.id);
    statement.bind(2, row.owner);
    bindCell(statement, 3, name);
    bindCell(statement, 4, folded);
    statement.bind(5, static_cast<std::int64_t>(row.type));
    bindCell(statement, 6, data);
    statement.bind(7, rowChecksum(row, name, folded, data));
}

void bindFolded(SQLite::Statement& statement, int parameter, std::wstring_view name)
{
    bindCell(statement, parameter, cellFromText(toLowerCase(name)));
}

RegistryRow readRow(SQLite::Statement& statement)
{
    RegistryRow row;
    row.id = statement.getColumn(0).getInt64();
    row.owner = statement.getColumn(1).getInt64();
    const Cell name = readCell(statement.getColumn(2));
    const Cell folded = readCell(statement.getColumn(3));
    const std::int64_t type = statement.getColumn(4).getInt64();
    row.type = static_cast<DWORD>(type);
    const Cell data = readCell(statement.getColumn(5));
    if (type != row.type || statement.getColumn(6).getInt64() != rowChecksum(row, name, folded, data))
        failRegistryCall(ERROR_REGISTRY_CORRUPT, "is damaged: the checksum of row " + std::to_string(row.id) +
                                                     " does not fit; restore the file from a copy");
    row.name = textFromCell(name);
    row.data = dataFromCell(data, row.type);
    return row;
}

} // namespace Embedded
