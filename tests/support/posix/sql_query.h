// Runs SQL and prints rows as the sqlite3 shell does.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>

namespace Tests {

/// Runs statements on a database. Returns the rows, each on a line, with "|" between columns.
inline std::string sqlQuery(const std::filesystem::path& file, const std::string& statements)
{
    const auto addRow = [](void* lines, int count, char** columns, char**) {
        for (int column = 0; column < count; ++column)
            *static_cast<std::string*>(lines) +=
                std::string(column > 0 ? "|" : "") + (columns[column] != nullptr ? columns[column] : "");
        *static_cast<std::string*>(lines) += '\n';
        return 0;
    };
    sqlite3* connection = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &connection), SQLITE_OK);
    std::string lines;
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(connection, statements.c_str(), addRow, &lines, &error), SQLITE_OK) << error;
    sqlite3_free(error);
    EXPECT_EQ(sqlite3_close(connection), SQLITE_OK);
    return lines;
}

} // namespace Tests
