#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "repository/store/value.h"

struct sqlite3;
struct sqlite3_stmt;

namespace repository::store {

using Id = std::int64_t;

class Database;

/// A prepared statement. Parameters count from 1, columns from 0.
///
///     Statement statement = database.Prepare("SELECT name FROM object WHERE id = ?1");
///     for (auto rows = statement.Run(id); rows.Next();) use(rows.Text(0));
class Statement {
public:
    /// One run of a statement. The statement is free for the next run when this one ends, whether
    /// it was read to its end or not.
    class Rows {
    public:
        explicit Rows(Statement& statement) : statement_(&statement) {}
        ~Rows();
        Rows(Rows&& other) noexcept : statement_(std::exchange(other.statement_, nullptr)) {}
        Rows(const Rows&) = delete;
        Rows& operator=(const Rows&) = delete;
        Rows& operator=(Rows&&) = delete;

        /// Goes to the next row; false at the end.
        bool Next();

        bool IsNull(int column) const;
        std::int64_t Integer(int column) const;
        double Real(int column) const;
        std::string Text(int column) const;
        Bytes Blob(int column) const;
        /// A value from the column that names its alternative and the column that has its content.
        Value ReadValue(int typeColumn, int valueColumn) const;

    private:
        Statement* statement_;
    };

    Statement() = default;

    /// Starts a run with these parameters.
    template <class... Parameters>
    [[nodiscard]] Rows Run(const Parameters&... parameters) {
        int position = 0;
        (Bind(++position, parameters), ...);
        return Rows(*this);
    }

    /// Runs the statement to its end.
    template <class... Parameters>
    void Execute(const Parameters&... parameters) {
        Rows rows = Run(parameters...);
        while (rows.Next()) {
        }
    }

private:
    friend class Database;
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };

    explicit Statement(sqlite3_stmt* prepared) : statement_(prepared) {}

    void Bind(int position, std::int64_t number);
    void Bind(int position, int number) { Bind(position, static_cast<std::int64_t>(number)); }
    void Bind(int position, double number);
    void Bind(int position, bool flag) { Bind(position, static_cast<std::int64_t>(flag)); }
    void Bind(int position, std::string_view text);
    void Bind(int position, const std::string& text) { Bind(position, std::string_view(text)); }
    void Bind(int position, const Bytes& bytes);
    void Bind(int position, std::nullptr_t);
    /// As the file keeps values: numbers, dates and Booleans as numbers, Empty as NULL.
    void Bind(int position, const Value& value);
    void Check(int result) const;

    std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

/// A connection to one database file, or to a database in memory. Failures throw `Error`.
class Database {
public:
    enum class Mode { readWrite, create };

    /// `path` is UTF-8; ":memory:" is a database in memory.
    Database(const std::string& path, Mode mode);

    Statement Prepare(std::string_view sql);

    /// A statement that stays prepared for the next time. It runs once at a time.
    Statement& Cached(const std::string& sql);

    /// The statements that stay prepared.
    std::vector<std::string> CachedStatements() const;

    /// Runs statements that take and give nothing.
    void Execute(const std::string& sql);

    std::int64_t ReadInteger(const std::string& sql);

    /// The id of the row that was inserted last, and the number of rows that the last statement
    /// changed.
    Id LastInsertId() const;
    std::int64_t Changes() const;

    /// The last id that a table has given to a row; later ones do not exist.
    Id LastGivenId(const std::string& table);

    /// Grows with every row that this connection changes.
    std::int64_t TotalChanges() const;

    bool InTransaction() const;

    /// Throws where a result of SQLite's on this connection is an error.
    void Check(int result) const;
    sqlite3* Connection() const { return connection_.get(); }

    /// A number that changes when another connection has changed the file.
    std::int64_t DataVersion();

    /// How long an operation waits for another program that is using the file.
    void SetBusyTimeout(int milliseconds);

    /// Replaces the content of `target` by this database's, in one transaction.
    void CopyTo(Database& target);

private:
    struct Closer {
        void operator()(sqlite3* connection) const;
    };

    std::unique_ptr<sqlite3, Closer> connection_;
    std::unordered_map<std::string, Statement> cached_;
};

/// A write transaction, or a part of one: inside another it can be taken back by itself. What is
/// not committed is rolled back.
class Transaction {
public:
    explicit Transaction(Database& database, int depth);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

    /// For a part of a transaction that ends with the whole.
    void Release() { open_ = false; }

private:
    void Execute(const std::string& sql) const;
    std::string Name() const;

    Database& database_;
    int depth_;
    bool open_ = true;
};

/// Several reads of the same state of the file. Inside a transaction it has nothing to do.
class Snapshot {
public:
    explicit Snapshot(Database& database);
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

private:
    Database& database_;
    bool began_;
};

}  // namespace repository::store
