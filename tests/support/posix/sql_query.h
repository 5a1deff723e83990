// What the sqlite3 shell would print.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>

namespace Tests {

/// Runs statements on a database and answers the rows, a line each, their columns with "|" between them.
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
