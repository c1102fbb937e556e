#pragma once

#include <sqlite3.h>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace orvalen::bench {

/// An SQLite database in memory, for comparisons with our own searches. Throws if a statement fails.
class SqlMemory {
public:
    SqlMemory() { sqlite3_open(":memory:", &db_); }
    ~SqlMemory() {
        for (sqlite3_stmt* statement : statements_)
            sqlite3_finalize(statement);
        sqlite3_close(db_);
    }
    SqlMemory(const SqlMemory&) = delete;
    SqlMemory& operator=(const SqlMemory&) = delete;

    void run(const char* sql) {
        if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
    }

    /// Returns a prepared statement, which exists as long as this object.
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
        return statements_.emplace_back(statement);
    }

    /// Runs the statement with the texts as its parameters and returns the first column of the rows.
    static std::vector<std::size_t> rows(sqlite3_stmt* statement,
                                         std::initializer_list<std::string_view> texts) {
        int parameter = 0;
        for (const std::string_view text : texts)
            sqlite3_bind_text(statement, ++parameter, text.data(), static_cast<int>(text.size()),
                              SQLITE_TRANSIENT);
        std::vector<std::size_t> numbers;
        while (sqlite3_step(statement) == SQLITE_ROW)
            numbers.push_back(static_cast<std::size_t>(sqlite3_column_int64(statement, 0)));
        sqlite3_reset(statement);
        return numbers;
    }

private:
    sqlite3* db_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

} // namespace orvalen::bench
