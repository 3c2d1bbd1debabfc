#include "repository/store/database.h"

#include <sqlite3.h>

#include <new>
#include <utility>

#include "repository/store/error.h"

namespace repository::store {

namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

[[noreturn]] void Fail(sqlite3* connection, int result) {
    const std::string detail =
        connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(result);
    switch (result & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw Error(Number::permissionDenied,
                        "The repository file is in use by another program");
        case SQLITE_CONSTRAINT:
            if (result == SQLITE_CONSTRAINT_UNIQUE) {
                throw Error(Number::keyInUse, "This name or identifier is already in use");
            }
            throw Error(Number::internal, "The repository failed (" + detail + ")");
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            throw Error(Number::permissionDenied, "The repository file cannot be written");
        case SQLITE_CANTOPEN:
            throw Error(Number::pathFileAccess, "The repository file cannot be opened");
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            throw Error(Number::invalidFileFormat,
                        "The repository file is damaged (" + detail + ")");
        case SQLITE_FULL:
            throw Error(Number::diskFull, "The disk is full");
        case SQLITE_IOERR:
            throw Error(Number::deviceError,
                        "The repository file cannot be read or written (" + detail + ")");
        case SQLITE_NOMEM:
            throw std::bad_alloc();
        case SQLITE_TOOBIG:
            throw Error(Number::overflow, "The value is too large for the repository");
        default:
            throw Error(Number::internal, "The repository failed (" + detail + ")");
    }
}

void CheckResult(sqlite3* connection, int result) {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE)
        Fail(connection, result);
}

}  // namespace

Statement::Rows::~Rows() {
    if (statement_ == nullptr) return;
    sqlite3_reset(statement_->statement_.get());
    sqlite3_clear_bindings(statement_->statement_.get());
}

bool Statement::Rows::Next() {
    const int result = sqlite3_step(statement_->statement_.get());
    statement_->Check(result);
    return result == SQLITE_ROW;
}

bool Statement::Rows::IsNull(int column) const {
    return sqlite3_column_type(statement_->statement_.get(), column) == SQLITE_NULL;
}

std::int64_t Statement::Rows::Integer(int column) const {
    return sqlite3_column_int64(statement_->statement_.get(), column);
}

double Statement::Rows::Real(int column) const {
    return sqlite3_column_double(statement_->statement_.get(), column);
}

std::string Statement::Rows::Text(int column) const {
    sqlite3_stmt* statement = statement_->statement_.get();
    const unsigned char* text = sqlite3_column_text(statement, column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return text == nullptr ? std::string()
                           : std::string(reinterpret_cast<const char*>(text), length);
}

Bytes Statement::Rows::Blob(int column) const {
    sqlite3_stmt* statement = statement_->statement_.get();
    const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, column));
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return bytes == nullptr ? Bytes() : Bytes(bytes, bytes + length);
}

Value Statement::Rows::ReadValue(int typeColumn, int valueColumn) const {
    const auto integer = [&] { return Integer(valueColumn); };
    switch (Integer(typeColumn)) {
        case 1:
            return integer() != 0;
        case 2:
            return static_cast<std::uint8_t>(integer());
        case 3:
            return static_cast<std::int16_t>(integer());
        case 4:
            return static_cast<std::int32_t>(integer());
        case 5:
            return integer();
        case 6:
            return static_cast<float>(Real(valueColumn));
        case 7:
            return Real(valueColumn);
        case 8:
            return Currency{integer()};
        case 9:
            return Date{Real(valueColumn)};
        case 10:
            return Text(valueColumn);
        case 11:
            return Blob(valueColumn);
        default:
            return Empty();
    }
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void Statement::Check(int result) const {
    CheckResult(sqlite3_db_handle(statement_.get()), result);
}

void Statement::Bind(int position, std::int64_t number) {
    Check(sqlite3_bind_int64(statement_.get(), position, number));
}

void Statement::Bind(int position, double number) {
    Check(sqlite3_bind_double(statement_.get(), position, number));
}

void Statement::Bind(int position, std::string_view text) {
    Check(sqlite3_bind_text64(statement_.get(), position, text.data() != nullptr ? text.data() : "",
                              text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::Bind(int position, const Bytes& bytes) {
    static constexpr std::uint8_t none = 0;
    Check(sqlite3_bind_blob64(statement_.get(), position, bytes.empty() ? &none : bytes.data(),
                              bytes.size(), SQLITE_TRANSIENT));
}

void Statement::Bind(int position, std::nullptr_t) {
    Check(sqlite3_bind_null(statement_.get(), position));
}

void Statement::Bind(int position, const Value& value) {
    std::visit(Overloaded{
                   [&](Empty) { Bind(position, nullptr); },
                   [&](bool flag) { Bind(position, flag); },
                   [&](float number) { Bind(position, static_cast<double>(number)); },
                   [&](double number) { Bind(position, number); },
                   [&](Currency amount) { Bind(position, amount.tenThousandths); },
                   [&](Date date) { Bind(position, date.days); },
                   [&](const std::string& text) { Bind(position, std::string_view(text)); },
                   [&](const Bytes& bytes) { Bind(position, bytes); },
                   [&](auto number) { Bind(position, static_cast<std::int64_t>(number)); },
               },
               value);
}

void Database::Closer::operator()(sqlite3* connection) const {
    sqlite3_close_v2(connection);
}

Database::Database(const std::string& path, Mode mode) {
    sqlite3* opened = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                      (mode == Mode::create ? SQLITE_OPEN_CREATE : 0);
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    connection_.reset(opened);
    CheckResult(opened, result);
}

Statement Database::Prepare(std::string_view sql) {
    sqlite3_stmt* prepared = nullptr;
    CheckResult(connection_.get(),
                sqlite3_prepare_v3(connection_.get(), sql.data(), static_cast<int>(sql.size()),
                                   SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
    return Statement(prepared);
}

Statement& Database::Cached(const std::string& sql) {
    const auto found = cached_.find(sql);
    return found != cached_.end() ? found->second
                                  : cached_.emplace(sql, Prepare(sql)).first->second;
}

std::vector<std::string> Database::CachedStatements() const {
    std::vector<std::string> statements;
    for (const auto& [sql, statement] : cached_) statements.push_back(sql);
    return statements;
}

void Database::Execute(const std::string& sql) {
    CheckResult(connection_.get(),
                sqlite3_exec(connection_.get(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::ReadInteger(const std::string& sql) {
    Statement statement = Prepare(sql);
    Statement::Rows rows = statement.Run();
    return rows.Next() ? rows.Integer(0) : 0;
}

Id Database::LastInsertId() const {
    return sqlite3_last_insert_rowid(connection_.get());
}

Id Database::LastGivenId(const std::string& table) {
    Statement::Rows rows = Cached("SELECT seq FROM sqlite_sequence WHERE name = ?1").Run(table);
    return rows.Next() ? rows.Integer(0) : 0;
}

std::int64_t Database::Changes() const {
    return sqlite3_changes64(connection_.get());
}

std::int64_t Database::TotalChanges() const {
    return sqlite3_total_changes64(connection_.get());
}

void Database::Check(int result) const {
    CheckResult(connection_.get(), result);
}

bool Database::InTransaction() const {
    return sqlite3_get_autocommit(connection_.get()) == 0;
}

std::int64_t Database::DataVersion() {
    Statement::Rows rows = Cached("PRAGMA data_version").Run();
    return rows.Next() ? rows.Integer(0) : 0;
}

void Database::SetBusyTimeout(int milliseconds) {
    CheckResult(connection_.get(), sqlite3_busy_timeout(connection_.get(), milliseconds));
}

void Database::CopyTo(Database& target) {
    struct Finisher {
        void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
    };
    sqlite3* to = target.connection_.get();
    std::unique_ptr<sqlite3_backup, Finisher> backup(
        sqlite3_backup_init(to, "main", connection_.get(), "main"));
    if (!backup) Fail(to, sqlite3_errcode(to));
    const int result = sqlite3_backup_step(backup.get(), -1);
    if (result != SQLITE_DONE) Fail(nullptr, result);
    CheckResult(to, sqlite3_backup_finish(backup.release()));
}

Transaction::Transaction(Database& database, int depth) : database_(database), depth_(depth) {
    Execute(depth_ == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT " + Name());
}

Transaction::~Transaction() {
    if (!open_) return;
    try {
        if (depth_ == 0) {
            Execute("ROLLBACK");
        } else {
            Execute("ROLLBACK TO " + Name());
            Execute("RELEASE " + Name());
        }
    } catch (const std::exception&) {
        // SQLite has rolled the whole transaction back by itself.
    }
}

void Transaction::Commit() {
    Execute(depth_ == 0 ? "COMMIT" : "RELEASE " + Name());
    open_ = false;
}

void Transaction::Execute(const std::string& sql) const {
    database_.Cached(sql).Execute();
}

std::string Transaction::Name() const {
    return "level" + std::to_string(depth_);
}

Snapshot::Snapshot(Database& database) : database_(database), began_(!database.InTransaction()) {
    if (!began_) return;
    database_.Execute("BEGIN");
    try {
        // Only the first read takes the file.
        database_.Cached("SELECT 1 FROM meta_type LIMIT 1").Execute();
    } catch (...) {
        database_.Execute("ROLLBACK");
        throw;
    }
}

Snapshot::~Snapshot() {
    if (!began_) return;
    try {
        database_.Execute("COMMIT");
    } catch (const std::exception&) {
        // There is nothing that could be lost.
    }
}

}  // namespace repository::store
