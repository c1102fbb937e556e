#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace orvalen::test {

/// Another program that uses the same database file.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& path) { EXPECT_EQ(sqlite3_open(path.c_str(), &db_), SQLITE_OK); }
    ~OtherProgram() { sqlite3_close(db_); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void run(const char* script) {
        EXPECT_EQ(sqlite3_exec(db_, script, nullptr, nullptr, nullptr), SQLITE_OK)
            << script << ": " << sqlite3_errmsg(db_);
    }
    /// Returns the first column of the first row.
    std::string ask(const char* query) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, query, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << query;
        const unsigned char* text = sqlite3_column_text(statement, 0);
        std::string answer = text == nullptr ? "NULL" : reinterpret_cast<const char*>(text);
        sqlite3_finalize(statement);
        return answer;
    }

private:
    sqlite3* db_ = nullptr;
};

} // namespace orvalen::test
