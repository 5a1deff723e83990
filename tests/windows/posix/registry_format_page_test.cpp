// docs/formats/registry-stand-in.md agrees with the file of the registry.
#include <bit>
#include <sstream>

#include "storage/documented_example.h"
#include "support/posix/sql_query.h"
#include "windows/registry_test.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Tests {
namespace {

class RegistryFormatPage : public RegistryTest {
protected:
    RegistryFormatPage()
    {
        const OpenKey key = createKey(L"Software\\Example");
        EXPECT_EQ(setText(key, L"Place", L"K\u00F8benhavn"), ERROR_SUCCESS);
        EXPECT_EQ(setBytes(key, L"Flags", REG_DWORD, std::string("\x05\0\0\0", 4)), ERROR_SUCCESS);
        const std::wstring withoutNul = L"ab";
        EXPECT_EQ(RegSetValueExW(key.get(), L"Unended", 0, REG_SZ, reinterpret_cast<const BYTE*>(withoutNul.data()),
                                 static_cast<DWORD>(withoutNul.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
        const wchar_t unpaired[] = {L'X', static_cast<wchar_t>(0xD800), L'\0'};
        EXPECT_EQ(setBytes(key, unpaired, REG_BINARY, ""), ERROR_SUCCESS);
    }
    static std::string block(const std::string& label)
    {
        return DocumentedExample("registry-stand-in.md", label).text() + '\n';
    }
};

TEST_F(RegistryFormatPage, SchemaOfThePage_IsThatOfTheFile)
{
    EXPECT_EQ(sqlQuery(file, "SELECT sql || ';' FROM sqlite_schema WHERE sql IS NOT NULL"), block("registry-schema"));
}

TEST_F(RegistryFormatPage, RowsOfThePage_AreThoseOfTheFile)
{
    EXPECT_EQ(sqlQuery(file, block("registry-rows-query")), block("registry-rows"));
}

// Computes the checksum independently, as the page describes it.
TEST_F(RegistryFormatPage, Checksum_IsComputedAsThePageSays)
{
    const auto part = [](const std::string& column) {
        return "' ' || typeof(" + column + ") || ' ' || length(CAST(" + column + " AS BLOB)) || ' ' || CAST(" + column +
               " AS BLOB)";
    };
    const std::string rows =
        sqlQuery(file, "SELECT hex(CAST(id || ' ' || owner || ' ' || type || " + part("name") + " || " +
                           part("folded") + " || " + part("data") + " AS BLOB)), checksum FROM registry");
    std::istringstream lines(rows);
    std::size_t count = 0;
    for (std::string hex, checksum; std::getline(lines, hex, '|') && std::getline(lines, checksum); ++count) {
        std::string bytes;
        for (std::size_t at = 0; at < hex.size(); at += 2)
            bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
        EXPECT_EQ(checksum, std::to_string(std::bit_cast<std::int64_t>(XXH3_64bits(bytes.data(), bytes.size()))));
    }
    EXPECT_EQ(count, 7U);
}

} // namespace
} // namespace Tests
