#include "store/sqlite.h"

#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace host {

[[noreturn]] static void fail(sqlite3* db) {
    switch (sqlite3_errcode(db)) {
    case SQLITE_NOTADB: throw StoreError("it isn't a drawing file");
    case SQLITE_CORRUPT: throw StoreError("the file is damaged");
    case SQLITE_FULL: throw StoreError("the disk is full");
    case SQLITE_TOOBIG: throw StoreError("a pattern is too large for one row of the file");
    default: throw StoreError(sqlite3_errmsg(db));
    }
}

/// A path as part of a URI.
static std::string escaped(const std::string& path) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (c != '%' && c != '?' && c != '#')
            text += c;
        else
            text.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return text;
}

Database::Database(const std::string& path, Mode mode) {
    int flags = SQLITE_OPEN_NOMUTEX;
    flags |= mode == Mode::Create ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READONLY;
    if (mode == Mode::ReadAlone) flags |= SQLITE_OPEN_URI;
    const std::string name = mode == Mode::ReadAlone ? "file:" + escaped(path) + "?immutable=1" : path;
    if (sqlite3_open_v2(name.c_str(), &db_, flags, nullptr) != SQLITE_OK) {
        const std::string reason = db_ ? sqlite3_errmsg(db_) : "no memory";
        sqlite3_close(db_);
        throw StoreError(reason);
    }
    // What a stranger wrote into the schema must have no effect.
    sqlite3_db_config(db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

Database::~Database() {
    sqlite3_close(db_);
}

void Database::run(const std::string& sql) {
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail(db_);
}

std::int64_t Database::number(const std::string& sql) {
    Statement query(*this, sql);
    if (!query.next()) throw StoreError("the file is damaged");
    return query.integer(0);
}

std::string Database::text(const std::string& sql) {
    Statement query(*this, sql);
    if (!query.next()) throw StoreError("the file is damaged");
    return std::string(query.text(0));
}

void Database::close() {
    if (sqlite3_close(db_) != SQLITE_OK) fail(db_);
    db_ = nullptr;
}

Statement::Statement(Database& db, const std::string& sql) : db_(db) {
    check(sqlite3_prepare_v2(db.handle(), sql.c_str(), -1, &statement_, nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(statement_);
}

void Statement::check(int code) {
    if (code != SQLITE_OK && code != SQLITE_DONE) fail(db_.handle());
}

void Statement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(statement_, index + 1, value));
}

void Statement::bind(int index, double value) {
    check(std::isnan(value) ? sqlite3_bind_null(statement_, index + 1)
                            : sqlite3_bind_double(statement_, index + 1, value));
}

void Statement::bindText(int index, std::string_view text) {
    const char* bytes = text.empty() ? "" : text.data();
    check(sqlite3_bind_text64(statement_, index + 1, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bindBlob(int index, std::string_view bytes) {
    check(bytes.empty()
              ? sqlite3_bind_zeroblob(statement_, index + 1, 0)
              : sqlite3_bind_blob64(statement_, index + 1, bytes.data(), bytes.size(), SQLITE_STATIC));
}

void Statement::insert() {
    check(sqlite3_step(statement_));
    check(sqlite3_reset(statement_));
}

bool Statement::next() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW) check(code);
    return code == SQLITE_ROW;
}

void Statement::refuse(int column) {
    throw StoreError(std::string("a value in column '") + sqlite3_column_name(statement_, column) +
                     "' isn't of its kind");
}

std::int64_t Statement::integer(int column) {
    if (sqlite3_column_type(statement_, column) != SQLITE_INTEGER) refuse(column);
    return sqlite3_column_int64(statement_, column);
}

double Statement::real(int column) {
    const int type = sqlite3_column_type(statement_, column);
    if (type == SQLITE_NULL) return std::numeric_limits<double>::quiet_NaN();
    if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) refuse(column);
    return sqlite3_column_double(statement_, column);
}

std::string_view Statement::text(int column) {
    if (sqlite3_column_type(statement_, column) != SQLITE_TEXT) refuse(column);
    const auto* bytes =
        static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(statement_, column)));
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::string_view Statement::blob(int column) {
    if (sqlite3_column_type(statement_, column) != SQLITE_BLOB) refuse(column);
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

} // namespace host
