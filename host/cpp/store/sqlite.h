// SQLite as the drawing file needs it: a database, a prepared statement, errors as exceptions.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace host {

/// Why a drawing file can't be written or read, in words for the user.
class StoreError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Database {
public:
    /// ReadAlone: nothing is made beside the file, and nobody may change it meanwhile.
    enum class Mode { Create, Read, ReadAlone };
    Database(const std::string& path, Mode mode);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void run(const std::string& sql);
    std::int64_t number(const std::string& sql); ///< first column of the first row
    std::string text(const std::string& sql);    ///< first column of the first row
    void close();                                ///< Closes, and says so when that fails.
    sqlite3* handle() { return db_; }

private:
    sqlite3* db_ = nullptr;
};

/// A prepared statement. Parameters and columns are counted from 0.
class Statement {
public:
    Statement(Database& db, const std::string& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(int index, std::int64_t value);
    void bind(int index, double value);              ///< a value that isn't a number is stored as NULL
    void bindText(int index, std::string_view text); ///< the bytes must stay until the row is written
    void bindBlob(int index, std::string_view bytes);
    void insert(); ///< Writes the row that was bound and makes ready for the next.

    bool next(); ///< To the next row of a query; false behind the last.
    std::int64_t integer(int column);
    double real(int column);
    std::string_view text(int column); ///< valid until next()
    std::string_view blob(int column); ///< valid until next()

private:
    void check(int code);
    [[noreturn]] void refuse(int column);

    Database& db_;
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace host
