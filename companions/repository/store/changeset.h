#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "repository/store/value.h"

struct sqlite3_session;

namespace repository::store {

class Database;

/// Records what changes in some tables of a database, as long as it lives.
class Recorder {
public:
    Recorder(Database& database, std::span<const char* const> tables);

    /// What changes while it pauses is not recorded.
    void Pause();
    void Resume();

    /// The rows that differ from the beginning, with their old and new content, in SQLite's
    /// changeset format; nothing where none does.
    Bytes Changeset() const;

    /// The most bytes that the changeset can have, and about how much memory recording takes.
    std::int64_t Size() const;
    std::int64_t Memory() const;

private:
    struct Deleter {
        void operator()(sqlite3_session* session) const;
    };

    Database& database_;
    std::unique_ptr<sqlite3_session, Deleter> session_;
};

enum class Direction { forward, backward };

/// Makes the changes of a changeset, or takes them back. False, and nothing done, where the rows
/// are not as the changeset has left or found them.
bool Apply(Database& database, const Bytes& changeset, Direction direction);

}  // namespace repository::store
